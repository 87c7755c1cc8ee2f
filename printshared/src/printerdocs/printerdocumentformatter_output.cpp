#include "printerdocs/documentvalues_p.h"
#include "printerdocs/linelimits_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/printerdocumentformatter_p.h"
#include "settings/iprintdevicesettings.h"

namespace {

const QLatin1String qrTag("<QR>");

// Intended: the first has no blank in front of "cellspacing"; clients compare the texts.
// Test: htmlFrames.
const QLatin1String fragmentHead("<p><table width=\"100%\"cellspacing=0 cellpadding=0>");
const QLatin1String plainFragmentHead("<p><table width=\"100%\" cellspacing=0 cellpadding=0>");
const QLatin1String fragmentTail("</table></p>");
const QLatin1String documentHead(
    "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\"></head>"
    "<body><table width=\"100%\" cellspacing=0 cellpadding=0>");
const QLatin1String documentTail("</table></body></html>");

// Bits 1 and 8: what the print service does with a finished receipt.
constexpr int receiptTicketAction = 9;

/// What carries from line to line while a document's lines become blocks.
class LineFormatter
{
public:
    explicit LineFormatter(const PrinterDocumentFormatter &formatter)
        : m_formatter(formatter), m_settings(IPrintDeviceSettings::printDeviceSettings())
    {}

    /// The block of a line without case folding.
    DocumentBlock unfoldedBlock(const QString &line)
    {
        return m_formatter.formatPrintStr(line, m_format, m_font, m_alignment, 0);
    }
    /// The block of a line that isn't empty.
    DocumentBlock block(const QString &line)
    {
        DocumentBlock block = unfoldedBlock(line);
        foldCase(block);
        return block;
    }
    DocumentBlock emptyBlock() const { return DocumentBlock::emptyBlock(1, m_alignment, 0); }

    void foldCase(DocumentBlock &block) const
    {
        if (!m_settings)
            return;
        const auto mode = m_settings->charactersMode();
        if (mode == IPrintDeviceSettings::CharactersLowerCase)
            block.toLower();
        else if (mode == IPrintDeviceSettings::CharactersUpperCase)
            block.toUpper();
    }

private:
    const PrinterDocumentFormatter &m_formatter;
    const QSharedPointer<IPrintDeviceSettings> m_settings;
    unsigned char m_format = 0;
    unsigned char m_font = 0;
    ETextAlignment m_alignment = AlignLeft;
};

QStringList linesOf(const QString &text)
{
    return text.split(QLatin1Char('\n'));
}

QStringList textOfLines(const PrinterDocumentFormatter &formatter, const QStringList &lines,
                        int width)
{
    LineFormatter lineFormatter(formatter);
    QStringList result;
    result.reserve(lines.size());
    for (const QString &line : lines) {
        if (line.isEmpty())
            result.append(QString(qMin(width, longestPaddedLine), QLatin1Char(' ')));
        else
            result += lineFormatter.block(line).toStringList(width);
    }
    return result;
}

QString htmlOfLines(const PrinterDocumentFormatter &formatter, const QStringList &lines,
                    bool rightAlign, const SpecialCharacters &symbols, QLatin1String head,
                    QLatin1String tail)
{
    LineFormatter lineFormatter(formatter);
    QStringList html{head};
    html.reserve(lines.size() + 2);
    for (const QString &line : lines) {
        const DocumentBlock block =
            line.isEmpty() ? lineFormatter.emptyBlock() : lineFormatter.block(line);
        if (block.isValid())
            html.append(block.toHtml(rightAlign, symbols, true, 0));
    }
    html.append(tail);
    return html.join(QLatin1Char('\n'));
}

/// A list of blocks in which neighbours that fit together are one block.
class BlockList
{
public:
    void add(const DocumentBlock &block)
    {
        if (!block.isValid())
            return;
        if (m_blocks.isEmpty() || !m_blocks.last().append(block))
            m_blocks.append(block);
    }
    const QList<DocumentBlock> &blocks() const { return m_blocks; }

private:
    QList<DocumentBlock> m_blocks;
};

DocumentBlock qrBlock(const QString &payload)
{
    DocumentBlock block;
    block.setQrCode(payload.trimmed().toUtf8());
    block.setAlignment(AlignCenter);
    return block;
}

/// The block of a line with a QR code. Text in front of the code is added to the list at once.
/// Intended: that text keeps its case, and the code's stored text is folded; clients compare
/// blocks. Test: textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded.
DocumentBlock splitAtQrTag(const QString &line, int tag, LineFormatter &formatter,
                           BlockList &blocks)
{
    const QString head = line.left(tag);
    if (!head.trimmed().isEmpty())
        blocks.add(formatter.unfoldedBlock(head));
    DocumentBlock block = qrBlock(line.mid(tag + qrTag.size()));
    formatter.foldCase(block);
    return block;
}

TextPrinterDocument documentOfLines(const PrinterDocumentFormatter &formatter,
                                    const QStringList &lines, bool readsQrTag,
                                    const SpecialCharacters &symbols)
{
    LineFormatter lineFormatter(formatter);
    BlockList blocks;
    for (const QString &line : lines) {
        const int tag = readsQrTag ? line.indexOf(qrTag) : -1;
        if (line.isEmpty()) {
            DocumentBlock block = lineFormatter.emptyBlock();
            blocks.add(block);
        } else if (tag < 0) {
            blocks.add(lineFormatter.block(line));
        } else {
            blocks.add(splitAtQrTag(line, tag, lineFormatter, blocks));
        }
    }
    TextPrinterDocument document;
    document.setBlocks(blocks.blocks());
    document.setCharImages(symbols);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(receiptTicketAction));
    return document;
}

}  // namespace

QStringList PrinterDocumentFormatter::toFormattedText(const PrinterDocument &document) const
{
    DocumentValues values(document);
    QStringList lines;
    lines.reserve(m_templateLines.size());
    for (const QString &line : m_templateLines)
        lines.append(lineWithValues(line, values));
    return lines;
}

QStringList PrinterDocumentFormatter::toPlainText(const PrinterDocument &document, int width) const
{
    return textOfLines(*this, prepareDocument(document), width);
}

QStringList PrinterDocumentFormatter::plainTextToFormattedPlainText(const QString &text,
                                                                    int width) const
{
    return textOfLines(*this, linesOf(text), width);
}

QString PrinterDocumentFormatter::toHtml(const PrinterDocument &document, bool rightAlign) const
{
    return htmlOfLines(*this, prepareDocument(document), rightAlign, m_specialCharacters,
                       fragmentHead, fragmentTail);
}

QString PrinterDocumentFormatter::toHtmlDocument(const PrinterDocument &document,
                                                 bool rightAlign) const
{
    return htmlOfLines(*this, prepareDocument(document), rightAlign, m_specialCharacters,
                       documentHead, documentTail);
}

QString PrinterDocumentFormatter::plainTextToHtml(const QString &text, bool rightAlign) const
{
    return htmlOfLines(*this, linesOf(text), rightAlign, m_specialCharacters, plainFragmentHead,
                       fragmentTail);
}

QString PrinterDocumentFormatter::plainTextToHtmlDocument(const QString &text,
                                                          bool rightAlign) const
{
    return htmlOfLines(*this, linesOf(text), rightAlign, m_specialCharacters, documentHead,
                       documentTail);
}

TextPrinterDocument PrinterDocumentFormatter::toTextPrinterDocument(
    const PrinterDocument &document) const
{
    return documentOfLines(*this, prepareDocument(document), true, m_specialCharacters);
}

TextPrinterDocument PrinterDocumentFormatter::plainTextToTextPrinterDocument(
    const QString &text) const
{
    return documentOfLines(*this, linesOf(text), false, m_specialCharacters);
}
