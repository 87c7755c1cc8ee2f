#include <iostream>
#include <memory>
#include <string>

#include "bbcpp/bbdocument.h"
#include "commands.h"
#include "documentforms.h"
#include "folderoptions.h"
#include "forms.h"
#include "lineoptions.h"
#include "picturesonwhite.h"
#include "printerdocs/bbcodeparser.h"
#include "support.h"
#include "templatefile.h"
#include "terminaltext.h"

namespace {

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
    TextPrinterDocument document = parser.document();
    tool::PicturesOnWhite().putInto(document);
    return document;
}

QStringList asText(const Request &request)
{
    return tool::textLines(parsedDocument(request), request.width);
}

QStringList asHtml(const Request &request)
{
    return tool::htmlLines(parsedDocument(request));
}

QStringList asUnescapedHtml(const Request &request)
{
    return tool::unescapedHtmlLines(parsedDocument(request));
}

QStringList asJson(const Request &request)
{
    return tool::jsonLines(parsedDocument(request), request.pretty);
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
        text.append(key).append("=").append(value).append("}");
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

/// Writes the tree to standard output, and gives no lines of its own.
QStringList asTree(const Request &request)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(request.text.toStdString());
    const terminaltext::CoutAsContent shown;
    std::cout << "#document\n";
    bbcpp::walk(*document, [](const bbcpp::BBNodePtr &node, unsigned int depth) {
        std::cout << treeLinesOf(node, depth);
    });
    return {};
}

constexpr tool::WrittenForm<Request> forms[] = {
    {"text", "", asText, nullptr},
    {"html", "", asHtml, asUnescapedHtml},
    {"json", tool::jsonNote, asJson, nullptr},
    {"tree", "the tags as read; below the 65th level the depth is told in figures", asTree,
     nullptr},
};

}  // namespace

int runBbCode(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows what a BBCode text prints. Widths of 1 to 16 act as leading blanks "
                       "of each line too."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("BBCode text in UTF-8; - is standard input."));
    const QString usualWidth = QString::number(tool::usualWidth);
    const QCommandLineOption width = tool::widthOption(greatestWidth, usualWidth, usualWidth);
    const QCommandLineOption images = tool::imagesOption(QStringLiteral("the current one"));
    parser.addOptions(
        {tool::formOption(forms), width, images, tool::prettyOption(), tool::unescapedOption()});
    if (const auto status = tool::parse(parser, QStringLiteral("bbcode"), arguments, 1, 1))
        return *status;

    const auto *form = tool::formOf(parser, forms);
    if (form == nullptr)
        return tool::WrongUsage;
    const auto linesOf = tool::chosenWriter(parser, *form);
    const std::optional<int> characters = tool::numberOf(parser, width, 1, greatestWidth);
    const bool hasImages = tool::isFolder(parser, images);
    if (linesOf == nullptr || !characters || !hasImages)
        return tool::WrongUsage;
    const QString fileName = parser.positionalArguments().constFirst();
    const std::optional<QString> text = tool::readBbCode(fileName);
    if (!text)
        return tool::BadInput;
    tool::isFilled(fileName, *text);
    tool::printContent(
        linesOf({*text, *characters, parser.value(images), parser.isSet(tool::prettyOption())}));
    return tool::Success;
}
