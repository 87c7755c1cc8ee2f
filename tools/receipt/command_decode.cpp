#include <printerslib/drivers/glyphreader.h>
#include <printerslib/drivers/symbologydrawer.h>

#include <QFileInfo>
#include <algorithm>

#include "commands.h"
#include "decodesink.h"
#include "forms.h"
#include "outputfile.h"
#include "printermodel.h"
#include "printoptions.h"
#include "progressline.h"
#include "support.h"
#include "watch.h"

namespace {

using decoding::Request;
using decoding::Sink;
using printerslib::drivers::GlyphReader;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::SymbologyDrawer;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Says what a printer makes of the bytes that it is sent, without a printer: what
stands on the paper, as text, as a picture or as JSON, or what each command is.
FILE holds the bytes as they go to the printer, - is standard input.

The text has a line for each printed line. Codes stand in it as "[QR: payload]",
pictures as "[picture 384 x 120]", and "[cut]" where the paper is cut. What the
stream draws in the place of a character is the letter that it shows, if it is
one that "receipt print" defines, else the replacement character. In JSON there
is all that is known: each character and dot with its place, codes with their
payload, what happened besides, such as a cut or the pulse of a drawer.
The listing has a line for each command with its offset, its bytes, its name,
its operands and what it does; there the word "unknown" stands nowhere else but
with a command that isn't known.

What is cut off is a piece of paper. A text and a JSON text hold all of them.
In a PNG or SVG they lie one below the other, with a grey gap between two, and a
dashed grey line where one is cut; in a PDF each begins a page. 24 blank dots
are above and below each. What hangs in the printer when the stream ends is the
last piece. A line that was too long and goes on is marked by a red bar in the
margin. The second colour is black.

Standard error tells what the printer doesn't do as the stream asks, with the
offset of the byte, each thing once. A piece of paper longer than 10 m is cut short,
and more than 1000000 dots in all are no picture. The exit status is 1 if the
file can't be read or is empty, and where text or a picture is asked for, if
nothing is printed.)";

struct Form
{
    const char *name;
    const char *note;
    const char *suffix;  ///< of files that hold it, null: none
    std::unique_ptr<Sink> (*makeSink)(const Request &request);
};

constexpr Form forms[] = {
    {"text", "", "txt", decoding::makeTextSink},
    {"listing", "", nullptr, decoding::makeListingSink},
    {"json", "", "json", decoding::makeJsonSink},
    {"png", "", "png", decoding::makePictureSink},
    {"pdf", "", "pdf", decoding::makePictureSink},
    {"svg", "", "svg", decoding::makePictureSink},
};

QCommandLineOption decodedFormOption()
{
    QCommandLineOption option = tool::formOption(forms);
    option.setDescription(option.description() +
                          QStringLiteral(" Without this option the suffix of --output says it: "
                                         ".txt, .json, .png, .pdf or .svg."));
    return option;
}

struct Options
{
    const QCommandLineOption columns{
        QStringLiteral("columns"),
        QStringLiteral("Characters of the first font in a line; default, and at most: as many as "
                       "fit."),
        QStringLiteral("N")};
    const QCommandLineOption codePage{
        QStringLiteral("code-page"),
        QStringLiteral("The character set in force at the start and after a reset, by the number "
                       "that the printer's command has for it; default: the model's."),
        QStringLiteral("N")};
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("Write to this file, whole or not at all; default: standard output, and for "
                       "a picture paper.png, paper.pdf or paper.svg in the current folder."),
        QStringLiteral("FILE")};
    const QCommandLineOption watch = tool::watchOption();
};

/// The form of which the file's suffix is; null if it is of none.
const Form *formOfSuffix(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    for (const Form &form : forms) {
        if (form.suffix != nullptr && suffix == QLatin1String(form.suffix))
            return &form;
    }
    return nullptr;
}

bool isPicture(const Form &form)
{
    return tool::pictureForm(QLatin1String(form.name)) != nullptr;
}

/// What --as says, or else the name of the output. Complains and gives null where they contradict.
const Form *chosenForm(const QCommandLineParser &parser, const Options &options)
{
    const QString output = parser.value(options.output);
    const Form *named = formOfSuffix(output);
    if (named != nullptr && !parser.isSet(decodedFormOption()))
        return named;
    const Form *chosen = tool::formOf(parser, forms);
    if (chosen == nullptr || named == nullptr || chosen == named || !isPicture(*named))
        return chosen;
    tool::complain(
        QStringLiteral("--as %1 contradicts the name \"%2\", which is that of a %3 picture")
            .arg(QLatin1String(chosen->name), output,
                 QString(QLatin1String(named->name)).toUpper()));
    return nullptr;
}

bool setModel(const QCommandLineParser &parser, Request &request)
{
    if (!parser.isSet(tool::modelOption())) {
        tool::complain(QStringLiteral("--model is needed: what bytes mean depends on the printer"));
        return false;
    }
    const auto paper = tool::printedPaperOf(parser);
    if (!paper)
        return false;
    request.model = *paper->model;
    request.paper = paper->paper;
    request.profile = *paper->models.profile(request.model.id());
    request.options.paperDots = request.model.paperType(request.paper).pointsToLine();
    return true;
}

int mostColumnsOf(const Request &request)
{
    const PrinterProfile &profile = request.profile;
    const int head = profile.headDots();
    const int paper = request.options.paperDots;
    const int dots = paper > 0 ? std::min(head, paper) : head;
    return dots / profile.fontCells().value(profile.initialFont()).width();
}

bool setCharacters(const QCommandLineParser &parser, const Options &options, Request &request)
{
    constexpr int lastCodePage = 255;
    if (parser.isSet(options.columns)) {
        const auto columns = tool::numberOf(parser, options.columns, 1, mostColumnsOf(request));
        if (!columns)
            return false;
        request.options.columns = *columns;
    }
    if (!parser.isSet(options.codePage))
        return true;
    const auto codePage = tool::numberOf(parser, options.codePage, 0, lastCodePage);
    if (!codePage)
        return false;
    request.options.codePage = *codePage;
    const QMap<int, QString> known = request.profile.codePages();
    if (known.contains(*codePage))
        return true;
    tool::complainOfCharacterSet(QStringLiteral("--code-page"), parser.value(options.codePage),
                                 known);
    return false;
}

/// Complains of an option that the form has no use for, and gives false.
bool fitsForm(const QCommandLineParser &parser, const Form &form)
{
    if (parser.isSet(tool::scaleOption()) && !isPicture(form)) {
        tool::complain(QStringLiteral("--scale needs a picture, see --as"));
        return false;
    }
    if (parser.isSet(tool::prettyOption()) && QLatin1String(form.name) != QLatin1String("json")) {
        tool::complain(QStringLiteral("--pretty needs JSON, see --as"));
        return false;
    }
    return true;
}

bool setOutput(const QCommandLineParser &parser, const Options &options, const Form &form,
               Request &request)
{
    const auto scale = tool::scaleOf(parser);
    if (!scale || !fitsForm(parser, form))
        return false;
    request.picture = tool::pictureForm(QLatin1String(form.name));
    request.scale = *scale;
    request.isPretty = parser.isSet(tool::prettyOption());
    request.output = parser.value(options.output);
    if (request.picture != nullptr && request.output.isEmpty())
        request.output = QStringLiteral("paper.") + QLatin1String(form.suffix);
    return true;
}

int decode(const Request &request, const Form &form)
{
    if (!tool::keepsSources({request.output}, {request.file}))
        return tool::BadInput;
    const std::unique_ptr<Sink> sink = form.makeSink(request);
    tool::ProgressLine line(QStringLiteral("reading"));
    qint64 read = 0;
    const bool isRead =
        tool::readInPieces(request.file, [&](const QByteArray &piece, qint64 done, qint64 all) {
            line.clear();
            sink->take(piece);
            std::fflush(stdout);
            read = done;
            if (all > 0)
                line.show(done, all);
        });
    line.clear();
    if (!isRead)
        return tool::BadInput;
    if (read == 0) {
        tool::complain(QStringLiteral("%1: the stream is empty").arg(request.file));
        return tool::BadInput;
    }
    const int status = sink->finish();
    std::fflush(stdout);
    return status;
}

}  // namespace

bool drawsDecoded(const QStringList &arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const QString &argument) {
        return tool::pictureForm(argument.section(QLatin1Char('='), -1)) != nullptr ||
               tool::pictureFormOf(argument) != nullptr;
    });
}

int runDecode(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(tool::printedPaperOptions());
    parser.addOption(tool::modelsFileOption());
    parser.addOptions({options.columns, options.codePage, decodedFormOption(), options.output,
                       tool::prettyOption(), tool::scaleOption(), options.watch});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("What the printer is sent; - is standard input."));
    if (const auto status = tool::parse(parser, QStringLiteral("decode"), arguments, 1, 1))
        return *status;
    Request request;
    request.file = parser.positionalArguments().constFirst();
    const Form *form = chosenForm(parser, options);
    if (form == nullptr || !setModel(parser, request) || !setCharacters(parser, options, request) ||
        !setOutput(parser, options, *form, request))
        return tool::WrongUsage;
    // Texts need them too: where a cut falls depends on the codes' heights.
    const SymbologyDrawer codes;
    request.options.codes = &codes;
    const GlyphReader letters(request.profile);
    request.options.letters = &letters;
    const auto run = [&request, form]() -> tool::WatchedRun {
        return {decode(request, *form), {}};
    };
    return parser.isSet(options.watch) ? tool::runAndWatch({request.file}, run) : run().status;
}
