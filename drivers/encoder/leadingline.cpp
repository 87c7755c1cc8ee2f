#include "printerslib/drivers/leadingline.h"

#include <QCoreApplication>
#include <algorithm>

#include "commandsets/commandrow_p.h"
#include "printerdocs/echarformat.h"
#include "printerslib/drivers/streamreader.h"

namespace printerslib::drivers {

namespace {

/// Where the first row of the document begins; 0 if there are no rows.
int placeOfFirstRow(const EncodedDocument &document)
{
    const auto row = std::find_if(document.marks.begin(), document.marks.end(),
                                  [](const EncodedDocument::Mark &mark) { return mark.block > 0; });
    return row == document.marks.end() ? 0 : row->offset;
}

/// The command that chose the page with which the rows begin; empty: none did.
QByteArray pageChoiceIn(const QByteArray &beginning, const PrinterProfile &profile)
{
    QByteArray choice;
    const QVector<StreamCommand> commands = StreamReader::commandsOf(beginning, profile);
    for (const StreamCommand &command : commands) {
        if (command.row != nullptr && command.row->id == CommandId::CodePage)
            choice = command.bytes;
    }
    return choice;
}

/// Blocks printed by a printer that is on already, and isn't reset: each state is set.
EncodedDocument encodedFor(const PrintTarget &target, const QList<DocumentBlock> &blocks)
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    document.setDoInit(false);
    return DocumentEncoder(target, {}).encode(document);
}

DocumentBlock boldLine(const QString &line)
{
    return DocumentBlock::createSimpleBlock(line, AlignCenter, QByteArray(1, '\0'),
                                            QByteArray(1, char(CharBold)), 0, 0);
}

void addNotes(EncodedDocument &document, const QVector<PrintNote> &notes)
{
    for (PrintNote note : notes) {
        note.block = 0;
        note.line = 0;
        document.notes.append(note);
    }
}

}  // namespace

EncodedDocument withLineInFront(const EncodedDocument &document, const PrintTarget &target,
                                const QString &line)
{
    return withLinesInFront(document, target, {line});
}

EncodedDocument withLinesInFront(const EncodedDocument &document, const PrintTarget &target,
                                 const QStringList &lines)
{
    QList<DocumentBlock> blocks;
    for (const QString &line : lines) {
        if (!line.isEmpty())
            blocks.append(boldLine(line));
    }
    if (blocks.isEmpty() || !document.error.isEmpty() || document.bytes.isEmpty())
        return document;
    EncodedDocument made = encodedFor(target, blocks);
    if (!made.error.isEmpty())
        return made;
    const int place = placeOfFirstRow(document);
    // Behind the line all is as the beginning of the document has set it.
    const QByteArray piece = made.bytes + encodedFor(target, {}).bytes +
                             pageChoiceIn(document.bytes.left(place), target.profile());
    EncodedDocument result = document;
    result.bytes.insert(place, piece);
    for (EncodedDocument::Mark &mark : result.marks) {
        if (mark.offset >= place && (mark.offset > 0 || mark.block > 0))
            mark.offset += piece.size();
    }
    addNotes(result, made.notes);
    return result;
}

QString repeatMark()
{
    return QCoreApplication::translate("PrintJob", "REPEAT");
}

}  // namespace printerslib::drivers
