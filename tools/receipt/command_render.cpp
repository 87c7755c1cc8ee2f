#include <printerslib/drivers/escapedhtml.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QSharedPointer>

#include "cleaning.h"
#include "commands.h"
#include "filling.h"
#include "htmlescaping.h"
#include "language.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printermodel.h"
#include "settings/printersettings.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentCleaner;
using printerslib::drivers::EscapedHtml;

constexpr int mostCharacters = 1000;

/// What is rendered: a template with a document, or a text without attributes.
struct Source
{
    PrinterDocumentFormatter *formatter;
    std::optional<PrinterDocument> document;
    QString plainText;
    int width;
    bool pretty;
};

QStringList asText(const Source &source)
{
    return source.document
               ? source.formatter->toPlainText(*source.document, source.width)
               : source.formatter->plainTextToFormattedPlainText(source.plainText, source.width);
}

QStringList linesOf(const QString &html)
{
    return html.split(QLatin1Char('\n'));
}

QStringList asHtml(const Source &source)
{
    return linesOf(
        source.document
            ? EscapedHtml::toHtmlDocument(*source.formatter, *source.document, true)
            : EscapedHtml::plainTextToHtmlDocument(*source.formatter, source.plainText, true));
}

QStringList asUnescapedHtml(const Source &source)
{
    return linesOf(source.document
                       ? source.formatter->toHtmlDocument(*source.document, true)
                       : source.formatter->plainTextToHtmlDocument(source.plainText, true));
}

QStringList asHtmlFragment(const Source &source)
{
    return linesOf(source.document
                       ? EscapedHtml::toHtml(*source.formatter, *source.document, true)
                       : EscapedHtml::plainTextToHtml(*source.formatter, source.plainText, true));
}

QStringList asUnescapedHtmlFragment(const Source &source)
{
    return linesOf(source.document ? source.formatter->toHtml(*source.document, true)
                                   : source.formatter->plainTextToHtml(source.plainText, true));
}

QStringList asJson(const Source &source)
{
    const TextPrinterDocument document =
        source.document ? source.formatter->toTextPrinterDocument(*source.document)
                        : source.formatter->plainTextToTextPrinterDocument(source.plainText);
    const auto form = source.pretty ? QJsonDocument::Indented : QJsonDocument::Compact;
    return tool::linesOf(QJsonDocument::fromVariant(document.toMap()).toJson(form));
}

struct Form
{
    const char *name;
    QStringList (*render)(const Source &source);
    QStringList (*renderUnescaped)(const Source &source);  ///< null: there is no such form
};

constexpr Form forms[] = {
    {"text", asText, nullptr},
    {"html", asHtml, asUnescapedHtml},
    {"html-fragment", asHtmlFragment, asUnescapedHtmlFragment},
    {"json", asJson, nullptr},
};

struct Case
{
    const char *name;
    IPrintDeviceSettings::ECharactersMode mode;
};

constexpr Case cases[] = {
    {"as-is", IPrintDeviceSettings::CharactersAsWritten},
    {"upper", IPrintDeviceSettings::CharactersUpperCase},
    {"lower", IPrintDeviceSettings::CharactersLowerCase},
};

/// The row that an option names. Complains and gives null if there is none.
template <typename Row, std::size_t count>
const Row *chosenRow(const Row (&rows)[count], const QCommandLineParser &parser,
                     const QCommandLineOption &option)
{
    QStringList names;
    for (const Row &row : rows) {
        if (parser.value(option) == QLatin1String(row.name))
            return &row;
        names.append(QLatin1String(row.name));
    }
    tool::complain(QStringLiteral("--%1: \"%2\" is none of %3")
                       .arg(option.names().constFirst(), parser.value(option),
                            names.join(QStringLiteral(", "))));
    return nullptr;
}

struct Options
{
    const QCommandLineOption as{
        QStringLiteral("as"),
        QStringLiteral("text (default), html, html-fragment, or json (the map form)."),
        QStringLiteral("FORM"), QStringLiteral("text")};
    const QCommandLineOption width{QStringLiteral("width"),
                                   QStringLiteral("Characters per line of text; default 42."),
                                   QStringLiteral("N"), QStringLiteral("42")};
    const QCommandLineOption model{
        QStringLiteral("model"),
        QStringLiteral("Take the width from this model of the catalogue; see \"receipt models\"."),
        QStringLiteral("ID")};
    const QCommandLineOption paper{QStringLiteral("paper"),
                                   QStringLiteral("The model's paper type; default 0."),
                                   QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption font{QStringLiteral("font"),
                                  QStringLiteral("The model's font; default 0."),
                                  QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption margin{QStringLiteral("margin"),
                                    QStringLiteral("Blanks in front of each line; default 0."),
                                    QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption symbols{
        QStringLiteral("symbols"),
        QStringLiteral("Folder of the special symbol files; default: that of the template."),
        QStringLiteral("DIR")};
    const QCommandLineOption letterCase{QStringLiteral("case"),
                                        QStringLiteral("as-is (default), upper or lower."),
                                        QStringLiteral("CASE"), QStringLiteral("as-is")};
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("File to write, whole or not at all; default: standard output."),
        QStringLiteral("FILE")};
    const QCommandLineOption pretty{QStringLiteral("pretty"),
                                    QStringLiteral("Indent the JSON text.")};
    const QCommandLineOption plain{
        QStringLiteral("plain"),
        QStringLiteral("Render a text that has no attributes; there is no document then.")};
};

std::optional<int> parseCommandLine(QCommandLineParser &parser, const Options &options,
                                    const QStringList &arguments)
{
    parser.setApplicationDescription(
        QStringLiteral("Renders a receipt from a template and a document."));
    parser.addOptions({options.as, options.width, options.model, options.paper, options.font,
                       options.margin, options.symbols, options.letterCase, options.output,
                       options.pretty, options.plain, tool::unescapedOption(), tool::cleanOption(),
                       tool::codecOption(), tool::languageOption()});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("render"), arguments, 1, 2))
        return status;
    const bool plain = parser.isSet(options.plain);
    if (parser.positionalArguments().size() == (plain ? 1 : 2))
        return std::nullopt;
    tool::complain(plain ? QStringLiteral("--plain: one file is expected")
                         : QStringLiteral("a template and a document are expected"));
    return tool::WrongUsage;
}

/// The folder of the special symbol files. Complains and gives nothing if there is no such folder.
std::optional<QString> symbolFolder(const QCommandLineParser &parser, const Options &options)
{
    if (!parser.isSet(options.symbols))
        return QFileInfo(parser.positionalArguments().constFirst()).path();
    const QString folder = parser.value(options.symbols);
    if (QFileInfo(folder).isDir())
        return folder;
    tool::complain(QStringLiteral("--symbols: \"%1\" is no folder").arg(folder));
    return std::nullopt;
}

/// Characters per line, given or those of a model. Complains and gives nothing for what a model
/// doesn't have, and for options that contradict each other.
std::optional<int> lineWidth(const QCommandLineParser &parser, const Options &options)
{
    const bool choosesDetails = parser.isSet(options.paper) || parser.isSet(options.font);
    if (!parser.isSet(options.model)) {
        if (!choosesDetails)
            return tool::numberOf(parser, options.width, 1, mostCharacters);
        tool::complain(QStringLiteral("--paper and --font need --model"));
        return std::nullopt;
    }
    if (parser.isSet(options.width)) {
        tool::complain(QStringLiteral("--width and --model exclude each other"));
        return std::nullopt;
    }
    const auto model = tool::findModel(parser.value(options.model));
    if (!model)
        return std::nullopt;
    const int lastPaper = model->paperTypes().lastKey();
    const auto paper = tool::numberOf(parser, options.paper, 0, lastPaper);
    const auto font = tool::numberOf(parser, options.font, 0, model->fontTypes().size() - 1);
    if (!paper || !font)
        return std::nullopt;
    return tool::charactersPerLine(*model, *paper, *font);
}

/// Complains and gives nothing for a rule that there isn't, and where there is no document.
std::optional<DocumentCleaner::Rules> cleaningRulesOf(const QCommandLineParser &parser,
                                                      const Options &options)
{
    const auto rules = tool::cleaningRulesOf(parser);
    if (!rules || *rules == DocumentCleaner::Rules() || !parser.isSet(options.plain))
        return rules;
    tool::complain(QStringLiteral("--clean and --plain exclude each other"));
    return std::nullopt;
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
    const auto codec = tool::codecOf(parser);
    const Form *form = chosenRow(forms, parser, options.as);
    const Case *letterCase = chosenRow(cases, parser, options.letterCase);
    const auto width = lineWidth(parser, options);
    const auto rules = cleaningRulesOf(parser, options);
    const auto margin = tool::numberOf(parser, options.margin, 0, mostCharacters);
    const auto symbols = symbolFolder(parser, options);
    const QStringList files = parser.positionalArguments();
    const auto render =
        form == nullptr ? nullptr : tool::chosenWriter(parser, form->render, form->renderUnescaped);
    if (!codec || render == nullptr || !rules || letterCase == nullptr || !width || !margin ||
        !symbols || !tool::readsInputOnce(files) || !tool::useLanguage(parser))
        return tool::WrongUsage;

    tool::useSymbolFolder(*symbols);
    setCase(letterCase->mode);
    PrinterDocumentFormatter formatter(*margin, nullptr);
    Source source{&formatter, std::nullopt, QString(), *width, parser.isSet(options.pretty)};
    if (!readSource(files, **codec, *rules, source))
        return tool::BadInput;
    return tool::writeLines(parser.value(options.output), render(source)) ? tool::Success
                                                                          : tool::BadInput;
}
