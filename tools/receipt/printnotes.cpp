#include "printnotes.h"

#include <QRegularExpression>
#include <algorithm>
#include <memory>

namespace tool {

namespace {

using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintNote;

constexpr int mostLongLines = 100;
constexpr int longestShownText = 40;

/// How many lines and codes of a template a block is made of.
int partsOf(const DocumentBlock &block)
{
    return block.isText() ? block.text().size() : 1;
}

/// Finds the lines of blocks when they are asked for.
class LineFinder
{
public:
    LineFinder(const TextPrinterDocument &document, std::function<QVector<int>()> printedLines)
        : m_document(document), m_printedLines(std::move(printedLines))
    {}

    int lineOf(int block, int line)
    {
        if (m_printedLines) {
            m_lines = m_printedLines();
            m_printedLines = nullptr;
            findBlocks();
        }
        if (block < 1 || block >= m_firstParts.size())
            return 0;
        const int first = m_firstParts.at(block - 1);
        // Of several lines none is that of the block.
        const bool isOneLine = line > 0 || m_firstParts.at(block) == first + 1;
        return isOneLine ? m_lines.value(first + std::max(line, 1) - 1) : 0;
    }

private:
    void findBlocks()
    {
        int parts = 0;
        const QList<DocumentBlock> blocks = m_document.blocks();
        for (const DocumentBlock &block : blocks) {
            m_firstParts.append(parts);
            parts += partsOf(block);
        }
        m_firstParts.append(parts);
        if (parts != m_lines.size())
            m_firstParts.clear();
    }

    const TextPrinterDocument m_document;
    std::function<QVector<int>()> m_printedLines;
    QVector<int> m_lines;
    QVector<int> m_firstParts;  ///< of each block, among all lines and codes, and the end
};

QString clippedText(QString text)
{
    if (text.size() > longestShownText)
        text = text.left(longestShownText) + QStringLiteral("...");
    return text.replace(QLatin1Char('\t'), QLatin1Char(' '));
}

PrintNote longLineNote(const PrintLayout::Row &row, int rows, const QString &text)
{
    PrintNote note;
    note.block = row.block;
    note.line = row.line;
    note.isLoss = false;
    note.text = QStringLiteral("\"%1\" is too long for the paper: its %2 characters take %3 rows")
                    .arg(clippedText(text))
                    .arg(text.size())
                    .arg(rows);
    return note;
}

QVector<PrintNote> longLineNotes(const PrintLayout &layout, const TextPrinterDocument &document)
{
    QVector<PrintNote> notes;
    int more = 0;
    const QList<DocumentBlock> blocks = document.blocks();
    for (auto row = layout.rows.begin(); row != layout.rows.end(); ++row) {
        if (row->kind != PrintLayout::Row::Text || row->isWrapped)
            continue;
        const auto end = std::find_if(row + 1, layout.rows.end(),
                                      [](const PrintLayout::Row &next) { return !next.isWrapped; });
        const auto rows = static_cast<int>(end - row);
        if (rows > 1 && notes.size() < mostLongLines)
            notes.append(
                longLineNote(*row, rows, blocks.at(row->block - 1).text().at(row->line - 1)));
        else if (rows > 1)
            ++more;
    }
    if (more > 0) {
        PrintNote note;
        note.isLoss = false;
        note.text = QStringLiteral("and %1 more lines are too long for the paper").arg(more);
        notes.append(note);
    }
    return notes;
}

}  // namespace

LineOfBlock linesOfBlocks(const TextPrinterDocument &document,
                          const std::function<QVector<int>()> &printedLines)
{
    const auto finder = std::make_shared<LineFinder>(document, printedLines);
    return [finder](int block, int line) { return finder->lineOf(block, line); };
}

QString placeText(const LineOfBlock &lineOf, int block, int line)
{
    const int inTemplate = lineOf ? lineOf(block, line) : 0;
    if (inTemplate > 0)
        return QStringLiteral("line %1").arg(inTemplate);
    return line > 0 ? QStringLiteral("block %1, line %2").arg(block).arg(line)
                    : QStringLiteral("block %1").arg(block);
}

QString withLine(const LineOfBlock &lineOf, const QString &message)
{
    static const QRegularExpression place(QStringLiteral("^block ([0-9]+)(?:, line ([0-9]+))?: "));
    const QRegularExpressionMatch match = place.match(message);
    if (!match.hasMatch())
        return message;
    return placeText(lineOf, match.captured(1).toInt(), match.captured(2).toInt()) +
           QStringLiteral(": ") + message.mid(match.capturedLength());
}

QVector<PrintNote> notesOf(const PrintLayout &layout, const TextPrinterDocument &document)
{
    QVector<PrintNote> notes = layout.notes;
    notes += longLineNotes(layout, document);
    const auto isOfBlock = [](const PrintNote &note) { return note.block > 0; };
    const auto first = std::find_if(notes.begin(), notes.end(), isOfBlock);
    // What is of no block behind those of blocks tells how many more there are.
    const auto end = std::stable_partition(first, notes.end(), isOfBlock);
    std::stable_sort(first, end, [](const PrintNote &one, const PrintNote &other) {
        return std::make_pair(one.block, one.line) < std::make_pair(other.block, other.line);
    });
    return notes;
}

}  // namespace tool
