#include <QtTest>
#include <cmath>

#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/templatetags_p.h"

using namespace templates;

// What the tables of the template language say of a tag, the engine does, whatever rows they have.
class TestTemplateTags : public QObject
{
    Q_OBJECT

private:
    static constexpr int givenSpacing = 9;

    /// The line as a block, after plain lines of this spacing.
    static DocumentBlock printed(const QString &line)
    {
        unsigned char format = 0;
        unsigned char font = 0;
        ETextAlignment alignment = AlignLeft;
        return PrinterDocumentFormatter(0, nullptr)
            .formatPrintStr(line, format, font, alignment, givenSpacing);
    }
    static QByteArray formatsOf(const QString &line) { return printed(line).format().value(0); }
    static QString filled(const QString &line)
    {
        return PrinterDocumentFormatter(0, nullptr).processDocAttributes(line, PrinterDocument());
    }
    static QString withoutZeroGroup(double value)
    {
        QString text("[a]");
        PrinterDocumentFormatter(0, nullptr)
            .removeGroupIfZero(2, text, QString::number(value, 'g', 17));
        return text;
    }

private Q_SLOTS:
    void eachPlainTagIsTakenOut_data()
    {
        QTest::addColumn<int>("row");
        int row = 0;
        for (const PlainTag &tag : plainTags)
            QTest::newRow(tag.text.data()) << row++;
    }

    void eachPlainTagIsTakenOut()
    {
        QFETCH(int, row);
        const PlainTag &tag = plainTags[row];
        const DocumentBlock block = printed("a" + QString(tag.text) + "b");
        QCOMPARE(block.text(), QStringList("a" + QString(tag.left) + "b"));
        const int alignment = tag.step == MarkupStep::Align ? tag.value : int(AlignLeft);
        QCOMPARE(int(block.alignment()), alignment);
        const int spacing = tag.step == MarkupStep::SetSpacing ? tag.value : givenSpacing;
        QCOMPARE(block.lineSpacing(), QList<int>{spacing});
    }

    // The row of another tag doesn't compile.
    void tagOfTheMarkupIsShortAndWhole()
    {
        QVERIFY(isMarkup(latin1Text("<A>")));
        QVERIFY(isMarkup(latin1Text("<:H2>")));
        QVERIFY(!isMarkup(latin1Text("<ABC4>")));  // an attribute
        QVERIFY(!isMarkup(latin1Text("<>")));
        QVERIFY(!isMarkup(latin1Text("<A<>")));
        QVERIFY(!isMarkup(latin1Text("<A>>")));
        QVERIFY(!isMarkup(latin1Text("A>>")));
        QVERIFY(!isMarkup(latin1Text("<AB")));
        QVERIFY(!isMarkup(QLatin1String()));
    }

    void eachFormatHasThreeTags_data()
    {
        QTest::addColumn<int>("row");
        int row = 0;
        for (const FormatTag &tag : rangeOrder)
            QTest::newRow(tag.wholeLine.data()) << row++;
    }

    void eachFormatHasThreeTags()
    {
        QFETCH(int, row);
        const FormatTag &tag = rangeOrder[row];
        const char flag = static_cast<char>(tag.flag);
        QCOMPARE(formatsOf("ab" + QString(tag.wholeLine)), QByteArray(2, flag));
        const QString range = "a" + QString(tag.open) + "b" + tag.close + "c";
        QCOMPARE(printed(range).text(), QStringList("abc"));
        QCOMPARE(formatsOf(range), QByteArray(1, '\0') + flag + '\0');
    }

    void everyFlagOfACharacterHasItsTags()
    {
        uint flags = CharRawCode;  // which a code's tag sets
        for (const FormatTag &tag : wholeLineOrder)
            flags |= tag.flag;
        QCOMPARE(flags, 0x7FU);
    }

    void shorterTagsAreNoAttributes()
    {
        const QString shortest = "<" + QString(shortestAttributeTag - 2, 'a') + ">";
        QCOMPARE(filled(shortest), QString());
        const QString shorter = "<" + QString(shortestAttributeTag - 3, 'a') + ">";
        QCOMPARE(filled(shorter), shorter);
    }

    void greatestZeroTakesItsGroupAlong()
    {
        QCOMPARE(withoutZeroGroup(countsAsZero), QString());
        QCOMPARE(withoutZeroGroup(-countsAsZero), QString());
        QCOMPARE(withoutZeroGroup(std::nextafter(countsAsZero, 1)), QString("[a]"));
    }

    void symbolsAreTheCodesFromFirstToLast()
    {
        using namespace documents;
        QVERIFY(!isSymbol(QChar(firstSymbol - 1), 0));
        QVERIFY(isSymbol(QChar(firstSymbol), 0));
        QVERIFY(isSymbol(QChar(lastSymbol), char(CharBold)));
        QVERIFY(!isSymbol(QChar(lastSymbol + 1), 0));
        QVERIFY(!isSymbol(QChar(lastSymbol), char(CharRawCode)));
    }

    void shortArraysGoOnWithTheirLastByte()
    {
        using documents::CharacterBytes;
        const QByteArray bytes("ab");
        QCOMPARE(CharacterBytes(bytes).at(1), 'b');
        QCOMPARE(CharacterBytes(bytes).at(7), 'b');
        QCOMPARE(CharacterBytes(QByteArray()).at(0), '\0');
        QCOMPARE(CharacterBytes(bytes).from(1).at(0), 'b');
        QCOMPARE(CharacterBytes::extended(bytes, 4), QByteArray("abbb"));
        QCOMPARE(CharacterBytes::extended(bytes, 1), bytes);
        QCOMPARE(CharacterBytes::extended(QByteArray(), 2), QByteArray(2, '\0'));
    }
};

QTEST_GUILESS_MAIN(TestTemplateTags)
#include "tst_templatetags.moc"
