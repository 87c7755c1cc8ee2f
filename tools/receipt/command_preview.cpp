#include <printerslib/drivers/printlayout.h>
#include <printerslib/drivers/symbologydrawer.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QVector>
#include <vector>

#include "commands.h"
#include "contactsheet.h"
#include "fiscalsections.h"
#include "outputfile.h"
#include "picturefile.h"
#include "printnotes.h"
#include "printoptions.h"
#include "progressline.h"
#include "shopsettings.h"
#include "support.h"
#include "templatefile.h"
#include "watch.h"

namespace {

using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;
using receiptpreview::Layout;
using receiptpreview::Typeface;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Draws a receipt as a printer model prints it, without a printer: from a
template and a document, or from one of --bbcode, --document and --plain. It is
what "receipt print" makes for the same model and options, dot for dot.

The unit is the dot of the print head, about 203 to the inch; at scale 1 a
pixel of a PNG is a dot. The picture is as wide as the paper (the millimetres
of its name, "80 mm"), or as the line with 6 dots at each side if that is more.
The printed line is as many dots as the model has on that paper, but no more
than its head has, in the middle; "receipt models ID" tells them. The first
line begins 24 dots below the top, and 24 blank dots follow the last line.
Where the ticket is cut there is a dashed grey line, 2 dots high, over the
whole width, and 24 blank dots behind it. What is fed up to the cutter isn't
drawn.

Each character stands in the cell of its font, cells side by side from the left
edge of the printed line and lines one below the other, with 4 more dots for
each step of line spacing (<LS1> to <LS7>). Double width and height take double
cells; the cells of a line stand on one base. Centred, right-aligned and
justified lines are moved by whole cells. A line that is too long goes on
below, and a red bar in the left margin marks what goes on. A tab of a line
that isn't justified is one blank cell. Raw codes from 128 show the code page
that the text begins with; control characters are blank. What the printer has
no letter for, special symbols (the largest drawing that fits the cell, at its
upper left corner) and all text with --as-picture are drawn in dots, as it gets
them; a PDF has their text, too. Pictures are drawn dot for dot, with the blank
dots below that a model feeds which prints them in bands. A character that a
model prints neither as a letter nor as dots is blank on its paper; the picture
has a red box with a cross there, and standard error tells how many.

Barcodes are 80 dots high, with modules of 3 dots, or 2 where that doesn't fit;
QR codes have modules of 6 to 2 dots, as fit the paper. A code that can't be
printed is a red box that says why, and so is a picture on a model that prints
none. What the model can't do comes out plain: italic upright, for example.
Standard error tells, by the template's line, what isn't printed as the
document asks for and what is too long for the paper, and on which models
unless it is all of them; and which file of symbols or pictures is missing or
damaged. Of BBCode and of saved documents it names the block, counted from 1.

Paper longer than 1000000 dots (125 m) is an error, and so is a PNG higher than
1000000 pixels. The same input gives the same bytes of PNG and SVG on every
run, and of PDF in the same time zone.)";

constexpr char usualModel[] = "CUSTOM_VKP_80";
const QString sheetName = QStringLiteral("contact-sheet");

struct Options
{
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral(
            "The picture, written whole or not at all: FILE.png, FILE.pdf (pages of up "
            "to 2 m) or FILE.svg; default: receipt.png in the current folder. A name that "
            "the receipt would take for one of its pictures is refused."),
        QStringLiteral("FILE"), QStringLiteral("receipt.png")};
    const QCommandLineOption scale = tool::scaleOption();
    const QCommandLineOption allModels{
        QStringLiteral("all-models"),
        QStringLiteral(
            "Write ID.png for every model, and contact-sheet.png with all of them small, into "
            "this folder, which is made if it is missing. The sheet tells how many lines are too "
            "long for a model, and where it cuts a receipt of more than 6000 dots. A model that "
            "lacks the paper of "
            "--paper takes its last one, and one that lacks the character set of --code-page "
            "its own."),
        QStringLiteral("DIR")};
    const QCommandLineOption watch = tool::watchOption();
};

/// A model, and how it prints.
struct Printer
{
    PrintTarget target;
    PrintOptions options;

    QString id() const { return target.profile().modelId(); }
};

struct Request
{
    tool::ChosenSource source;
    std::vector<Printer> printers;
    bool takesAll = false;
    int scale = 1;
    QString output;  ///< a file, or a folder for all models
};

bool addPrinter(const QCommandLineParser &parser, const tool::ShopSettings &shop, Request &request)
{
    const auto paper = shop.paperOf(parser, QLatin1String(usualModel));
    if (!paper)
        return false;
    const PrintTarget target = tool::targetOf(*paper->model, *paper);
    const auto options = tool::printOptionsOf(parser, target.profile(), shop.printOptions());
    if (options)
        request.printers.push_back({target, *options});
    return options.has_value();
}

/// Whether a model's picture stands in the folder of all of them, beside the sheet.
bool canNamePicture(const QString &id)
{
    if (!id.contains(QLatin1Char('/')) && id != sheetName)
        return true;
    tool::complain(QStringLiteral("--all-models: \"%1\" is no name for a model's picture").arg(id));
    return false;
}

bool addPrinters(const QCommandLineParser &parser, Request &request)
{
    const auto paper = tool::paperOfEveryModel(parser);
    if (!paper)
        return false;
    const QStringList ids = paper->models.modelIds();
    for (const QString &id : ids) {
        const PrintTarget target = tool::targetOf(*tool::findModel(paper->models, id), *paper);
        const auto options = tool::printOptionsOfEach(parser, target.profile());
        if (!options || !canNamePicture(id))
            return false;
        request.printers.push_back({target, *options});
    }
    return true;
}

bool setPrinters(const QCommandLineParser &parser, const Options &options,
                 const tool::ShopSettings &shop, Request &request)
{
    request.takesAll = parser.isSet(options.allModels);
    if (request.takesAll &&
        (shop.areSet() || parser.isSet(tool::modelOption()) || parser.isSet(options.output))) {
        tool::complain(QStringLiteral("--all-models excludes --model, --settings and --output"));
        return false;
    }
    const auto scale = tool::scaleOf(parser);
    if (!scale)
        return false;
    request.scale = *scale;
    return request.takesAll ? addPrinters(parser, request) : addPrinter(parser, shop, request);
}

bool setOutput(const QCommandLineParser &parser, const Options &options, Request &request)
{
    request.output = parser.value(request.takesAll ? options.allModels : options.output);
    if (request.takesAll || tool::pictureFormOf(request.output) != nullptr)
        return true;
    tool::complain(
        QStringLiteral("--output: \"%1\" ends in none of .png, .pdf, .svg").arg(request.output));
    return false;
}

/// What isn't printed as the document asks for: each thing once, with the models that it is so on.
class Warnings
{
public:
    void add(const QString &model, const QVector<PrintNote> &notes, const tool::Places &places)
    {
        m_models.append(model);
        for (const PrintNote &note : notes) {
            const QString warning = places.inMessage(note.toString());
            const auto known = m_indices.constFind(warning);
            if (known == m_indices.constEnd()) {
                m_indices.insert(warning, m_rows.size());
                m_rows.append({warning, QStringList(model)});
            } else if (m_rows.at(*known).models.constLast() != model) {
                m_rows[*known].models.append(model);
            }
        }
    }
    /// Complains; names the models where that isn't all of them.
    void print(const QString &fileName) const
    {
        for (const Row &row : m_rows) {
            const QString models = row.models == m_models
                                       ? QString()
                                       : row.models.join(QLatin1String(", ")) + QLatin1String(": ");
            tool::complain(QStringLiteral("%1: %2%3").arg(fileName, models, row.warning));
        }
    }

private:
    struct Row
    {
        QString warning;
        QStringList models;
    };
    QStringList m_models;
    QVector<Row> m_rows;
    QHash<QString, int> m_indices;  ///< in the rows
};

/// How often the picture shows a box where the paper is blank.
QVector<PrintNote> boxNotesOf(const PrintLayout &print)
{
    if (print.unprintedCells.empty())
        return {};
    PrintNote note;
    note.text = QStringLiteral("characters that can't be printed, with a crossed box for each: %1")
                    .arg(print.unprintedCells.size());
    return {note};
}

/// A receipt on the paper of a model. Complains and gives nothing if it can't be printed.
std::optional<Layout> layOut(const Request &request, const tool::PreviewedReceipt &receipt,
                             const Printer &printer, Warnings &warnings)
{
    static const printerslib::drivers::SymbologyDrawer codes;
    const TextPrinterDocument document = receipt.documentFor(printer.target);
    PrintLayout print = PrintLayout::of(document, printer.target, printer.options, codes);
    tool::frameSections(receipt.sections, print);
    warnings.add(printer.id(), tool::notesOf(print, document) + boxNotesOf(print), receipt.places);
    QString error = receipt.places.inMessage(print.error);
    if (error.isEmpty()) {
        Layout layout(print, document.prevTicketAction(), document.currentTicketAction());
        if (!layout.tooLong())
            return layout;
        error =
            QStringLiteral("the receipt is longer than %1 dots (125 m)").arg(Layout::longestPaper);
    }
    const QString name = request.takesAll ? printer.id() + QLatin1String(": ") : QString();
    tool::complain(QStringLiteral("%1: %2%3").arg(request.source.files.constFirst(), name, error));
    return std::nullopt;
}

int drawOne(const Request &request, const tool::PreviewedReceipt &receipt, const Typeface &typeface)
{
    const Printer &printer = request.printers.front();
    Warnings warnings;
    const auto layout = layOut(request, receipt, printer, warnings);
    warnings.print(request.source.files.constFirst());
    if (!layout || !tool::writePicture(*tool::pictureFormOf(request.output), *layout, typeface,
                                       request.scale, request.output))
        return tool::BadInput;
    tool::print(QStringLiteral("%1: %2, paper %3, %4 x %5 dots")
                    .arg(request.output, printer.id(), printer.target.paper().caption())
                    .arg(layout->size().width())
                    .arg(layout->size().height()));
    return tool::Success;
}

QString pictureNameOf(const Request &request, const QString &name)
{
    return QDir(request.output).filePath(name + QStringLiteral(".png"));
}

/// Draws a receipt as each of the models prints it, and puts it on the sheet.
bool drawEach(const Request &request, const tool::PreviewedReceipt &receipt,
              const Typeface &typeface, receiptpreview::ContactSheet &sheet)
{
    Warnings warnings;
    tool::ProgressLine line(QStringLiteral("drawing all models"));
    const int all = static_cast<int>(request.printers.size());
    int done = 0;
    for (const Printer &printer : request.printers) {
        const auto layout = layOut(request, receipt, printer, warnings);
        if (!layout ||
            !tool::writePicture(*tool::pictureForm(QStringLiteral("png")), *layout, typeface,
                                request.scale, pictureNameOf(request, printer.id())))
            return false;
        sheet.add(printer.id(), *layout);
        line.show(++done, all);
    }
    line.clear();
    warnings.print(request.source.files.constFirst());
    return true;
}

int drawAll(const Request &request, const tool::PreviewedReceipt &receipt, const Typeface &typeface)
{
    if (!QDir().mkpath(request.output)) {
        tool::complain(QStringLiteral("%1: the folder can't be made").arg(request.output));
        return tool::BadInput;
    }
    receiptpreview::ContactSheet sheet(typeface);
    if (!drawEach(request, receipt, typeface, sheet))
        return tool::BadInput;
    const QString sheetFile = pictureNameOf(request, sheetName);
    const QImage image = sheet.image();
    if (!tool::writeFile(sheetFile,
                         [&](QIODevice &device, QString *) { return image.save(&device, "PNG"); }))
        return tool::BadInput;
    tool::print(QStringLiteral("%1: %2 models; all of them small: %3")
                    .arg(request.output)
                    .arg(request.printers.size())
                    .arg(sheetFile));
    return tool::Success;
}

QStringList outputsOf(const Request &request)
{
    if (!request.takesAll)
        return {request.output};
    QStringList outputs{pictureNameOf(request, sheetName)};
    for (const Printer &printer : request.printers)
        outputs.append(pictureNameOf(request, printer.id()));
    return outputs;
}

tool::WatchedRun draw(const Request &request, const Typeface &typeface)
{
    const auto receipt = request.source.read();
    if (!receipt)
        return {tool::BadInput, QStringList()};
    const QStringList outputs = outputsOf(request);
    if (!tool::keepsSources(outputs, request.source.files) ||
        !tool::keepsCompanions(outputs, *receipt))
        return {tool::BadInput, receipt->companions};
    const int status = request.takesAll ? drawAll(request, *receipt, typeface)
                                        : drawOne(request, *receipt, typeface);
    std::fflush(stdout);
    return {status, receipt->companions};
}

}  // namespace

int runPreview(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(tool::sourceOptions());
    parser.addOptions(tool::shopOptions(QLatin1String(usualModel)));
    parser.addOptions(tool::printOptions());
    parser.addOptions(
        {options.output, options.scale, options.allModels, tool::fiscalOption(), options.watch});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("preview"), arguments, 0, 2))
        return *status;
    const auto settings = tool::shopSettingsOf(parser);
    if (!settings)
        return tool::BadInput;
    Request request;
    const auto source = tool::sourceOf(parser, parser.isSet(tool::fiscalOption()));
    if (!source || !setPrinters(parser, options, *settings, request) ||
        !setOutput(parser, options, request))
        return tool::WrongUsage;
    request.source = *source;

    const auto typeface = tool::loadedTypeface();
    if (!typeface)
        return tool::BadInput;
    const auto run = [&request, &typeface] { return draw(request, *typeface); };
    return parser.isSet(options.watch) ? tool::runAndWatch(request.source.files, run)
                                       : run().status;
}
