#include "documentlaws.h"

#include <QDir>
#include <QJsonDocument>
#include <QUrl>

#include "fuzzing.h"
#include "printerdocs/echarformat.h"

using fuzzing::equal;
using fuzzing::holds;

namespace {

constexpr int narrow = 32;
constexpr int wide = 40;

MonochromeImage imageAfterItsMapForm(const MonochromeImage &image)
{
    MonochromeImage result(image.width(), image.height(), image.image());
    if (!image.fileName().trimmed().isEmpty())
        result.setFileName(image.fileName());
    return result;
}

DocumentBlock blockAfterItsMapForm(const DocumentBlock &block)
{
    DocumentBlock result;
    result.setType(block.type());
    if (block.isImage()) {
        result.setImg(imageAfterItsMapForm(block.img()));
    } else if (block.isText()) {
        result.setText(block.text());
        result.setFormat(block.format());
        result.setFont(block.font());
        result.setLineSpacing(block.lineSpacing());
        result.setAlignment(static_cast<ETextAlignment>(block.alignment() % 4));
    } else if (block.isBarcode()) {
        result.setBarCodeType(block.barCodeType());
        result.setText({block.text().first()});
    } else if (block.isQrCode()) {
        result.setText({block.text().first()});
    } else if (block.type() == DocumentBlock::BlockBarcode ||
               block.type() == DocumentBlock::BlockQrCode) {
        result.setText({QString()});
    }
    return result;
}

QString symbolTag()
{
    return QStringLiteral("<img src=\"%1\" width=\"10\" height=\"10\">")
        .arg(QUrl::fromLocalFile(QDir::tempPath() + "/tempimg").toString());
}

QString startOfRun(char format, char font)
{
    QString html =
        QStringLiteral("<font size = %1>").arg(DocumentBlock().prepareFont(format, font));
    if (format & CharBold)
        html += "<b>";
    if (format & CharItalic)
        html += "<i>";
    if (format & CharUnderline)
        html += "<u>";
    if (format & CharItalic)
        html += "</i>";
    return html;
}

QString endOfRun(char format)
{
    return QLatin1String(format & CharUnderline ? "</u>" : "") +
           QLatin1String(format & CharBold ? "</b>" : "") + QLatin1String("</font>");
}

/// The HTML of characters, one after the other.
QString htmlOfCharacters(const QString &text, const QByteArray &font, const QByteArray &format)
{
    QString html;
    QString closing;
    for (int i = 0; i < text.size(); ++i) {
        const ushort code = text.at(i).unicode();
        if (!(format.at(i) & CharRawCode) && code >= 1 && code <= 7) {
            html += closing + symbolTag();
            closing.clear();
            continue;
        }
        if (closing.isEmpty() || font.at(i) != font.at(i - 1) || format.at(i) != format.at(i - 1)) {
            html += closing + startOfRun(format.at(i), font.at(i));
            closing = endOfRun(format.at(i));
        }
        html += text.at(i);
    }
    return html + closing;
}

QByteArray asLongAs(const QString &text, QByteArray bytes)
{
    if (bytes.size() < text.size())
        bytes.append(text.size() - bytes.size(), bytes.isEmpty() ? '\0' : bytes.back());
    return bytes;
}

QString divisionOf(const DocumentBlock &block, int line)
{
    const QString text = block.text().at(line);
    if (text.isEmpty())
        return QStringLiteral("<p></p>");
    const QString side = block.alignment() == AlignRight    ? QStringLiteral("right")
                         : block.alignment() == AlignCenter ? QStringLiteral("center")
                                                            : QStringLiteral("left");
    const QString characters = htmlOfCharacters(text, asLongAs(text, block.font().at(line)),
                                                asLongAs(text, block.format().at(line)));
    return "<div align=\"" + side + "\">" + characters + "</div>";
}

QString htmlOfBlock(const DocumentBlock &block, bool useTable, int lineWidth)
{
    QStringList html;
    for (int line = 0; block.isText() && line < block.text().size(); ++line) {
        if (!useTable)
            html.append("<pre>");
        const bool isBlank = block.text().at(line).trimmed().isEmpty();
        html.append(isBlank ? "<br>" : block.toHtml(line, false, {}, useTable, lineWidth));
        if (!useTable)
            html.append("</pre>");
    }
    return html.join('\n');
}

QString htmlOfDocument(const TextPrinterDocument &document, bool useTable)
{
    QStringList html{"<html><head>",
                     "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">",
                     "</head><body>"};
    if (useTable)
        html.append("<p><table width=\"100%\"cellspacing=0 cellpadding=0>");
    for (const DocumentBlock &block : document.blocks())
        html.append(block.toHtml(false, {}, useTable, 0));
    if (useTable)
        html.append("</table></p>");
    html.append("</body></html>");
    return html.join('\n');
}

}  // namespace

TextPrinterDocument documentlaws::afterItsMapForm(const TextPrinterDocument &document)
{
    TextPrinterDocument result = document;
    result.setBlocks({});
    for (const DocumentBlock &block : document.blocks())
        result.appendBlock(blockAfterItsMapForm(block));
    QMultiMap<signed char, MonochromeImage> images;
    const auto table = document.charImages();
    // Of several images of a code the one added first stays, the last in the table's order.
    for (const signed char code : table.uniqueKeys()) {
        if (code >= 0)
            images.insert(code, imageAfterItsMapForm(table.values(code).last()));
    }
    result.setCharImages(images);
    if (document.retractionTimeout() < 0)
        result.setRetractionTimeout(0);
    if (document.symbolsPerLine() <= narrow)
        result.setSymbolsPerLine(0);
    return result;
}

void documentlaws::mapFormKeepsTheDocument(const TextPrinterDocument &document)
{
    const TextPrinterDocument expected = afterItsMapForm(document);
    TextPrinterDocument read;
    read.setMap(document.toMap());
    equal("the map form keeps the document", read, expected);
    TextPrinterDocument again;
    again.setMap(read.toMap());
    equal("the map form keeps what came out of it", again, expected);
    const QByteArray json = QJsonDocument::fromVariant(document.toMap()).toJson();
    TextPrinterDocument parsed;
    parsed.setMap(QJsonDocument::fromJson(json).toVariant().toMap());
    equal("JSON keeps the map form", parsed, expected);
}

void documentlaws::htmlIsThatOfTheLines(const TextPrinterDocument &document)
{
    for (const bool useTable : {true, false}) {
        const QString html = document.toHtml(useTable, {});
        equal("the page is that of its blocks", html, htmlOfDocument(document, useTable));
        equal("two pages of one document", document.toHtml(useTable, {}), html);
        for (const DocumentBlock &block : document.blocks()) {
            for (const int width : {0, wide})
                equal("a block's HTML is that of its lines",
                      block.toHtml(false, {}, useTable, width),
                      htmlOfBlock(block, useTable, width));
        }
    }
    for (const DocumentBlock &block : document.blocks()) {
        for (int line = 0; block.isText() && line < block.text().size(); ++line)
            equal("a line's HTML is that of its characters",
                  block.toHtml(line, false, {}, false, 0), divisionOf(block, line));
    }
}

void documentlaws::linesAreThoseOfTheBlocks(const TextPrinterDocument &document)
{
    int lines = 0;
    qint64 characters = 0;
    for (const DocumentBlock &block : document.blocks()) {
        lines += block.isText() ? block.text().size() : 0;
        characters += block.symbolsCount();
    }
    equal("a line for each of the blocks' lines", document.toStringList().size(), lines);
    equal("the estimate is a fifth more", document.symbolsCount(), int(double(characters) * 1.2));
}

void documentlaws::bytesReachOverTheText(const TextPrinterDocument &document)
{
    for (const DocumentBlock &block : document.blocks()) {
        for (int line = 0; block.isText() && line < block.text().size(); ++line) {
            holds("format bytes reach over the text",
                  block.format().at(line).size() >= block.text().at(line).size());
            holds("font bytes reach over the text",
                  block.font().at(line).size() >= block.text().at(line).size());
        }
    }
}

void documentlaws::bytesAreInStep(const TextPrinterDocument &document)
{
    for (const DocumentBlock &block : document.blocks()) {
        for (int line = 0; block.isText() && line < block.text().size(); ++line) {
            equal("a format byte for each character", block.format().at(line).size(),
                  block.text().at(line).size());
            equal("a font byte for each character", block.font().at(line).size(),
                  block.text().at(line).size());
        }
    }
}

void documentlaws::check(const TextPrinterDocument &document)
{
    mapFormKeepsTheDocument(document);
    htmlIsThatOfTheLines(document);
    linesAreThoseOfTheBlocks(document);
}
