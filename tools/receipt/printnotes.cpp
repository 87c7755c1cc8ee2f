#include "printnotes.h"

#include <algorithm>

namespace tool {

namespace {

using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintNote;

constexpr int mostLongLines = 100;
constexpr int longestShownText = 40;

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

QStringList textsOf(const QVector<PrintNote> &notes, const Places &places)
{
    QStringList texts;
    for (const PrintNote &note : notes)
        texts.append(places.inMessage(note.toString()));
    return texts;
}

}  // namespace tool
