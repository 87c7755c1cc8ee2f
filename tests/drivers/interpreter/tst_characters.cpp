// What characters look like: fonts, sizes, effects, character sets, drawings of the stream's own.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

namespace {

/// Knows one letter: a bar that ends above the lowest dot.
class BarReader : public LetterReader
{
public:
    char16_t letterOf(const Paper::Picture &drawing, QSize cell) const override
    {
        cells.append(cell);
        const bool isBar = drawing.size == QSize(1, 24) &&
                           drawing.rows == QByteArray(23, '\x80') + QByteArray(1, '\0');
        return isBar ? u'ж' : u'\0';
    }

    mutable QVector<QSize> cells;  ///< of what was asked for
};

}  // namespace

class TestCharacters : public QObject
{
    Q_OBJECT

    static void addCell(const char *name, const QByteArray &stream, QSize size, QSize scale,
                        int effects = 0)
    {
        QTest::newRow(name) << stream << size << scale << effects;
    }

private Q_SLOTS:
    void cellOfACharacter_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("scale");
        QTest::addColumn<int>("effects");
        const QSize a(12, 24);
        const QSize b(9, 17);
        const QSize one(1, 1);
        addCell("as after a reset", "x", a, one);
        addCell("ESC ! font B", bytes("\x1B!\x01x"), b, one);
        addCell("ESC ! bold", bytes("\x1B!\x08x"), a, one, Paper::Bold);
        addCell("ESC ! double height", bytes("\x1B!\x10x"), {12, 48}, {1, 2});
        addCell("ESC ! double width", bytes("\x1B!\x20x"), {24, 24}, {2, 1});
        addCell("ESC ! underline", bytes("\x1B!\x80x"), a, one, Paper::Underline);
        addCell("ESC ! all", bytes("\x1B!\xB9x"), {18, 34}, {2, 2}, Paper::Bold | Paper::Underline);
        addCell("ESC ! takes all back", bytes("\x1B!\xB9\x1B!\0x"), a, one);
        addCell("GS ! 8 x 8", bytes("\x1D!\x77x"), {96, 192}, {8, 8});
        addCell("GS ! 3 wide, 2 high", bytes("\x1D!\x21x"), {36, 48}, {3, 2});
        addCell("GS ! beyond eight", bytes("\x1D!\x08x"), a, one);
        addCell("GS ! then ESC !", bytes("\x1D!\x77\x1B!\0x"), a, one);
        addCell("ESC M 1", bytes("\x1BM\x01x"), b, one);
        addCell("ESC M digit", bytes("\x1BM1x"), b, one);
        addCell("ESC M none", bytes("\x1BM\x05x"), a, one);
        addCell("ESC E", bytes("\x1B\x45\x01x"), a, one, Paper::Bold);
        addCell("ESC E lowest bit", bytes("\x1B\x45\xFEx"), a, one);
        addCell("ESC G", bytes("\x1BG\x01x"), a, one, Paper::Bold);
        addCell("ESC G and E off", bytes("\x1BG\x01\x1B\x45\0x"), a, one, Paper::Bold);
        addCell("ESC - 1", bytes("\x1B-\x01x"), a, one, Paper::Underline);
        addCell("ESC - 2", bytes("\x1B-\x02x"), a, one, Paper::ThickUnderline);
        addCell("ESC - digit", bytes("\x1B-2x"), a, one, Paper::ThickUnderline);
        addCell("ESC - none", bytes("\x1B-\x02\x1B-\x07x"), a, one, Paper::ThickUnderline);
        addCell("ESC - 0", bytes("\x1B-\x02\x1B-\0x"), a, one);
        addCell("GS B", bytes("\x1D\x42\x01x"), a, one, Paper::Inverse);
        addCell("ESC 4 1", bytes("\x1B\x34\x01x"), a, one, Paper::Italic);
        addCell("ESC r", bytes("\x1Br\x01x"), a, one, Paper::SecondColour);
        addCell("GS ( N",
                bytes("\x1D(N\x02\0"
                      "02x"),
                a, one, Paper::SecondColour);
        addCell("ESC {", bytes("\x1B{\x01x"), a, one, Paper::UpsideDown);
        addCell("ESC V", bytes("\x1BV\x01x"), {24, 12}, one, Paper::Turned);
        addCell("ESC V and size", bytes("\x1BV\x01\x1D!\x10x"), {24, 24}, {2, 1}, Paper::Turned);
        addCell("ESC V 3", bytes("\x1BV\x03x"), a, one);
        addCell("ESC @ resets all",
                bytes("\x1B!\xB9\x1D!\x77\x1BM\1\x1BG\1\x1D\x42\1\x1BV\1\x1B{\1\x1Br\1\x1B@x"), a,
                one);
    }
    void cellOfACharacter()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QSize, size);
        QFETCH(QSize, scale);
        QFETCH(int, effects);
        const Paper::Cell cell = cellOf(paperOf(stream + '\n'), u'x');
        QCOMPARE(QSize(cell.width, cell.height), size);
        QCOMPARE(QSize(cell.widthScale, cell.heightScale), scale);
        QCOMPARE(int(cell.effects), effects);
        QCOMPARE(cell.drawing, -1);
    }

    void whatTheModelLacksIsNoted()
    {
        QCOMPARE(notesOf(paperOf(bytes("\x1BM\x05x\n"))),
                 QStringList("ESC M asks for font 5, which the model hasn't"));
        QCOMPARE(notesOf(paperOf(bytes("\x1Bt\xC8x\n"))),
                 QStringList("ESC t asks for code page 200, which the model hasn't"));
        QCOMPARE(notesOf(paperOf(bytes("\x1BR\x63x\n"))),
                 QStringList("ESC R asks for country 99, which nobody knows"));
        QCOMPARE(notesOf(paperOf(bytes("\x1D!\x80x\n"))),
                 QStringList("GS ! asks for more than eight times the size"));
    }

    void fontsOfTheModel()
    {
        const auto sizeOf = [](const char *id, const QByteArray &stream) {
            const Paper::Cell cell = cellOf(paperOf(stream + "x\n", model(id)), u'x');
            return QSize(cell.width, cell.height);
        };
        QCOMPARE(sizeOf("CITIZEN_CTS_2000", bytes("\x1BM\x02")), QSize(8, 16));
        QCOMPARE(sizeOf("CITIZEN_PPU_700", bytes("\x1BM\x01")), QSize(9, 17));
        QCOMPARE(sizeOf("AV_268", ""), QSize(8, 16));
        QCOMPARE(sizeOf("AV_268", bytes("\x1B!\x01")), QSize(8, 16));
    }

    void charactersPerInchOfCustomChooseFonts()
    {
        const auto widthOf = [](const QByteArray &stream) {
            return int(cellOf(paperOf(stream + "x\n", model("CUSTOM_VKP_80")), u'x').width);
        };
        QCOMPARE(widthOf(""), 18);
        QCOMPARE(widthOf(bytes("\x1BM\x01")), 14);
        QCOMPARE(widthOf(bytes("\x1B\xC1\x01")), 14);
        QCOMPARE(widthOf(bytes("\x1B\xC1\x01\x1BM\x01")), 10);
        QCOMPARE(widthOf(bytes("\x1B\xC1\x02")), 10);
        QCOMPARE(widthOf(bytes("\x1B\xC1\x02\x1B\xC1\0")), 18);
    }

    void codePages()
    {
        QCOMPARE(textOf(bytes("\x1Bt\x11\x8F\xA8\xA2\xAE\n")), QString::fromUtf8("Пиво\n"));
        QCOMPARE(textOf(bytes("\x1Bt\x13\xD5 \x1Bt\x2E\xC6\n")), QString::fromUtf8("€ Ж\n"));
        QCOMPARE(textOf(bytes("\x1Bt\x07\x8F\n"), model("CITIZEN_CBM_1000")),
                 QString::fromUtf8("П\n"));
        QCOMPARE(textOf(bytes("\x1B\x1Dt\x0A\x8F\n"), model("TSP-TUP")), QString::fromUtf8("П\n"));
        // A number that the model hasn't changes nothing.
        QCOMPARE(textOf(bytes("\x1Bt\x11\x1Bt\xC8\x8F\n")), QString::fromUtf8("П\n"));
        QCOMPARE(textOf(bytes("\x1Bt\x11\x1B@\x8F\n")), QString::fromUtf8("Å\n"));
    }

    void codePageOfTheOptionsIsInForceAfterAReset()
    {
        StreamInterpreter::Options options;
        options.codePage = 17;
        const Paper paper =
            paperOf(bytes("\x8F\x1Bt\x02\x8F\x1B@\x8F\n"), PrinterProfile(), options);
        QCOMPARE(paper.toText(), QString::fromUtf8("П\n"));
        QCOMPARE(paperOf(bytes("\x8F\x1Bt\x02\x8F\n"), PrinterProfile(), options).toText(),
                 QString::fromUtf8("ПÅ\n"));
        options.codePage = 200;
        QCOMPARE(paperOf(bytes("\x8F\n"), PrinterProfile(), options).toText(),
                 QString::fromUtf8("Å\n"));
    }

    void freeBytesShowTheReplacementCharacter()
    {
        QCOMPARE(textOf(bytes("\x1Bt\x10\x81\n")), QString(QChar(0xFFFD)) + "\n");
    }

    void countriesReplaceCharacters()
    {
        QCOMPARE(textOf(bytes("[\\]\x1BR\x02[\\]\x1BR\0[\n")), QString::fromUtf8("[\\]ÄÖÜ[\n"));
        QCOMPARE(textOf(bytes("\x1BR\x08\\\x1B@\\\n")), QString("\\\n"));
        QCOMPARE(textOf(bytes("\x1BR\x03#\x1Bt\x11\x80#\n")), QString::fromUtf8("£А£\n"));
    }

    void ownCharactersAreDrawn()
    {
        // Two columns of three bytes: the left one all black, the right one its lowest dot.
        const QByteArray define = bytes("\x1B&\x03xx\x02\xFF\xFF\xFF\0\0\x01");
        const Paper paper = paperOf(define + bytes("x\x1B%\x01xy\x1B%\0x\n"));
        QCOMPARE(paper.cells.size(), 4);
        QCOMPARE(paper.cells.at(0).drawing, -1);
        QCOMPARE(paper.cells.at(1).drawing, 0);
        QCOMPARE(paper.cells.at(2).drawing, -1);
        QCOMPARE(paper.cells.at(3).drawing, -1);
        const Paper::Picture picture = paper.pictures.at(0);
        QCOMPARE(picture.size, QSize(2, 24));
        const QStringList dots = dotsOf(picture);
        QCOMPARE(dots.first(), QString("#."));
        QCOMPARE(dots.last(), QString("##"));
        QCOMPARE(paper.lines.first().pictureCount, 0);
        QCOMPARE(paper.toText(), QString::fromUtf8("x\uFFFDyx\n"));
    }

    void ownCharactersAreTheLettersThatTheyShow()
    {
        // The other one is no letter, and is never read as its byte's.
        const QByteArray define =
            bytes("\x1B&\x03xy\x02\xFF\xFF\xFF\0\0\x01\x01\xFF\xFF\xFE\x1B%\x01");
        const BarReader letters;
        StreamInterpreter::Options options;
        options.letters = &letters;
        const auto textOf = [&options](const QByteArray &stream) {
            return paperOf(stream, PrinterProfile(), options).toText();
        };
        QCOMPARE(textOf(define + bytes("axyz\n")), QString::fromUtf8("a\uFFFDжz\n"));
        QCOMPARE(letters.cells, QVector<QSize>(2, QSize(12, 24)));
        QCOMPARE(textOf(define + bytes("y\x1B%\0y\x1B%\x01y\x1B?yy\n")),
                 QString::fromUtf8("жyжy\n"));
        // Bytes that the page leaves free, and control characters of the page, as well.
        QCOMPARE(textOf(bytes("\x1Bt\x10\x1B&\x03\x81\x81\x01\xFF\xFF\xFE\x1B%\x01\x81\n")),
                 QString::fromUtf8("ж\n"));
        const QByteArray two = bytes("\x1C\x32\xFE\xA1\xFF\xFF\xFE") + QByteArray(69, '\0');
        QCOMPARE(textOf(two + bytes("\x1C&\xFE\xA1\n")), QString::fromUtf8("\uFFFD\n"));
    }

    void ownCharactersAreTakenBack()
    {
        const QByteArray define = bytes("\x1B&\x03xy\x01\xFF\xFF\xFF\x01\xFF\xFF\xFF\x1B%\x01");
        const auto drawnOf = [&define](const QByteArray &stream) {
            int drawn = 0;
            for (const Paper::Cell &cell : paperOf(define + stream).cells)
                drawn += cell.drawing >= 0 ? 1 : 0;
            return drawn;
        };
        QCOMPARE(drawnOf("xyz\n"), 2);
        QCOMPARE(drawnOf(bytes("\x1B?xxyz\n")), 1);
        QCOMPARE(drawnOf(bytes("\x1B@\x1B%\x01xyz\n")), 0);
        QCOMPARE(drawnOf(bytes("\x1BM\x01xyz\n")), 0);  // another font
    }

    void ownCharactersOfOneFontAreCutToItsCell()
    {
        const QByteArray columns(3 * 14, '\xFF');
        const Paper paper =
            paperOf(bytes("\x1BM\x01\x1B&\x03xx\x0E") + columns + bytes("\x1B%\x01x\n"));
        QCOMPARE(paper.pictures.at(0).size, QSize(9, 17));
        QCOMPARE(dotsOf(paper.pictures.at(0)).first(), QString("#########"));
    }

    void twoByteCharacters()
    {
        // Nothing is known of the model's set: it is taken for a usual one, and told.
        const Paper paper = paperOf(bytes("a\x1C&\xD6\xD0z\x1C.\x8F\n"));
        QCOMPARE(paper.toText(), QString::fromUtf8("a中zÅ\n"));
        QCOMPARE(placeOf(cellOf(paper, u'中')), QRect(12, 0, 24, 24));
        QCOMPARE(placeOf(cellOf(paper, u'z')), QRect(36, 0, 12, 24));
        QCOMPARE(notesOf(paper).size(), 1);
        QVERIFY(notesOf(paper).first().endsWith("taken for GB18030"));
        // A code that is chosen and never used is nothing to tell of.
        QCOMPARE(notesOf(paperOf(bytes("\x1C\x43\x01"
                                       "a\n"))),
                 QStringList());
        QCOMPARE(textOf(bytes("\x1C\x43\x01\x1C&\x93\xFA\n")), QString::fromUtf8("日\n"));
        QCOMPARE(textOf(bytes("\x1C\x43\0\x1C&\x46\x7C\n")), QString::fromUtf8("日\n"));
        QCOMPARE(textOf(bytes("\x1Bp\x46\x7C\x1Bqa\n"), model("TSP-TUP")),
                 QString::fromUtf8("日a\n"));
        QCOMPARE(textOf(bytes("\x1B$\x01\x93\xFA\x1B$\0a\n"), model("TSP-TUP")),
                 QString::fromUtf8("日a\n"));
    }

    void sizesOfTwoByteCharacters()
    {
        const auto placeAfter = [](const QByteArray &stream) {
            return placeOf(cellOf(paperOf(bytes("\x1C&") + stream + bytes("\xD6\xD0\n")), u'中'));
        };
        QCOMPARE(placeAfter(bytes("\x1C!\x04")), QRect(0, 0, 48, 24));
        QCOMPARE(placeAfter(bytes("\x1C!\x08")), QRect(0, 0, 24, 48));
        QCOMPARE(placeAfter(bytes("\x1CW\x01")), QRect(0, 0, 48, 48));
        QCOMPARE(placeAfter(bytes("\x1CS\x02\x04")), QRect(2, 0, 24, 24));
        const Paper paper = paperOf(bytes("\x1C&\x1CS\x02\x04\x1C-\x02\xD6\xD0\xD6\xD0\n"));
        QCOMPARE(paper.cells.at(1).left, 32);
        QCOMPARE(int(paper.cells.at(0).effects), int(Paper::ThickUnderline));
    }

    void halfOfATwoByteCharacterIsNoted()
    {
        const Paper paper = paperOf(bytes("\x1C&\xD6\na\n"));
        QVERIFY(notesOf(paper).contains("half of a two-byte character is left out"));
        QCOMPARE(paper.toText(), QString("\na\n"));
        QCOMPARE(textOf(bytes("\x1C&\xFE\xFF\n")), QString(QChar(0xFFFD)) + "\n");
    }

    void ownTwoByteCharacters()
    {
        const QByteArray define = bytes("\x1C\x32\xFE\xA1") + QByteArray(72, '\xFF');
        const Paper paper = paperOf(define + bytes("\x1C&\xFE\xA1\n"));
        QCOMPARE(paper.cells.size(), 1);
        QCOMPARE(paper.pictures.value(paper.cells.first().drawing).size, QSize(24, 24));
        QCOMPARE(paper.toText(), QString(QChar(0xFFFD)) + "\n");
        QCOMPARE(paperOf(define + bytes("\x1C?\xFE\xA1\x1C&\xFE\xA1\n")).cells.first().drawing, -1);
    }
};

QTEST_GUILESS_MAIN(TestCharacters)
#include "tst_characters.moc"
