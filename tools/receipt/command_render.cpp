#include <printerslib/drivers/escapedhtml.h>

#include <QSharedPointer>
#include <iterator>

#include "cleaning.h"
#include "commands.h"
#include "dataschema.h"
#include "documentforms.h"
#include "filling.h"
#include "fiscalsections.h"
#include "folderoptions.h"
#include "forms.h"
#include "language.h"
#include "lineoptions.h"
#include "outputfile.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printoptions.h"
#include "settings/printersettings.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentCleaner;
using printerslib::drivers::EscapedHtml;

/// What is rendered: a template with a document, or a text without attributes.
struct Source
{
    PrinterDocumentFormatter *formatter;
    std::optional<PrinterDocument> document;
    QString plainText;
    int width;
    bool pretty;
    int margin;
    bool isFiscal;
    QString templateText{};
};

QStringList asText(const Source &source)
{
    if (source.isFiscal)
        return tool::fiscalTextOf({source.templateText, *source.document}, source.margin,
                                  source.width);
    return source.document
               ? source.formatter->toPlainText(*source.document, source.width)
               : source.formatter->plainTextToFormattedPlainText(source.plainText, source.width);
}

/// The HTML forms of receipts and of texts without attributes.
using HtmlOfText = QString (*)(const PrinterDocumentFormatter &formatter, const QString &text);

QStringList html(const Source &source, tool::HtmlOf htmlOf, HtmlOfText htmlOfText)
{
    if (source.isFiscal)
        return tool::fiscalHtmlOf({source.templateText, *source.document}, source.margin, htmlOf);
    const QString form = source.document ? htmlOf(*source.formatter, *source.document)
                                         : htmlOfText(*source.formatter, source.plainText);
    return form.split(QLatin1Char('\n'));
}

QStringList asHtml(const Source &source)
{
    return html(
        source,
        [](const PrinterDocumentFormatter &formatter, const PrinterDocument &document) {
            return EscapedHtml::toHtmlDocument(formatter, document, true);
        },
        [](const PrinterDocumentFormatter &formatter, const QString &text) {
            return EscapedHtml::plainTextToHtmlDocument(formatter, text, true);
        });
}

QStringList asUnescapedHtml(const Source &source)
{
    return html(
        source,
        [](const PrinterDocumentFormatter &formatter, const PrinterDocument &document) {
            return formatter.toHtmlDocument(document, true);
        },
        [](const PrinterDocumentFormatter &formatter, const QString &text) {
            return formatter.plainTextToHtmlDocument(text, true);
        });
}

QStringList asHtmlFragment(const Source &source)
{
    return html(
        source,
        [](const PrinterDocumentFormatter &formatter, const PrinterDocument &document) {
            return EscapedHtml::toHtml(formatter, document, true);
        },
        [](const PrinterDocumentFormatter &formatter, const QString &text) {
            return EscapedHtml::plainTextToHtml(formatter, text, true);
        });
}

QStringList asUnescapedHtmlFragment(const Source &source)
{
    return html(
        source,
        [](const PrinterDocumentFormatter &formatter, const PrinterDocument &document) {
            return formatter.toHtml(document, true);
        },
        [](const PrinterDocumentFormatter &formatter, const QString &text) {
            return formatter.plainTextToHtml(text, true);
        });
}

QStringList asJson(const Source &source)
{
    return tool::jsonLines(source.document
                               ? source.formatter->toTextPrinterDocument(*source.document)
                               : source.formatter->plainTextToTextPrinterDocument(source.plainText),
                           source.pretty);
}

constexpr tool::WrittenForm<Source> forms[] = {
    {"text", "", asText, nullptr},
    {"html", "", asHtml, asUnescapedHtml},
    {"html-fragment", "", asHtmlFragment, asUnescapedHtmlFragment},
    {"json", tool::jsonNote, asJson, nullptr},
};
/// The form that is for printers, in which nothing stands for what they print by themselves.
const auto &printersForm = *std::rbegin(forms);

struct Case
{
    const char *name;
    const char *note;
    IPrintDeviceSettings::ECharactersMode mode;
};

constexpr Case cases[] = {
    {"as-is", "", IPrintDeviceSettings::CharactersAsWritten},
    {"upper", "", IPrintDeviceSettings::CharactersUpperCase},
    {"lower", "", IPrintDeviceSettings::CharactersLowerCase},
};

const QString caseName = QStringLiteral("case");

struct Options
{
    const QCommandLineOption letterCase = tool::choiceOption(
        caseName, QStringLiteral("The letters"), QStringLiteral("CASE"), tool::choicesOf(cases));
    const QCommandLineOption symbols = tool::symbolsOption();
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("The file, written whole or not at all; default: standard output."),
        QStringLiteral("FILE")};
    const QCommandLineOption pretty = tool::prettyOption();
    const QCommandLineOption plain{
        QStringLiteral("plain"),
        QStringLiteral("Render a text that has no attributes; there is no document then.")};
};

std::optional<int> parseCommandLine(QCommandLineParser &parser, const Options &options,
                                    const QStringList &arguments)
{
    parser.setApplicationDescription(
        QStringLiteral("Renders a receipt from a template and a document."));
    parser.addOption(tool::formOption(forms));
    parser.addOptions(tool::lineOptions(QString::number(tool::usualWidth)));
    parser.addOptions({tool::marginOption(), options.symbols, options.letterCase, options.output,
                       options.pretty, options.plain, tool::fiscalOption(), tool::unescapedOption(),
                       tool::cleanOption(), tool::dataSchemaOption(), tool::codecOption(),
                       tool::languageOption()});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("render"), arguments, 1, 2))
        return status;
    const bool plain = parser.isSet(options.plain);
    const bool isForPrinters =
        parser.value(tool::formOption(forms)) == QLatin1String(printersForm.name);
    if (parser.isSet(tool::fiscalOption()) && (plain || isForPrinters)) {
        tool::complain(
            QStringLiteral("--fiscal needs a template and a document, and excludes "
                           "--as json, in which nothing stands for a section"));
        return tool::WrongUsage;
    }
    if (parser.positionalArguments().size() == (plain ? 1 : 2))
        return std::nullopt;
    tool::complain(plain ? QStringLiteral("--plain: one file is expected")
                         : QStringLiteral("a template and a document are expected"));
    return tool::WrongUsage;
}

/// Characters per line, given or those of a model. Complains and gives nothing where the options
/// don't say that.
std::optional<int> lineWidth(const QCommandLineParser &parser)
{
    const auto line = tool::lineOf(parser);
    if (!line || !line->paper)
        return line ? line->width : std::nullopt;
    return tool::targetOf(*line->paper->model, *line->paper).symbolsPerLine();
}

/// Reads the files. Complains and gives false on failure.
bool readSource(const QStringList &files, const QTextCodec &codec, DocumentCleaner::Rules rules,
                Source &source)
{
    if (files.size() == 1) {
        const auto lines = tool::readLines(files.at(0), codec);
        if (lines)
            source.plainText = lines->join(QLatin1Char('\n'));
        return lines.has_value();
    }
    const auto read = tool::readTemplateAndDocument(files.at(0), files.at(1), codec, rules);
    if (!read)
        return false;
    source.formatter->setTemplate(read->text);
    source.document = read->document;
    source.templateText = read->text;
    return true;
}

void setCase(IPrintDeviceSettings::ECharactersMode mode)
{
    const auto settings = QSharedPointer<PrinterSettings>::create();
    settings->setCharactersMode(mode);
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

}  // namespace

int runRender(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    if (const auto status = parseCommandLine(parser, options, arguments))
        return *status;
    const QTextCodec *codec = tool::codecOf(parser);
    const auto *form = tool::formOf(parser, forms);
    const Case *letterCase = tool::chosenRow(parser, caseName, cases);
    const auto width = lineWidth(parser);
    const auto rules = tool::cleaningRulesOf(parser, !parser.isSet(options.plain));
    const bool hasSchema = tool::useDataSchema(parser, !parser.isSet(options.plain));
    const auto margin = tool::marginOf(parser, true);
    const bool hasSymbols = tool::isFolder(parser, options.symbols);
    const QStringList files = parser.positionalArguments();
    const auto render = form == nullptr ? nullptr : tool::chosenWriter(parser, *form);
    if (codec == nullptr || render == nullptr || !rules || letterCase == nullptr || !width ||
        !hasSchema || !margin || !hasSymbols || !tool::readsInputOnce(files) ||
        !tool::useLanguage(parser))
        return tool::WrongUsage;

    tool::useSymbolFolder(tool::folderOf(parser, options.symbols, files.constFirst()));
    setCase(letterCase->mode);
    const QString output = parser.value(options.output);
    if (!tool::keepsSources({output}, files))
        return tool::BadInput;
    PrinterDocumentFormatter formatter(*margin, nullptr);
    Source source{&formatter,
                  std::nullopt,
                  QString(),
                  *width,
                  parser.isSet(options.pretty),
                  *margin,
                  parser.isSet(tool::fiscalOption())};
    if (!readSource(files, *codec, *rules, source))
        return tool::BadInput;
    return tool::writeLines(output, render(source)) ? tool::Success : tool::BadInput;
}
