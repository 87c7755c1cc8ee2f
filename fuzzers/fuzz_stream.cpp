// What goes to a printer: read whole and in pieces, listed and printed.
#include <algorithm>
#include <iterator>

#include "fuzzing.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/streamlisting.h"
#include "printerslib/drivers/streamreader.h"
#include "support/joinedtexts.h"

using fuzzing::equal;
using fuzzing::holds;
using namespace printerslib::drivers;

namespace {

const char *const models[] = {"GENERAL_EPSON_PROTOCOL", "CUSTOM_VKP_80", "CITIZEN_PPU_700",
                              "CITIZEN_CTS_2000",       "TSP-TUP",       "SWECOIN_TM_20XX"};
constexpr int longestPiece = 64;

QVector<StreamCommand> readInPieces(const QByteArray &stream, const PrinterProfile &profile,
                                    int size)
{
    StreamReader reader(profile);
    QVector<StreamCommand> commands;
    for (int at = 0; at < stream.size(); at += size)
        commands += reader.read(stream.mid(at, size));
    commands += reader.finish();
    return joined(commands);
}

void togetherTheyAreTheStream(const QByteArray &stream, const QVector<StreamCommand> &commands)
{
    QByteArray bytes;
    for (const StreamCommand &command : commands) {
        equal("offsets have no gaps", command.offset, qint64(bytes.size()));
        holds("no command is empty", !command.bytes.isEmpty());
        holds("operands stand before data", command.operandsBegin <= command.payloadBegin &&
                                                command.payloadBegin <= command.bytes.size());
        bytes += command.bytes;
        const bool isLast = bytes.size() == stream.size();
        holds("only the end cuts commands off",
              isLast || command.kind != StreamCommand::Incomplete);
    }
    equal("put together they are the stream", bytes, stream);
}

void immediateOnesLieInData(const StreamCommand &command)
{
    qint64 last = command.offset + command.payloadBegin;
    for (const StreamCommand::RealTime &found : command.realTime) {
        holds("one behind the other", found.offset >= last);
        last = found.offset + found.bytes.size();
        equal("the bytes of the data", found.bytes,
              command.bytes.mid(int(found.offset - command.offset), found.bytes.size()));
    }
    holds("inside the command",
          command.realTime.isEmpty() || last <= command.offset + command.bytes.size());
}

void isTheSame(const StreamCommand &piece, const StreamCommand &whole)
{
    equal("the kind", int(piece.kind), int(whole.kind));
    equal("the bytes", piece.bytes, whole.bytes);
    holds("the row", piece.row == whole.row);
    equal("the expected length", piece.bytesExpected, whole.bytesExpected);
    equal("what is inside", piece.realTime.size(), whole.realTime.size());
    equal("whether it works", piece.isSwitchedOff, whole.isSwitchedOff);
}

void listingHasALineForEach(const QVector<StreamCommand> &commands, const PrinterProfile &profile)
{
    StreamListing listing(profile);
    for (const StreamCommand &command : commands) {
        const QString lines = listing.linesOf(command);
        equal("a line for each command", lines.count('\n'), 1 + command.realTime.size());
        holds("nothing that a terminal obeys",
              std::none_of(lines.begin(), lines.end(), [](QChar c) {
                  return c != '\n' && c.category() == QChar::Other_Control;
              }));
    }
}

void partsFollowEachOther(const Paper &paper)
{
    int cells = 0;
    int pictures = 0;
    int codes = 0;
    for (const Paper::Line &line : paper.lines) {
        equal("cells of lines follow each other", line.firstCell, cells);
        // Between them are the drawings of characters.
        holds("pictures of lines follow each other", line.firstPicture >= pictures);
        equal("codes of lines follow each other", line.firstCode, codes);
        cells += line.cellCount;
        pictures = line.firstPicture + line.pictureCount;
        codes += line.codeCount;
        holds("lines lie on the paper", line.top >= 0 && line.height >= 0);
    }
    equal("all cells are of a line", cells, paper.cells.size());
    holds("pictures of lines are there", pictures <= paper.pictures.size());
    equal("all codes are of a line", codes, paper.codes.size());
}

void picturesHaveTheirRows(const Paper &paper)
{
    for (const Paper::Picture &picture : paper.pictures) {
        holds("pictures have a size", picture.size.width() >= 0 && picture.size.height() >= 0);
        equal("rows of whole bytes", picture.rows.size(),
              (picture.size.width() + 7) / 8 * picture.size.height());
    }
}

void paperIsInShape(const Paper &paper)
{
    holds("no longer than 10 m", paper.length >= 0 && paper.length <= Paper::longest);
    partsFollowEachOther(paper);
    picturesHaveTheirRows(paper);
    for (const Paper::Cell &cell : paper.cells) {
        holds("cells have a size", cell.width > 0 && cell.height > 0);
        holds("and show something", cell.character != 0);
        holds("drawings are there", cell.drawing >= -1 && cell.drawing < paper.pictures.size());
    }
    const QString text = paper.toText();
    holds("text ends its lines", text.isEmpty() || text.endsWith('\n'));
    holds("no line has blanks at its end", !text.contains(QLatin1String(" \n")));
}

/// Of pieces of paper what tells one from another.
QStringList outlines(const QVector<Paper> &papers)
{
    QStringList all;
    for (const Paper &paper : papers)
        all.append(QStringLiteral("%1 %2 %3 %4 %5\n%6")
                       .arg(paper.length)
                       .arg(paper.lines.size())
                       .arg(paper.cells.size())
                       .arg(paper.pictures.size())
                       .arg(paper.events.size())
                       .arg(paper.toText()));
    return all;
}

void piecesPrintTheSame(const QByteArray &stream, const PrinterProfile &profile, int size)
{
    const QVector<Paper> whole = StreamInterpreter::papersOf(stream, profile);
    for (const Paper &paper : whole)
        paperIsInShape(paper);
    StreamInterpreter interpreter(profile);
    QVector<Paper> papers;
    for (int at = 0; at < stream.size(); at += size)
        papers += interpreter.read(stream.mid(at, size));
    papers += interpreter.finish();
    equal("pieces print the same", outlines(papers), outlines(whole));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const char *model = models[input.ConsumeIntegralInRange<int>(0, int(std::size(models)) - 1)];
    const int pieceSize = input.ConsumeIntegralInRange<int>(1, longestPiece);
    const QByteArray stream = QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());

    const PrinterProfile profile = PrinterProfile::forModel(QLatin1String(model)).value();
    const QVector<StreamCommand> whole = StreamReader::commandsOf(stream, profile);
    togetherTheyAreTheStream(stream, whole);
    const QVector<StreamCommand> pieces = readInPieces(stream, profile, pieceSize);
    equal("pieces make as many commands", pieces.size(), whole.size());
    for (int i = 0; i < whole.size(); ++i) {
        immediateOnesLieInData(whole.at(i));
        isTheSame(pieces.at(i), whole.at(i));
    }
    listingHasALineForEach(whole, profile);
    piecesPrintTheSame(stream, profile, pieceSize);
    return 0;
}
