#include "printerslib/drivers/escapedhtml.h"

#include <QPair>
#include <QStringList>

#include "printerdocs/documentblock.h"
#include "printerdocs/printerdocument.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"
#include "settings/iprintdevicesettings.h"

namespace printerslib::drivers {

namespace {

/// A character that HTML doesn't take as text, and what is written for it.
struct Escape
{
    QLatin1Char character;
    QLatin1String entity;
};

const Escape escapes[] = {
    {QLatin1Char('&'), QLatin1String("&amp;")},
    {QLatin1Char('<'), QLatin1String("&lt;")},
    {QLatin1Char('>'), QLatin1String("&gt;")},
    {QLatin1Char('"'), QLatin1String("&quot;")},
};
constexpr int escapeCount = sizeof(escapes) / sizeof(*escapes);

/// The first of the characters that stand for those above until the HTML is made. No text holds
/// them: they are noncharacters.
constexpr ushort firstStandIn = 0xFDD0;

/// The index of a stand-in among the escapes, or outside of their range.
int escapeOf(QChar character)
{
    return character.unicode() - firstStandIn;
}

bool isStandIn(QChar character)
{
    return escapeOf(character) >= 0 && escapeOf(character) < escapeCount;
}

/// As long as the text.
QString withStandIns(QString text)
{
    for (QChar &character : text) {
        if (isStandIn(character))
            character = QChar::ReplacementCharacter;
        for (int i = 0; i < escapeCount; ++i) {
            if (character == escapes[i].character)
                character = QChar(firstStandIn + i);
        }
    }
    return text;
}

DocumentBlock withStandIns(const DocumentBlock &block)
{
    if (!block.isText())
        return block;
    QStringList lines;
    const QStringList text = block.text();
    for (const QString &line : text)
        lines.append(withStandIns(line));
    DocumentBlock changed = block;
    changed.setText(lines);
    return changed;
}

QString withEntities(const QString &html)
{
    QString result;
    result.reserve(html.size());
    for (const QChar character : html) {
        if (isStandIn(character))
            result += escapes[escapeOf(character)].entity;
        else
            result += character;
    }
    return result;
}

/// The case that the print device's settings ask for.
void foldCase(DocumentBlock &block)
{
    const auto settings = IPrintDeviceSettings::printDeviceSettings();
    const auto mode =
        settings ? settings->charactersMode() : IPrintDeviceSettings::CharactersAsWritten;
    if (mode == IPrintDeviceSettings::CharactersLowerCase)
        block.toLower();
    else if (mode == IPrintDeviceSettings::CharactersUpperCase)
        block.toUpper();
}

/// Head and tail of the HTML forms, one behind the other.
using Frame = QPair<QString, QString>;

Frame frameOf(const QString &html)
{
    return {html.section(QLatin1Char('\n'), 0, 0), html.section(QLatin1Char('\n'), -1)};
}

Frame plainFragmentFrame(const PrinterDocumentFormatter &formatter)
{
    return frameOf(formatter.plainTextToHtml(QString(), false));
}

/// That of a template lacks a blank.
Frame fragmentFrame(const PrinterDocumentFormatter &formatter)
{
    Frame frame = plainFragmentFrame(formatter);
    frame.first.replace(QLatin1String("\" cellspacing"), QLatin1String("\"cellspacing"));
    return frame;
}

/// The same for templates and for texts without attributes.
Frame documentFrame(const PrinterDocumentFormatter &formatter)
{
    return frameOf(formatter.plainTextToHtmlDocument(QString(), false));
}

QString htmlOfLines(const PrinterDocumentFormatter &formatter, const QStringList &lines,
                    bool rightAlign, const Frame &frame)
{
    const SpecialCharacters symbols;  // not read
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;
    QStringList html(frame.first);
    for (const QString &line : lines) {
        DocumentBlock block = formatter.formatPrintStr(line, format, font, alignment, 0);
        if (!block.isValid())
            continue;
        foldCase(block);
        html.append(EscapedHtml::toHtml(block, rightAlign, symbols, true, 0));
    }
    html.append(frame.second);
    return html.join(QLatin1Char('\n'));
}

}  // namespace

QString EscapedHtml::toHtml(const DocumentBlock &block, bool rightAlign,
                            const SpecialCharacters &symbols, bool useTable, int lineWidth)
{
    return withEntities(withStandIns(block).toHtml(rightAlign, symbols, useTable, lineWidth));
}

QString EscapedHtml::toHtml(const TextPrinterDocument &document, bool useTable,
                            const SpecialCharacters &symbols)
{
    QList<DocumentBlock> blocks = document.blocks();
    for (DocumentBlock &block : blocks)
        block = withStandIns(block);
    TextPrinterDocument changed = document;
    changed.setBlocks(blocks);
    return withEntities(changed.toHtml(useTable, symbols));
}

QString EscapedHtml::toHtml(const PrinterDocumentFormatter &formatter,
                            const PrinterDocument &document, bool rightAlign)
{
    return htmlOfLines(formatter, formatter.prepareDocument(document), rightAlign,
                       fragmentFrame(formatter));
}

QString EscapedHtml::toHtmlDocument(const PrinterDocumentFormatter &formatter,
                                    const PrinterDocument &document, bool rightAlign)
{
    return htmlOfLines(formatter, formatter.prepareDocument(document), rightAlign,
                       documentFrame(formatter));
}

QString EscapedHtml::plainTextToHtml(const PrinterDocumentFormatter &formatter, const QString &text,
                                     bool rightAlign)
{
    return htmlOfLines(formatter, text.split(QLatin1Char('\n')), rightAlign,
                       plainFragmentFrame(formatter));
}

QString EscapedHtml::plainTextToHtmlDocument(const PrinterDocumentFormatter &formatter,
                                             const QString &text, bool rightAlign)
{
    return htmlOfLines(formatter, text.split(QLatin1Char('\n')), rightAlign,
                       documentFrame(formatter));
}

}  // namespace printerslib::drivers
