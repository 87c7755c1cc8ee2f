#include <QVarLengthArray>
#include <algorithm>
#include <utility>

#include "printerdocs/document/htmlwriter_p.h"
#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/document/zerobytes_p.h"
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

    /// Whether a line of a known look comes out as that says.
    Fallback takes(const LineLook &look) const
    {
        if (m_carried.format != 0 || m_carried.font != 0)
            return Fallback::CarriedStyle;
        return look.isOfOneFormat ? Fallback::None : Fallback::MixedFormats;
    }
    void carry(const LineLook &look) { m_carried = look.carried; }
    /// Whether the settings are still what they were.
    bool isUpToDate() const { return m_charactersMode == charactersMode(); }
    /// How many of a line's first characters have neither format nor font.
    int margin() const { return qBound(0, m_leftMargin, longestPaddedLine); }

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
    explicit OutputOfLines(int leftMargin, LineDetail wanted = LineDetail::WithBytes)
        : m_run(leftMargin, wanted)
    {}

    bool isUpToDate() const { return m_run.isUpToDate(); }
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

protected:
    MarkupRun m_run;
};

/// The text of a document, in which formats and fonts don't show.
class TextOutput : public OutputOfLines<TextOutput>
{
public:
    TextOutput(int leftMargin, int width)
        : OutputOfLines(leftMargin, LineDetail::TextOnly),
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
    static Fallback takes(const LineLook &) { return Fallback::None; }
    void planned(const LineLook &look, LineByPlan &line)
    {
        QString padded = m_run.folds() ? paddedLine(m_run.folded(line.text().toString()),
                                                    look.alignment, m_width)
                                       : line.padded(look.alignment, m_width);
        // The list's own text takes the other's place, which costs less than to share it for once.
        m_lines.append(QString());
        m_lines.last().swap(padded);
    }
    QStringList result() const { return m_lines; }

private:
    const int m_width;
    const QString m_emptyLine;
    QStringList m_lines;
};

class HtmlOutput : public OutputOfLines<HtmlOutput>
{
public:
    HtmlOutput(int leftMargin, bool rightAlign, QLatin1String head, QLatin1String tail)
        : OutputOfLines(leftMargin),
          m_bytesOfMargin(m_run.margin(), '\0'),
          m_rightAlign(rightAlign),
          m_tail(tail),
          m_html(head),
          m_writer(m_html)
    {}

    void reserve(int lines) { m_writer.reserve(qint64(lines) * htmlPerLine); }
    void blank() { general(QString()); }
    void general(const QString &line)
    {
        const PrintedLine printed = m_run.printed(line);
        if (printed.isValid)
            appendRow(printed.text, CharacterBytes(printed.fonts), CharacterBytes(printed.formats),
                      printed.alignment);
    }
    Fallback takes(const LineLook &look) const { return m_run.takes(look); }
    void planned(const LineLook &look, const LineByPlan &line)
    {
        const QStringView text = line.text();
        const QString folded = m_run.folds() ? m_run.folded(text.toString()) : QString();
        appendRow(m_run.folds() ? QStringView(folded) : text, bytesOf(look.font),
                  bytesOf(look.format), look.alignment);
        m_run.carry(look);
    }
    QString result()
    {
        m_html += QLatin1Char('\n');
        m_html += m_tail;
        return m_html;
    }

private:
    void appendRow(QStringView text, const CharacterBytes &fonts, const CharacterBytes &formats,
                   ETextAlignment alignment)
    {
        m_writer.appendRow(text, fonts, formats, alignment, m_rightAlign);
    }
    CharacterBytes bytesOf(char byte) const
    {
        return byte == 0 ? CharacterBytes({}) : CharacterBytes(m_bytesOfMargin, byte);
    }

    const QByteArray m_bytesOfMargin;
    const bool m_rightAlign;
    const QLatin1String m_tail;
    QString m_html;
    HtmlWriter m_writer;
};

/// Blocks of a document: neighbouring lines that are aligned alike are one block.
class BlockList
{
public:
    void add(PrintedLine &&line)
    {
        if (!line.isValid)
            return;
        if (!m_lines.isEmpty() && m_lines.last().alignment != line.alignment)
            closeBlock();
        m_lines.append(std::move(line));
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
        if (m_lines.isEmpty())
            return;
        m_blocks.append(DocumentBlock());
        DocumentBlock &block = m_blocks.last();
        block.setText(listOf(&PrintedLine::text));
        block.setFormat(listOf(&PrintedLine::formats));
        block.setFont(listOf(&PrintedLine::fonts));
        block.setAlignment(m_lines.last().alignment);
        block.setLineSpacing(listOf(&PrintedLine::spacing));
        m_lines.resize(0);
    }

    /// What all lines have of one kind.
    template <typename Value>
    QList<Value> listOf(Value PrintedLine::*value)
    {
        QList<Value> list;
        list.reserve(m_lines.size());
        for (PrintedLine &line : m_lines) {
            list.append(Value());
            list.last() = std::move(line.*value);
        }
        return list;
    }

    QList<DocumentBlock> m_blocks;
    QVarLengthArray<PrintedLine, 64> m_lines;  ///< of the block that is being gathered
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

class BlockOutput : public OutputOfLines<BlockOutput>
{
public:
    /// @param symbols those of the document, as they are when its result is asked for
    BlockOutput(int leftMargin, bool readsQrTag, const SpecialCharacters &symbols)
        : OutputOfLines(leftMargin), m_readsQrTag(readsQrTag), m_symbols(symbols)
    {}

    void reserve(int) {}
    void blank() { m_blocks.add(m_run.printed(QString())); }
    void general(const QString &line)
    {
        const int tag = m_readsQrTag ? placeOfTag(qrTag, line) : -1;
        if (tag < 0)
            m_blocks.add(m_run.printed(line));
        else
            addLineWithCode(m_blocks, line, tag, m_run);
    }
    Fallback takes(const LineLook &look) const { return m_run.takes(look); }
    void planned(const LineLook &look, const LineByPlan &line)
    {
        const QStringView text = line.text();
        const int size = static_cast<int>(text.size());
        const QByteArray formats = bytesOf(look.format, size);
        m_blocks.add({true, m_run.folds() ? m_run.folded(text.toString()) : text.toString(),
                      formats, look.font == look.format ? formats : bytesOf(look.font, size),
                      look.alignment, look.spacing});
        m_run.carry(look);
    }
    TextPrinterDocument result()
    {
        TextPrinterDocument document;
        document.setBlocks(m_blocks.take());
        document.setCharImages(m_symbols);
        document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(receiptTicketAction));
        return document;
    }

private:
    QByteArray bytesOf(char byte, int size) const
    {
        if (byte == 0)
            return zeroBytes(size);
        QByteArray bytes(size, byte);
        std::fill_n(bytes.begin(), m_run.margin(), '\0');
        return bytes;
    }

    const bool m_readsQrTag;
    const SpecialCharacters &m_symbols;
    BlockList m_blocks;
};

/// Prints lines as they are.
template <typename Output>
auto taken(Output &&output, const QStringList &lines)
{
    output.take(lines);
    return output.result();
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
    return templates::printed<TextOutput>(*this, *m_templateLines, document, m_leftMargin,
                                          m_leftMargin, width);
}

QStringList PrinterDocumentFormatter::plainTextToFormattedPlainText(const QString &text,
                                                                    int width) const
{
    return taken(TextOutput(m_leftMargin, width), linesOf(text));
}

QString PrinterDocumentFormatter::toHtml(const PrinterDocument &document, bool rightAlign) const
{
    return templates::printed<HtmlOutput>(*this, *m_templateLines, document, m_leftMargin,
                                          m_leftMargin, rightAlign, fragmentHead, fragmentTail);
}

QString PrinterDocumentFormatter::toHtmlDocument(const PrinterDocument &document,
                                                 bool rightAlign) const
{
    return templates::printed<HtmlOutput>(*this, *m_templateLines, document, m_leftMargin,
                                          m_leftMargin, rightAlign, documentHead, documentTail);
}

QString PrinterDocumentFormatter::plainTextToHtml(const QString &text, bool rightAlign) const
{
    return taken(HtmlOutput(m_leftMargin, rightAlign, plainFragmentHead, fragmentTail),
                 linesOf(text));
}

QString PrinterDocumentFormatter::plainTextToHtmlDocument(const QString &text,
                                                          bool rightAlign) const
{
    return taken(HtmlOutput(m_leftMargin, rightAlign, documentHead, documentTail), linesOf(text));
}

TextPrinterDocument PrinterDocumentFormatter::toTextPrinterDocument(
    const PrinterDocument &document) const
{
    return templates::printed<BlockOutput>(*this, *m_templateLines, document, m_leftMargin,
                                           m_leftMargin, true, m_specialCharacters);
}

TextPrinterDocument PrinterDocumentFormatter::plainTextToTextPrinterDocument(
    const QString &text) const
{
    return taken(BlockOutput(m_leftMargin, false, m_specialCharacters), linesOf(text));
}
