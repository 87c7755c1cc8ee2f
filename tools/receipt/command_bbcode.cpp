#include <printerslib/drivers/escapedhtml.h>

#include <QJsonDocument>
#include <iostream>
#include <memory>
#include <string>

#include "bbcpp/bbdocument.h"
#include "commands.h"
#include "htmlescaping.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/specialcharacters.h"
#include "support.h"
#include "terminaltext.h"

namespace {

using printerslib::drivers::EscapedHtml;

constexpr int leastWidth = 1;
constexpr int greatestWidth = 255;

struct Request
{
    QString text;
    int width;
    QString images;
    bool pretty;
};

TextPrinterDocument parsedDocument(const Request &request)
{
    BbCodeParser parser;
    parser.setSymbolsPerLine(static_cast<unsigned char>(request.width));
    parser.setImagesPath(request.images);
    parser.parseText(request.text);
    return parser.document();
}

void printText(const Request &request)
{
    const QList<DocumentBlock> blocks = parsedDocument(request).blocks();
    for (DocumentBlock block : blocks) {
        const QStringList lines = block.toStringList(request.width);
        tool::printContent(lines);
    }
}

void printHtml(const Request &request)
{
    const QString html = EscapedHtml::toHtml(parsedDocument(request), true, SpecialCharacters());
    tool::printContent(html.split(QLatin1Char('\n')));
}

void printUnescapedHtml(const Request &request)
{
    const QString html = parsedDocument(request).toHtml(true, SpecialCharacters());
    tool::printContent(html.split(QLatin1Char('\n')));
}

void printJson(const Request &request)
{
    const auto form = request.pretty ? QJsonDocument::Indented : QJsonDocument::Compact;
    const QJsonDocument json = QJsonDocument::fromVariant(parsedDocument(request).toMap());
    tool::printContent(tool::linesOf(json.toJson(form)));
}

/// Of a deeper node the depth is told in figures, as the indentation of a tree that goes on and on
/// grows with the square of the text.
constexpr unsigned int deepestIndented = 64;

std::string indentationOf(unsigned int depth)
{
    if (depth <= deepestIndented)
        return bbcpp::getIndentString(depth);
    return bbcpp::getIndentString(deepestIndented) + "(level " + std::to_string(depth + 1) + ") ";
}

std::string parametersOf(const bbcpp::BBElement &element)
{
    std::string text;
    for (const auto &[key, value] : element.getParameters()) {
        text += text.empty() ? "{" : ", {";
        text += key + '=' + value + '}';
    }
    return "{ " + text + " }";
}

/// What stands on the node's lines.
std::string treeLinesOf(const bbcpp::BBNodePtr &node, unsigned int depth)
{
    if (const auto text = bbcpp::tryDowncast<bbcpp::BBText>(node))
        return indentationOf(depth) + "@\"" + text->getText() + "\"\n";
    const auto element = bbcpp::downcast<bbcpp::BBElement>(node);
    const auto type = element->getElementType();
    std::string lines = indentationOf(depth) +
                        (type == bbcpp::BBElement::ElementClosing ? "[/" : "[") +
                        element->getNodeName() + "]\n";
    if (type == bbcpp::BBElement::ElementParameter)
        lines += indentationOf(depth + 1) + parametersOf(*element) + '\n';
    return lines;
}

void printTree(const Request &request)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(request.text.toStdString());
    const terminaltext::CoutAsContent shown;
    std::cout << "#document\n";
    bbcpp::walk(*document, [](const bbcpp::BBNodePtr &node, unsigned int depth) {
        std::cout << treeLinesOf(node, depth);
    });
}

struct Form
{
    const char *name;
    void (*print)(const Request &request);
    void (*printUnescaped)(const Request &request);  ///< null: there is no such form
};

constexpr Form forms[] = {
    {"text", printText, nullptr},
    {"html", printHtml, printUnescapedHtml},
    {"json", printJson, nullptr},
    {"tree", printTree, nullptr},
};

const Form *findForm(const QString &name)
{
    for (const Form &form : forms) {
        if (name == QLatin1String(form.name))
            return &form;
    }
    return nullptr;
}

}  // namespace

int runBbCode(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows what a BBCode text prints."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("BBCode text in UTF-8; - is standard input."));
    const QCommandLineOption as(
        QStringLiteral("as"),
        QStringLiteral(
            "text (default), html, json (the map form), or tree (the tags as read; below the "
            "65th level the depth is told in figures)."),
        QStringLiteral("form"), QStringLiteral("text"));
    const QCommandLineOption width(QStringLiteral("width"),
                                   QStringLiteral("Characters per line, %1 to %2; default 42. "
                                                  "1 to 16 act as leading blanks of each line too.")
                                       .arg(leastWidth)
                                       .arg(greatestWidth),
                                   QStringLiteral("N"), QStringLiteral("42"));
    const QCommandLineOption images(
        QStringLiteral("images"),
        QStringLiteral("Folder of the pictures; default: the current one."), QStringLiteral("DIR"));
    const QCommandLineOption pretty(QStringLiteral("pretty"),
                                    QStringLiteral("Indent the JSON text."));
    parser.addOptions({as, width, images, pretty, tool::unescapedOption()});
    if (const auto status = tool::parse(parser, QStringLiteral("bbcode"), arguments, 1, 1))
        return *status;

    const Form *form = findForm(parser.value(as));
    if (form == nullptr) {
        tool::complain(QStringLiteral("--as: there is no form \"%1\"").arg(parser.value(as)));
        return tool::WrongUsage;
    }
    const auto print = tool::chosenWriter(parser, form->print, form->printUnescaped);
    const std::optional<int> characters = tool::numberOf(parser, width, leastWidth, greatestWidth);
    if (print == nullptr || !characters)
        return tool::WrongUsage;
    const std::optional<QString> text = tool::readText(parser.positionalArguments().constFirst());
    if (!text)
        return tool::BadInput;
    print({*text, *characters, parser.value(images), parser.isSet(pretty)});
    return tool::Success;
}
