#include "printedlines.h"

#include "bbcode.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/fiscaldivision_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "road.h"
#include "values.h"

namespace templatelint {

namespace {

/// Tells what the library makes of lines, one after the other.
class PrintedLines
{
public:
    void addText(const QString &line, int number)
    {
        // A line of nothing but tags is none.
        if (m_formatter.formatPrintStr(line, m_format, m_font, m_alignment, 0).isValid())
            m_numbers.append(number);
    }

    void add(const QString &line, int number)
    {
        const int code = line.indexOf(templates::qrTag);
        if (code < 0)
            return addText(line, number);
        const QString head = line.left(code);
        if (!head.trimmed().isEmpty())
            addText(head, number);
        m_numbers.append(number);
    }

    QVector<int> take() { return m_numbers; }

private:
    const PrinterDocumentFormatter m_formatter{0, nullptr};
    unsigned char m_format = 0;
    unsigned char m_font = 0;
    ETextAlignment m_alignment = AlignLeft;
    QVector<int> m_numbers;
};

/// What a document prints of lines of a template; nothing where that can't be told.
QVector<int> printedOf(const QVector<Text> &lines, const Source &source, Values &values)
{
    const auto valueOf = [&values](const QString &inner) { return values.ofTag(inner); };
    const Road road = travel(lines, values.document(), valueOf, Form::Document);
    if (road.endless ||
        charactersOf(road.prepared) != preparedByEngine(charactersOf(lines), values.document()))
        return {};
    PrintedLines printed;
    for (const Text &line : road.prepared) {
        const int offset = line.firstOffset();
        printed.add(line.characters, offset == Text::nowhere ? 0 : source.place(offset).line);
    }
    return printed.take();
}

}  // namespace

QVector<int> printedLinesOf(const QStringList &lines, const PrinterDocument &document)
{
    const Source source(lines);
    Values values(document);
    return printedOf(source.lines(), source, values);
}

QVector<int> printedLinesOfPieces(const QStringList &lines, const PrinterDocument &document)
{
    const Source source(lines);
    Values values(document);
    bool isFound = false;
    QVector<int> numbers;
    const auto pieces =
        templates::fiscalPieces(source.lines(), PrinterDocumentFormatter::PARTS, isFound);
    for (const auto &piece : pieces) {
        if (piece.isText)
            numbers += printedOf(piece.lines, source, values);
        else
            numbers.append(0);
    }
    return numbers;
}

QVector<int> printedLinesOfText(const QStringList &lines)
{
    PrintedLines printed;
    for (int i = 0; i < lines.size(); ++i)
        printed.addText(lines.at(i), i + 1);
    return printed.take();
}

QVector<int> printedLinesOfBbCode(const QStringList &lines, const QList<DocumentBlock> &blocks)
{
    return BbCode(lines, {}).linesOf(blocks);
}

}  // namespace templatelint
