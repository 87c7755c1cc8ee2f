// A line in front of a document that is encoded already, such as the word that it is a repeat.
#include <QtTest>

#include "printedpaper.h"
#include "printerslib/drivers/leadingline.h"

using namespace printedpaper;

namespace {

const QString word = "REPEAT";

/// What the paper shows, with the places from the first line below `top` on.
QStringList cellsBelow(const Paper &paper, int top)
{
    QStringList cells;
    for (const Paper::Cell &cell : paper.cells) {
        const Paper::Picture *drawing =
            cell.drawing < 0 ? nullptr : &paper.pictures.at(cell.drawing);
        const QString text = cellText({cell.left, cell.top - top, cell.width, cell.height},
                                      cell.character, cell.effects, drawing);
        if (cell.top >= top && isSeen(text, cell.effects))
            cells.append(text);
    }
    return cells;
}

QString textOfCells(const Paper &paper)
{
    QString text;
    for (const Paper::Cell &cell : paper.cells)
        text += QChar(cell.character);
    return text.simplified();
}

/// Whether the blanks in front of the first line make up half of what is free.
bool isCentered(const QVector<Paper::Cell> &cells, int width)
{
    const auto first = std::find_if(cells.begin(), cells.end(),
                                    [](const Paper::Cell &cell) { return cell.character != u' '; });
    const int free = width - word.size() * first->width;
    return first != cells.end() && std::abs(first->left - free / 2) <= first->width;
}

TextPrinterDocument manyKinds(bool isReset = true)
{
    TextPrinterDocument document = documentOf(
        {textBlock("Total 1,00 \u20AC \u0416"), textBlock("wide", AlignRight, CharDoubleWidth),
         textBlock("bold\nunderlined", AlignCenter, CharBold | CharUnderline)});
    document.setDoInit(isReset);
    return document;
}

/// Rows of the document by the bytes behind their marks.
QList<QByteArray> piecesOf(const EncodedDocument &document)
{
    QList<QByteArray> pieces;
    for (int i = 0; i < document.marks.size(); ++i) {
        const int begin = document.marks.at(i).offset;
        const int end =
            i + 1 < document.marks.size() ? document.marks.at(i + 1).offset : document.bytes.size();
        pieces.append(document.bytes.mid(begin, end - begin));
    }
    return pieces;
}

}  // namespace

class TestLeadingLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineStandsAboveTheDocument_data() { addModels(); }
    void lineStandsAboveTheDocument()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        const EncodedDocument made = withLineInFront(encoded(manyKinds(), to), to, word);
        const QVector<Paper> papers = papersOf(made.bytes, to.profile());
        QVERIFY(!papers.isEmpty());
        QVERIFY2(textOfCells(papers.first()).startsWith(word),
                 qPrintable(textOfCells(papers.first())));
        QVERIFY(isCentered(papers.first().cells, to.lineDots()));
        QCOMPARE(eventsOf(papers), QStringList());
    }

    void restOfThePaperStaysAsItIs_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<bool>("isReset");
        for (const QString &model : models()) {
            QTest::addRow("%s", qPrintable(model)) << model << true;
            QTest::addRow("%s without reset", qPrintable(model)) << model << false;
        }
    }
    void restOfThePaperStaysAsItIs()
    {
        QFETCH(QString, model);
        QFETCH(bool, isReset);
        const PrintTarget to = target(model);
        const EncodedDocument before = encoded(manyKinds(isReset), to);
        const EncodedDocument made = withLineInFront(before, to, word);
        const Paper old = papersOf(before.bytes, to.profile()).first();
        const Paper paper = papersOf(made.bytes, to.profile()).first();
        const int shift = paper.cells.last().top - old.cells.last().top;
        QVERIFY(shift > 0);
        QCOMPARE(cellsBelow(paper, shift), cellsBelow(old, 0));
        QCOMPARE(made.pieces, before.pieces);
        QCOMPARE(made.bytes.mid(made.marks.last().offset),
                 before.bytes.mid(before.marks.last().offset));
    }

    void pageOfTheShopStaysChosen()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.codePage = 19;
        const TextPrinterDocument document = documentOf(
            {DocumentBlock::createSimpleBlock(QString(QChar(0xE4)), AlignLeft, QByteArray(1, '\0'),
                                              QByteArray(1, char(CharRawCode)), 0, 0)});
        const EncodedDocument before = encoded(document, to, options);
        const EncodedDocument made = withLineInFront(before, to, word);
        const Paper old = papersOf(before.bytes, to.profile()).first();
        const Paper paper = papersOf(made.bytes, to.profile()).first();
        QCOMPARE(QChar(paper.cells.last().character), QChar(old.cells.last().character));
        QVERIFY(old.cells.last().character != u'A');
        // Another page shows something else there, so the test can tell.
        const EncodedDocument other = withLineInFront(encoded(document, to), to, word);
        const Paper otherPaper = papersOf(other.bytes, to.profile()).first();
        QVERIFY(otherPaper.cells.last().character != old.cells.last().character);
    }

    void marksMoveWithTheirRows()
    {
        const PrintTarget to = target("CUSTOM_VKP_80");
        const EncodedDocument before = encoded(manyKinds(), to);
        const EncodedDocument made = withLineInFront(before, to, word);
        QCOMPARE(made.marks.size(), before.marks.size());
        for (int i = 0; i < made.marks.size(); ++i) {
            QCOMPARE(made.marks.at(i).block, before.marks.at(i).block);
            QCOMPARE(made.marks.at(i).line, before.marks.at(i).line);
        }
        QCOMPARE(made.marks.first().offset, 0);
        QCOMPARE(piecesOf(made).mid(1), piecesOf(before).mid(1));
        QVERIFY(piecesOf(made).first().startsWith(piecesOf(before).first()));
    }

    void ticketBeforeIsCutInFrontOfTheLine()
    {
        const PrintTarget to = target("CITIZEN_CTS_2000");
        TextPrinterDocument document = manyKinds();
        document.setPrevTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
        document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::Before;
        const QRegularExpression cut("^1d 56|^1b 69|^1b 6d");
        const QRegularExpression pulse("^1b 70 ");
        const EncodedDocument made = withLineInFront(encoded(document, to, options), to, word);
        const QStringList commands = commandsOf(made.bytes, to.profile());
        const int text = commands.indexOf(QRegularExpression(".*" + word));
        QVERIFY(text > 0);
        QCOMPARE(commands.filter(cut).size(), 2);
        QCOMPARE(commands.mid(0, text).filter(cut).size(), 1);
        QCOMPARE(commands.mid(0, text).filter(pulse).size(), 1);
    }

    void whatTheCharacterSetsLackIsDots()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const EncodedDocument before = encoded(manyKinds(), to);
        const EncodedDocument made = withLineInFront(before, to, QString::fromUtf8("Ω≋"));
        const Paper paper = papersOf(made.bytes, to.profile()).first();
        QVERIFY(!paper.pictures.isEmpty());
        QVERIFY(made.error.isEmpty());
    }

    void notesAreOfTheWholeDocument()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const EncodedDocument before = encoded(manyKinds(), to);
        const EncodedDocument made =
            withLineInFront(before, to, QString::fromUtf8("\xF0\x9F\x98\x80"));
        QCOMPARE(made.notes.size(), before.notes.size() + 1);
        QCOMPARE(made.notes.last().block, 0);
        QCOMPARE(made.notes.last().line, 0);
    }

    void longLineGoesOn()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const EncodedDocument made =
            withLineInFront(encoded(manyKinds(), to), to, QString(100, 'x'));
        const Paper paper = papersOf(made.bytes, to.profile()).first();
        QCOMPARE(textOfCells(paper).count('x'), 100);
    }

    void ticketThatIsHeldOutKeepsItsRetraction()
    {
        const PrintTarget to = target("CUSTOM_VKP_80");
        TextPrinterDocument document = manyKinds();
        document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionReceipt));
        document.setRetractionTimeout(20);
        const EncodedDocument before = encoded(document, to);
        const EncodedDocument made = withLineInFront(before, to, word);
        QCOMPARE(made.retractAfterSeconds, 20);
        QVERIFY(!made.retraction.isEmpty());
        QCOMPARE(made.retraction, before.retraction);
    }

    void bytesWithoutMarksHaveItInFrontOfAll()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        EncodedDocument raw;
        raw.bytes = "\x1B@raw\n";
        const EncodedDocument made = withLineInFront(raw, to, word);
        QVERIFY(made.bytes.endsWith(raw.bytes));
        QCOMPARE(textOfCells(papersOf(made.bytes, to.profile()).first()), word + "raw");
        QVERIFY(made.marks.isEmpty());
    }

    void documentWithoutRowsHasItInFrontOfAll()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const EncodedDocument before = encoded(TextPrinterDocument(), to);
        const EncodedDocument made = withLineInFront(before, to, word);
        QVERIFY(made.bytes.endsWith(before.bytes));
        QCOMPARE(made.marks.first().offset, 0);
    }

    void linesStandFromTopToBottom_data()
    {
        QTest::addColumn<bool>("hasMarks");
        QTest::newRow("above a document") << true;
        QTest::newRow("above bytes without marks") << false;
    }
    void linesStandFromTopToBottom()
    {
        QFETCH(bool, hasMarks);
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        EncodedDocument before = encoded(documentOf({textBlock("Total")}), to);
        if (!hasMarks)
            before.marks.clear();
        const EncodedDocument made = withLinesInFront(before, to, {"ONE", "", "TWO", "THREE"});
        const Paper paper = papersOf(made.bytes, to.profile()).first();
        QVector<int> tops;
        for (const Paper::Cell &cell : paper.cells) {
            if (cell.character != u' ' && !tops.contains(cell.top))
                tops.append(cell.top);
        }
        QCOMPARE(tops.size(), 4);
        QString text = textOfCells(paper);
        QCOMPARE(text.remove(' '), QString("ONETWOTHREETotal"));
        QCOMPARE(withLinesInFront(before, to, {word}).bytes,
                 withLineInFront(before, to, word).bytes);
        QCOMPARE(withLinesInFront(before, to, {}).bytes, before.bytes);
    }

    void nothingIsAddedToAnErrorOrByAnEmptyLine()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        EncodedDocument faulty;
        faulty.error = "block 1: no";
        QCOMPARE(withLineInFront(faulty, to, word).error, faulty.error);
        QVERIFY(withLineInFront(faulty, to, word).bytes.isEmpty());
        const EncodedDocument before = encoded(manyKinds(), to);
        QCOMPARE(withLineInFront(before, to, QString()).bytes, before.bytes);
    }

    void lineThatCannotBePrintedIsTheError()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const QString endless(100'000, '\n');
        const EncodedDocument made = withLineInFront(encoded(manyKinds(), to), to, endless);
        QVERIFY(!made.error.isEmpty());
        QVERIFY(made.bytes.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestLeadingLine)

#include "tst_leadingline.moc"
