#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>

#include "commands.h"
#include "contactsheet.h"
#include "filling.h"
#include "picture.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printermodel.h"
#include "progressline.h"
#include "support.h"
#include "templatefile.h"
#include "watch.h"

namespace {

using receiptpreview::Layout;
using receiptpreview::Paper;
using receiptpreview::Typeface;

constexpr int mostPapers = 127;
constexpr int lastFont = 3;
// The width of a BBCode line is a byte in the library.
constexpr int mostBbCodeCharacters = 255;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Draws a receipt as a printer model prints it, without a printer: from a template
and a document, or from one of --bbcode, --document and --plain.

The unit is the dot of the print head, 203 to the inch; at scale 1 a pixel of a
PNG is a dot. The picture is as wide as the paper (the millimetres of its name,
"80 mm"). The printed line is as many dots as the model has on that paper, in
the middle; "receipt models ID" tells them. The first line begins 24 dots below
the top, and 24 blank dots follow the last line. Where the ticket is cut there
is a dashed grey line, 2 dots high, over the whole width, and 24 blank dots
behind it. The ticket actions with bit 1 cut.

Each character stands in the cell of its font, cells side by side from the left
edge of the printed line and lines one below the other, with 4 more dots for
each step of line spacing (<LS1> to <LS7>). Double width and height take double
cells; the cells of a line stand on one base. Centred, right-aligned and
justified lines are moved by whole cells, whichever alignments the model can do
by itself. A line that is too long goes on below, and a red bar in the left
margin marks what goes on. A tab of a line that isn't justified is one blank
cell. Special symbols are the largest drawing that fits the cell, at its upper
left corner. Raw codes from 128 show code page 866; control characters are
blank. Pictures are drawn dot for dot.

Barcodes are Code 128 (type 7), 80 dots high, with modules of 3 dots, or 2 where
that doesn't fit; QR codes have modules of 6 to 2 dots, as fit the paper. A code
that can't be printed is a red box that says why. What the model can't do comes
out plain: italic upright, for example. Pictures are left out on a model without
images, and symbols are blank in a font without custom characters. Standard
error tells what of the document isn't printed as it asks for.

Paper longer than 1000000 dots (125 m) is an error, and so is a PNG higher than
1000000 pixels. The same input gives the same bytes of PNG and SVG on every run,
and of PDF in the same time zone.)";

struct Options
{
    const QCommandLineOption bbcode{QStringLiteral("bbcode"),
                                    QStringLiteral("Draw a BBCode text, as wide as the line."),
                                    QStringLiteral("FILE")};
    const QCommandLineOption document{
        QStringLiteral("document"),
        QStringLiteral("Draw a saved document; see \"receipt document\"."), QStringLiteral("FILE")};
    const QCommandLineOption plain{
        QStringLiteral("plain"),
        QStringLiteral("Draw a text that has markup but no attributes; - is standard input."),
        QStringLiteral("FILE")};
    const QCommandLineOption model{
        QStringLiteral("model"),
        QStringLiteral("Model of the catalogue; see \"receipt models\"; default CUSTOM_VKP_80."),
        QStringLiteral("ID"), QStringLiteral("CUSTOM_VKP_80")};
    const QCommandLineOption paper{
        QStringLiteral("paper"),
        QStringLiteral("The model's paper type, from 0; default 0. With --all-models a model that "
                       "lacks it takes its last one."),
        QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption font{
        QStringLiteral("font"),
        QStringLiteral("The model's font, 0 to 3, of text that chooses none (or font 0, which is "
                       "the same); default 0."),
        QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("The picture, written whole or not at all: FILE.png, FILE.pdf (pages of up "
                       "to 2 m) or FILE.svg; default receipt.png in the current folder."),
        QStringLiteral("FILE"), QStringLiteral("receipt.png")};
    const QCommandLineOption scale{
        QStringLiteral("scale"),
        QStringLiteral("Pixels per dot of a PNG; times the real size of a PDF or SVG; a whole "
                       "number from 1 to %1, default 1.")
            .arg(receiptpreview::greatestScale),
        QStringLiteral("N"), QStringLiteral("1")};
    const QCommandLineOption allModels{
        QStringLiteral("all-models"),
        QStringLiteral("Write ID.png for every model of the catalogue, and contact-sheet.png with "
                       "all of them small, into this folder, which is made if it is missing."),
        QStringLiteral("DIR")};
    const QCommandLineOption symbols{
        QStringLiteral("symbols"),
        QStringLiteral("Folder of the special symbol files; default: that of the template."),
        QStringLiteral("DIR")};
    const QCommandLineOption images{
        QStringLiteral("images"),
        QStringLiteral("Folder of a BBCode text's pictures; default: that of the text."),
        QStringLiteral("DIR")};
    const QCommandLineOption watch = tool::watchOption();
};

struct Request
{
    /// What makes the document for a paper, from the files as they are now. Complains and gives
    /// nothing on failure.
    std::function<std::optional<TextPrinterDocument>(const Paper &)> source;
    QStringList files;
    std::optional<PrinterInfo> model;  ///< nothing: all models
    int paper = 0;
    int font = 0;
    int scale = 1;
    QString output;  ///< a file, or a folder for all models
};

using Source = std::function<std::optional<TextPrinterDocument>(const Paper &)>;

Source templateSource(const QString &fileName, const QString &data, const QTextCodec &codec)
{
    return [fileName, data, &codec](const Paper &) -> std::optional<TextPrinterDocument> {
        const auto source = tool::readTemplateAndDocument(fileName, data, codec);
        if (!source)
            return std::nullopt;
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(source->text);
        return formatter.toTextPrinterDocument(source->document);
    };
}

Source plainSource(const QString &fileName, const QTextCodec &codec)
{
    return [fileName, &codec](const Paper &) -> std::optional<TextPrinterDocument> {
        const auto lines = tool::readLines(fileName, codec);
        if (!lines)
            return std::nullopt;
        const PrinterDocumentFormatter formatter(0, nullptr);
        return formatter.plainTextToTextPrinterDocument(lines->join(QLatin1Char('\n')));
    };
}

Source bbCodeSource(const QString &fileName, const QString &images)
{
    return [fileName, images](const Paper &paper) -> std::optional<TextPrinterDocument> {
        const auto text = tool::readText(fileName);
        if (!text)
            return std::nullopt;
        BbCodeParser parser(nullptr);
        const int characters = qMin(paper.charactersPerLine(), mostBbCodeCharacters);
        parser.setSymbolsPerLine(static_cast<unsigned char>(characters));
        parser.setImagesPath(images);
        parser.parseText(*text);
        return parser.document();
    };
}

Source documentSource(const QString &fileName)
{
    return [fileName](const Paper &) -> std::optional<TextPrinterDocument> {
        TextPrinterDocument document;
        if (document.loadFromFile(QFileInfo(fileName).absoluteFilePath()))
            return document;
        tool::complain(
            QStringLiteral("%1: no copy can be loaded; \"receipt document check\" says why")
                .arg(fileName));
        return std::nullopt;
    };
}

/// Complains and gives false unless there is exactly one source.
bool hasOneSource(const QCommandLineParser &parser, const Options &options)
{
    int count = parser.positionalArguments().isEmpty() ? 0 : 1;
    for (const QCommandLineOption &option : {options.bbcode, options.document, options.plain})
        count += parser.values(option).size();
    if (count == 1 && parser.positionalArguments().size() != 1)
        return true;
    tool::complain(
        QStringLiteral("a template and a document are expected, or one of --bbcode, --document "
                       "and --plain"));
    return false;
}

QString folderOf(const QString &fileName)
{
    return QFileInfo(fileName).path();
}

bool setSource(const QCommandLineParser &parser, const Options &options, Request &request)
{
    const auto codec = tool::codecOf(parser);
    if (!codec || !hasOneSource(parser, options))
        return false;
    if (parser.isSet(options.bbcode)) {
        request.files = QStringList(parser.value(options.bbcode));
        const QString folder = parser.isSet(options.images) ? parser.value(options.images)
                                                            : folderOf(request.files.constFirst());
        request.source = bbCodeSource(request.files.constFirst(), folder);
    } else if (parser.isSet(options.document)) {
        request.files = QStringList(parser.value(options.document));
        request.source = documentSource(request.files.constFirst());
    } else if (parser.isSet(options.plain)) {
        request.files = QStringList(parser.value(options.plain));
        request.source = plainSource(request.files.constFirst(), **codec);
    } else {
        request.files = parser.positionalArguments();
        request.source = templateSource(request.files.at(0), request.files.at(1), **codec);
    }
    for (const QCommandLineOption &option : {options.symbols, options.images}) {
        if (parser.isSet(option) && !QFileInfo(parser.value(option)).isDir()) {
            tool::complain(QStringLiteral("--%1: \"%2\" is no folder")
                               .arg(option.names().constFirst(), parser.value(option)));
            return false;
        }
    }
    tool::useSymbolFolder(parser.isSet(options.symbols) ? parser.value(options.symbols)
                                                        : folderOf(request.files.constFirst()));
    return tool::readsInputOnce(request.files);
}

bool setModel(const QCommandLineParser &parser, const Options &options, Request &request)
{
    int lastPaper = mostPapers;
    if (!parser.isSet(options.allModels)) {
        request.model = tool::findModel(parser.value(options.model));
        if (!request.model)
            return false;
        lastPaper = request.model->paperTypes().lastKey();
    } else if (parser.isSet(options.model) || parser.isSet(options.output)) {
        tool::complain(QStringLiteral("--all-models excludes --model and --output"));
        return false;
    }
    const auto paper = tool::numberOf(parser, options.paper, 0, lastPaper);
    const auto font = tool::numberOf(parser, options.font, 0, lastFont);
    const auto scale = tool::numberOf(parser, options.scale, 1, receiptpreview::greatestScale);
    if (!paper || !font || !scale)
        return false;
    request.paper = *paper;
    request.font = *font;
    request.scale = *scale;
    return true;
}

struct Format
{
    const char *suffix;
    bool (*write)(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
                  const receiptpreview::Progress &progress, QString *error);
};

constexpr Format formats[] = {
    {"png", receiptpreview::writePng},
    {"pdf", receiptpreview::writePdf},
    {"svg", receiptpreview::writeSvg},
};

const Format *formatOf(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    for (const Format &format : formats) {
        if (suffix == QLatin1String(format.suffix))
            return &format;
    }
    return nullptr;
}

bool setOutput(const QCommandLineParser &parser, const Options &options, Request &request)
{
    request.output = parser.value(request.model ? options.output : options.allModels);
    if (!request.model || formatOf(request.output) != nullptr)
        return true;
    tool::complain(
        QStringLiteral("--output: \"%1\" ends in none of .png, .pdf, .svg").arg(request.output));
    return false;
}

/// A document on a paper. Complains, also about what isn't printed as the document asks for.
std::optional<Layout> layOut(const Request &request, const Paper &paper)
{
    const auto document = request.source(paper);
    if (!document)
        return std::nullopt;
    Layout layout(*document, paper);
    const QString &name = request.files.constFirst();
    for (const QString &warning : layout.warnings())
        tool::complain(QStringLiteral("%1: %2").arg(name, warning));
    if (!layout.tooLong())
        return layout;
    tool::complain(QStringLiteral("%1: the receipt is longer than %2 dots (125 m)")
                       .arg(name)
                       .arg(Layout::longestPaper));
    return std::nullopt;
}

/// Writes a file, whole or not at all. Complains and gives false on failure.
bool writeFile(const QString &fileName, const std::function<bool(QIODevice &, QString *)> &write)
{
    QSaveFile file(fileName);
    QString error;
    if (file.open(QIODevice::WriteOnly) && write(file, &error) && file.commit())
        return true;
    tool::complain(
        QStringLiteral("%1: %2").arg(fileName, error.isEmpty() ? file.errorString() : error));
    return false;
}

bool writePicture(const Layout &layout, const Typeface &typeface, int scale,
                  const QString &fileName)
{
    tool::ProgressLine line(QStringLiteral("drawing"));
    const auto progress = [&line](int done, int all) { line.show(done, all); };
    const Format *format = formatOf(fileName);
    return writeFile(fileName, [&](QIODevice &device, QString *error) {
        return format->write(layout, typeface, scale, device, progress, error);
    });
}

int drawOne(const Request &request, const Typeface &typeface)
{
    const Paper paper(*request.model, request.paper, request.font);
    const auto layout = layOut(request, paper);
    if (!layout || !writePicture(*layout, typeface, request.scale, request.output))
        return tool::BadInput;
    tool::print(QStringLiteral("%1: %2, paper %3, %4 x %5 dots")
                    .arg(request.output, paper.model().id(), paper.info().caption())
                    .arg(layout->size().width())
                    .arg(layout->size().height()));
    return tool::Success;
}

int drawAll(const Request &request, const Typeface &typeface)
{
    const QDir folder(request.output);
    if (!folder.mkpath(QStringLiteral("."))) {
        tool::complain(QStringLiteral("%1: the folder can't be made").arg(request.output));
        return tool::BadInput;
    }
    receiptpreview::ContactSheet sheet(typeface);
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    {
        tool::ProgressLine line(QStringLiteral("drawing all models"));
        for (const PrinterInfo &model : models) {
            const auto layout = layOut(request, Paper(model, request.paper, request.font));
            const QString fileName = folder.filePath(model.id() + QStringLiteral(".png"));
            if (!layout || !writePicture(*layout, typeface, request.scale, fileName))
                return tool::BadInput;
            sheet.add(model.id(), *layout);
            line.show(models.indexOf(model) + 1, models.size());
        }
    }
    const QString sheetName = folder.filePath(QStringLiteral("contact-sheet.png"));
    const QImage image = sheet.image();
    if (!writeFile(sheetName,
                   [&](QIODevice &device, QString *) { return image.save(&device, "PNG"); }))
        return tool::BadInput;
    tool::print(QStringLiteral("%1: %2 models; all of them small: %3")
                    .arg(request.output)
                    .arg(models.size())
                    .arg(sheetName));
    return tool::Success;
}

}  // namespace

int runPreview(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions({options.bbcode, options.document, options.plain, options.model,
                       options.paper, options.font, options.output, options.scale,
                       options.allModels, options.symbols, options.images, tool::codecOption(),
                       options.watch});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("preview"), arguments, 0, 2))
        return *status;
    Request request;
    if (!setSource(parser, options, request) || !setModel(parser, options, request) ||
        !setOutput(parser, options, request))
        return tool::WrongUsage;

    Typeface typeface;
    QString error;
    if (!typeface.load(Typeface::defaultFolder(), &error)) {
        tool::complain(error);
        return tool::BadInput;
    }
    const auto draw = [&request, &typeface] {
        const int status = request.model ? drawOne(request, typeface) : drawAll(request, typeface);
        std::fflush(stdout);
        return status;
    };
    return parser.isSet(options.watch) ? tool::runAndWatch(request.files, draw) : draw();
}
