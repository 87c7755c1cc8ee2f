#include "printerdocs/document/htmlwriter_p.h"
#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/plan/documentbyplan_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/linefilling_p.h"
#include "printerdocs/template/printedline_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "settings/iprintdevicesettings.h"

namespace {

using namespace documents;
using namespace templates;

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

// Characters of HTML that a line takes, roughly.
constexpr qint64 htmlPerLine = 150;

/// Reads the markup of a document's lines one after the other, and folds their case.
class MarkupRun
{
public:
    explicit MarkupRun(int leftMargin, LineDetail wanted = LineDetail::WithBytes)
        : m_leftMargin(leftMargin), m_wanted(wanted), m_charactersMode(charactersMode())
    {}

    /// A line without case folding.
    PrintedLine unfolded(const QString &line)
    {
        return printedLine(line, m_carried, 0, m_leftMargin, m_wanted);
    }
    PrintedLine printed(const QString &line)
    {
        PrintedLine printed = unfolded(line);
        if (!line.isEmpty())
            printed.text = folded(printed.text);
        return printed;
    }

    bool folds() const { return m_charactersMode != IPrintDeviceSettings::CharactersAsWritten; }
    QString folded(const QString &text) const
    {
        if (m_charactersMode == IPrintDeviceSettings::CharactersLowerCase)
            return text.toLower();
        if (m_charactersMode == IPrintDeviceSettings::CharactersUpperCase)
            return text.toUpper();
        return text;
    }

private:
    static IPrintDeviceSettings::ECharactersMode charactersMode()
    {
        const auto settings = IPrintDeviceSettings::printDeviceSettings();
        return settings ? settings->charactersMode() : IPrintDeviceSettings::CharactersAsWritten;
    }

    const int m_leftMargin;
    const LineDetail m_wanted;
    const IPrintDeviceSettings::ECharactersMode m_charactersMode;
    CarriedStyle m_carried;
};

QStringList linesOf(const QString &text)
{
    return text.split(QLatin1Char('\n'));
}

/// An output that takes lines by plan, if only because it makes them go the general way.
template <typename Output>
class OutputOfLines
{
public:
    void take(const QStringList &lines)
    {
        static_cast<Output *>(this)->reserve(lines.size());
        for (const QString &line : lines) {
            if (line.isEmpty())
                static_cast<Output *>(this)->blank();
            else
                static_cast<Output *>(this)->general(line);
        }
    }
};

/// The text of a document, in which formats and fonts don't show.
class TextOutput : public OutputOfLines<TextOutput>
{
public:
    TextOutput(int leftMargin, int width)
        : m_run(leftMargin, LineDetail::TextOnly),
          m_width(width),
          m_emptyLine(qBound(0, width, longestPaddedLine), QLatin1Char(' '))
    {}

    void reserve(int lines) { m_lines.reserve(lines); }
    void blank() { m_lines.append(m_emptyLine); }
    void general(const QString &line)
    {
        const PrintedLine printed = m_run.printed(line);
        if (printed.isValid)
            m_lines.append(paddedLine(printed.text, printed.alignment, m_width));
    }
    static Fallback takes(const Shape &) { return Fallback::None; }
    void planned(const Shape &shape, const QString &text)
    {
        if (m_run.folds())
            m_lines.append(paddedLine(m_run.folded(text), shape.alignment(), m_width));
        else
            m_lines.append(paddedLine(QStringView(text), shape.alignment(), m_width));
    }
    const QStringList &lines() const { return m_lines; }

private:
    MarkupRun m_run;
    const int m_width;
    const QString m_emptyLine;
    QStringList m_lines;
};

QString htmlOfLines(const QStringList &lines, int leftMargin, bool rightAlign, QLatin1String head,
                    QLatin1String tail)
{
    MarkupRun run(leftMargin);
    QString html = head;
    HtmlWriter writer(html);
    writer.reserve(qint64(lines.size()) * htmlPerLine);
    for (const QString &line : lines) {
        const PrintedLine printed = run.printed(line);
        if (!printed.isValid)
            continue;
        html += QLatin1Char('\n');
        writer.appendRow(printed.text, printed.fonts, printed.formats, printed.alignment,
                         rightAlign);
    }
    html += QLatin1Char('\n');
    html += tail;
    return html;
}

/// Blocks of a document: neighbouring lines that are aligned alike are one block.
class BlockList
{
public:
    void add(const PrintedLine &line)
    {
        if (!line.isValid)
            return;
        if (!m_text.isEmpty() && m_alignment != line.alignment)
            closeBlock();
        m_alignment = line.alignment;
        m_text.append(line.text);
        m_formats.append(line.formats);
        m_fonts.append(line.fonts);
        m_spacings.append(line.spacing);
    }
    void add(const DocumentBlock &block)
    {
        closeBlock();
        m_blocks.append(block);
    }
    QList<DocumentBlock> take()
    {
        closeBlock();
        return m_blocks;
    }

private:
    void closeBlock()
    {
        if (m_text.isEmpty())
            return;
        DocumentBlock block;
        block.setText(m_text);
        block.setFormat(m_formats);
        block.setFont(m_fonts);
        block.setAlignment(m_alignment);
        block.setLineSpacing(m_spacings);
        m_blocks.append(block);
        m_text = QStringList();
        m_formats = QList<QByteArray>();
        m_fonts = QList<QByteArray>();
        m_spacings = QList<int>();
    }

    QList<DocumentBlock> m_blocks;
    // The lines of the block that is being gathered.
    QStringList m_text;
    QList<QByteArray> m_formats;
    QList<QByteArray> m_fonts;
    ETextAlignment m_alignment = AlignLeft;
    QList<int> m_spacings;
};

/// Text in front of a code becomes text of its own. Intended: it keeps its case, and the code's
/// stored text is folded; clients compare blocks.
/// Test: textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded.
void addLineWithCode(BlockList &blocks, const QString &line, int tag, MarkupRun &run)
{
    const QString head = line.left(tag);
    if (!head.trimmed().isEmpty())
        blocks.add(run.unfolded(head));
    DocumentBlock block;
    block.setQrCode(line.midRef(tag + qrTag.size()).trimmed().toUtf8());
    block.setAlignment(AlignCenter);
    QStringList text = block.text();
    for (QString &part : text)
        part = run.folded(part);
    block.setText(text);
    blocks.add(block);
}

TextPrinterDocument documentOfLines(const QStringList &lines, int leftMargin, bool readsQrTag,
                                    const SpecialCharacters &symbols)
{
    MarkupRun run(leftMargin);
    BlockList blocks;
    for (const QString &line : lines) {
        const int tag = readsQrTag ? placeOfTag(qrTag, line) : -1;
        if (tag < 0)
            blocks.add(run.printed(line));
        else
            addLineWithCode(blocks, line, tag, run);
    }
    TextPrinterDocument document;
    document.setBlocks(blocks.take());
    document.setCharImages(symbols);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(receiptTicketAction));
    return document;
}

}  // namespace

QStringList PrinterDocumentFormatter::toFormattedText(const PrinterDocument &document) const
{
    DocumentValues values(document);
    QStringList lines;
    const QStringList &templateLines = m_templateLines->lines();
    lines.reserve(templateLines.size());
    for (const QString &line : templateLines)
        lines.append(lineWithValues(line, values));
    return lines;
}

QStringList PrinterDocumentFormatter::toPlainText(const PrinterDocument &document, int width) const
{
    return templates::printed(*this, *m_templateLines, document, m_leftMargin,
                              [=] { return TextOutput(m_leftMargin, width); })
        .lines();
}

QStringList PrinterDocumentFormatter::plainTextToFormattedPlainText(const QString &text,
                                                                    int width) const
{
    TextOutput output(m_leftMargin, width);
    output.take(linesOf(text));
    return output.lines();
}

QString PrinterDocumentFormatter::toHtml(const PrinterDocument &document, bool rightAlign) const
{
    return htmlOfLines(prepareDocument(document), m_leftMargin, rightAlign, fragmentHead,
                       fragmentTail);
}

QString PrinterDocumentFormatter::toHtmlDocument(const PrinterDocument &document,
                                                 bool rightAlign) const
{
    return htmlOfLines(prepareDocument(document), m_leftMargin, rightAlign, documentHead,
                       documentTail);
}

QString PrinterDocumentFormatter::plainTextToHtml(const QString &text, bool rightAlign) const
{
    return htmlOfLines(linesOf(text), m_leftMargin, rightAlign, plainFragmentHead, fragmentTail);
}

QString PrinterDocumentFormatter::plainTextToHtmlDocument(const QString &text,
                                                          bool rightAlign) const
{
    return htmlOfLines(linesOf(text), m_leftMargin, rightAlign, documentHead, documentTail);
}

TextPrinterDocument PrinterDocumentFormatter::toTextPrinterDocument(
    const PrinterDocument &document) const
{
    return documentOfLines(prepareDocument(document), m_leftMargin, true, m_specialCharacters);
}

TextPrinterDocument PrinterDocumentFormatter::plainTextToTextPrinterDocument(
    const QString &text) const
{
    return documentOfLines(linesOf(text), m_leftMargin, false, m_specialCharacters);
}
