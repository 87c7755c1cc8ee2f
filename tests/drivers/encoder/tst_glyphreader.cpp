// Characters that streams define are read by their looks.
#include "printerslib/drivers/glyphreader.h"

#include <QtConcurrent>
#include <QtTest>

#include "encoder/glyphs_p.h"
#include "encoder/pagetable_p.h"
#include "printedpaper.h"

using namespace printedpaper;

namespace {

const QString cyrillic =
    QStringLiteral("АБВГДЕЁЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдеёжзийклмнопрстуфхцчшщъыьэюя");

PrinterProfile profileOf(const char *id)
{
    return *PrinterProfile::forModel(QString::fromLatin1(id));
}

/// Has neither Cyrillic nor most of Greek.
PrinterProfile western()
{
    return profileOf("CUSTOM_VKP_80");
}

QString readBack(const TextPrinterDocument &document, const PrintTarget &target)
{
    const GlyphReader letters(target.profile());
    StreamInterpreter::Options options;
    options.letters = &letters;
    QString text;
    for (const Paper &paper :
         StreamInterpreter::papersOf(encoded(document, target).bytes, target.profile(), options))
        text += paper.toText();
    return text;
}

/// As a reader of a paper writes it: without blanks at the ends of lines.
QString plainText(const TextPrinterDocument &document, const PrintTarget &target)
{
    QString text;
    for (DocumentBlock block : document.blocks()) {
        for (QString line : block.toStringList(target.symbolsPerLine())) {
            while (line.endsWith(u' '))
                line.chop(1);
            text += line + u'\n';
        }
    }
    return text;
}

bool isWithoutDots(const PrintLayout &layout)
{
    return std::none_of(layout.rows.begin(), layout.rows.end(),
                        [](const PrintLayout::Row &row) { return row.isRaster; }) &&
           std::none_of(layout.cells.begin(), layout.cells.end(),
                        [](const PrintLayout::Cell &cell) { return cell.isDots; });
}

}  // namespace

class TestGlyphReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first of all: tables are made by several threads at once.
    void threadsMayBeginAtOnce()
    {
        QVector<int> rounds(64);
        const GlyphReader letters(western());
        QtConcurrent::blockingMap(rounds, [&letters](int &known) {
            known = 0;
            for (const QSize cell : glyphs::cells) {
                for (const QChar c : cyrillic)
                    known += letters.letterOf(glyphs::of(c.unicode(), cell), cell) == c ? 1 : 0;
            }
        });
        const int all = cyrillic.size() * int(std::size(glyphs::cells));
        QCOMPARE(rounds, QVector<int>(rounds.size(), all));
    }

    void whatIsDrawnIsRead()
    {
        const GlyphReader letters(western());
        for (const QSize cell : glyphs::cells) {
            for (int code = 0x21; code <= 0xFFFF; ++code) {
                const auto character = static_cast<char16_t>(code);
                if (!glyphs::has(character))
                    continue;
                const Paper::Picture drawing = glyphs::of(character, cell);
                const char16_t letter = letters.letterOf(drawing, cell);
                // Perhaps another letter, which then looks just so.
                QVERIFY2(letter != 0, qPrintable(QString::number(code, 16)));
                if (letter == u' ')
                    QCOMPARE(drawing.rows.count('\0'), drawing.rows.size());
                else
                    QCOMPARE(glyphs::of(letter, cell).rows, drawing.rows);
            }
        }
    }

    void lettersThatLookAlikeAreThoseThatNoPageHas()
    {
        const QSize cell(12, 24);
        const Paper::Picture a = glyphs::of(u'A', cell);
        QCOMPARE(a.rows, glyphs::of(u'\u0410', cell).rows);
        QCOMPARE(a.rows, glyphs::of(u'\u0391', cell).rows);
        // Cyrillic first, and never the letter that the printer has itself.
        QCOMPARE(QChar(GlyphReader(western()).letterOf(a, cell)), QChar(u'\u0410'));
        const PrinterProfile russian = profileOf("EPSON_EU_4XX");
        QVERIFY(PageTable::of(russian)->has(u'\u0410'));
        QCOMPARE(QChar(GlyphReader(russian).letterOf(a, cell)), QChar(u'\u0391'));
    }

    void oneThatAllPagesHaveIsReadAsWell()
    {
        const QSize cell(12, 24);
        QVERIFY(PageTable::of(western())->has(u'7'));
        QCOMPARE(QChar(GlyphReader(western()).letterOf(glyphs::of(u'7', cell), cell)), QChar(u'7'));
    }

    void whatHasNoDotsIsBlank()
    {
        const GlyphReader letters(western());
        Paper::Picture drawing;
        QCOMPARE(QChar(letters.letterOf(drawing, {12, 24})), QChar(u' '));
        drawing.size = {5, 24};
        drawing.rows = QByteArray(24, '\0');
        QCOMPARE(QChar(letters.letterOf(drawing, {12, 24})), QChar(u' '));
        // Dots beyond its width aren't there.
        drawing.rows = QByteArray(24, '\x07');
        QCOMPARE(QChar(letters.letterOf(drawing, {12, 24})), QChar(u' '));
    }

    void dotsBeyondTheWidthDontCount()
    {
        const GlyphReader letters(western());
        Paper::Picture drawing = glyphs::of(u'Ж', {13, 24});
        for (int y = 0; y < 24; ++y)
            drawing.rows[2 * y + 1] = static_cast<char>(drawing.rows.at(2 * y + 1) | 0x05);
        QCOMPARE(QChar(letters.letterOf(drawing, {14, 24})), QChar(u'Ж'));
    }

    void columnsWithoutDotsMayBeMissing()
    {
        const GlyphReader letters(western());
        const QSize cell(12, 24);
        Paper::Picture drawing = glyphs::of(u'г', cell);
        drawing.size = {11, 24};
        QCOMPARE(QChar(letters.letterOf(drawing, cell)), QChar(u'г'));
        QCOMPARE(int(letters.letterOf(drawing, {10, 24})), 0);
    }

    void otherDrawingsAreNoLetters_data()
    {
        QTest::addColumn<Paper::Picture>("drawing");
        QTest::addColumn<QSize>("cell");
        const QSize cell(12, 24);
        Paper::Picture drawing = glyphs::of(u'Ж', cell);
        const Paper::Picture whole = drawing;
        drawing.rows[20] = static_cast<char>(drawing.rows.at(20) ^ 0x20);
        QTest::newRow("one dot") << drawing << cell;
        drawing = whole;
        drawing.rows.fill('\xFF');
        drawing.size = {11, 23};
        QTest::newRow("all dots") << drawing << cell;
        drawing = whole;
        drawing.rows.chop(1);
        QTest::newRow("rows missing") << drawing << cell;
        drawing = whole;
        drawing.size = {4096, 24};
        QTest::newRow("wider than its rows") << drawing << cell;
        drawing = whole;
        drawing.size = {INT_MAX, INT_MAX};
        QTest::newRow("wider than anything") << drawing << drawing.size;
        drawing = whole;
        drawing.size = {-12, -24};
        QTest::newRow("no size") << drawing << QSize(-1, -1);
        QTest::newRow("a character without a drawing") << glyphs::of(u'\u4E00', cell) << cell;
        QTest::newRow("a cell of nobody's") << glyphs::of(u'Ж', {11, 22}) << QSize(11, 22);
    }
    void otherDrawingsAreNoLetters()
    {
        QFETCH(Paper::Picture, drawing);
        QFETCH(QSize, cell);
        const char16_t letter = GlyphReader(western()).letterOf(drawing, cell);
        QVERIFY2(letter == 0 || letter == u' ', qPrintable(QString(QChar(letter))));
        if (letter == u' ')
            QVERIFY(drawing.size.width() < 0);
    }

    void textIsReadAsItWasWritten_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : models())
            QTest::newRow(qPrintable(model)) << model;
    }
    void textIsReadAsItWasWritten()
    {
        QFETCH(QString, model);
        const QStringList texts{
            QStringLiteral("Чек № 1207 \"Ёлка\"\n\n"
                           "Хлеб «Бородинский»\n1 шт ИТОГО 12,50\nСдача 5 €"),
            QStringLiteral("Ünïcode ß ½\nŻółć ąęśź\nșț őű čšž"),
            QStringLiteral("!\"#$%&'()*+,-./\n:;<=>?@[\\]^_`{|}~"),
            cyrillic.left(22) + u'\n' + cyrillic.mid(22, 22) + u'\n' + cyrillic.mid(44),
        };
        const PrinterInfo record = targetOf(model.toLatin1().constData()).record();
        int compared = 0;
        for (const PaperInfo &paper : record.paperTypes()) {
            for (int font = 0; font < 4; ++font) {
                const auto target = targetOf(model.toLatin1().constData(), paper.id(), font);
                for (const QString &text : texts) {
                    for (const int format : {0, int(CharBold | CharUnderline)}) {
                        const auto document =
                            documentOf({textBlock(text, AlignLeft, format, font), textBlock("z")});
                        const PrintLayout layout = layoutOf(document, target);
                        if (!isWithoutDots(layout) || !encoded(document, target).isFaithful())
                            continue;
                        QCOMPARE(readBack(document, target), plainText(document, target));
                        ++compared;
                    }
                }
            }
        }
        QVERIFY(compared > 0);
    }

    void ownCharactersAreReadAgainWhenOthersTakeTheirPlace()
    {
        // More different ones than the printer keeps.
        const PrintTarget target = targetOf("CUSTOM_VKP_80");
        QString text;
        int count = 0;
        for (char16_t code = 0x0400; code < 0x0520; ++code) {
            if (!glyphs::has(code))
                continue;
            text += QChar(code);
            text += ++count % 16 == 0 ? QStringLiteral("\n") : QStringLiteral("");
        }
        QVERIFY(count > target.profile().ownCharacters() + 16);
        text += u'\n' + text;
        const auto document = documentOf({textBlock(text)});
        QVERIFY(isWithoutDots(layoutOf(document, target)));
        const QString read = readBack(document, target);
        const QString written = plainText(document, target);
        QCOMPARE(read.size(), written.size());
        const QSize size = target.font(0).ownCharacter;
        for (int i = 0; i < read.size(); ++i) {
            if (read.at(i) != written.at(i))
                QCOMPARE(glyphs::of(read.at(i).unicode(), size).rows,
                         glyphs::of(written.at(i).unicode(), size).rows);
        }
    }

    void symbolsAreNoText()
    {
        TextPrinterDocument document = documentOf({textBlock(QStringLiteral("a\x01 Ж"))});
        MonochromeImage image;
        image.setWidth(8);
        image.setHeight(16);
        image.setImage(QByteArray(16, '\xA1'));
        document.setCharImages({{1, image}});
        QCOMPARE(readBack(document, targetOf("CUSTOM_VKP_80")), QString::fromUtf8("a\uFFFD Ж\n"));
    }
};

Q_DECLARE_METATYPE(Paper::Picture)
QTEST_APPLESS_MAIN(TestGlyphReader)
#include "tst_glyphreader.moc"
