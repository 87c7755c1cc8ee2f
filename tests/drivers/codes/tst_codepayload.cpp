// What payloads become before they are drawn.
#include <QtTest>

#include "codes/codepayload_p.h"

using namespace printerslib::drivers::codes;

class TestCodePayload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void elementsStandInBrackets_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QByteArray>("elements");
        const auto row = [](const char *name, const QByteArray &payload,
                            const QByteArray &elements) {
            QTest::newRow(name) << payload << elements;
        };
        row("none", "", "");
        row("FNC1 alone", "\x1D", "");
        row("one of known length", "0104012345678901", "[01]04012345678901");
        row("two of known length", "010401234567890111261231", "[01]04012345678901[11]261231");
        row("known, then unknown", "010401234567890110AB", "[01]04012345678901[10]AB");
        row("unknown, then known",
            "10AB\x1D"
            "0104012345678901",
            "[10]AB[01]04012345678901");
        row("identifier of four digits",
            "3103001750"
            "10AB",
            "[31]03001750[10]AB");
        row("known length that isn't reached", "0104", "[01]04");
        row("shorter than an identifier", "0", "[0]");
        row("FNC1 at both ends",
            "\x1D"
            "10AB\x1D",
            "[10]AB");
        row("many of known length", QByteArray("11261231").repeated(100000),
            QByteArray("[11]261231").repeated(100000));
        row("in parentheses", "(01)04012345678901(10)AB", "[01]04012345678901[10]AB");
        row("in parentheses with FNC1", "(10)AB\x1D(21)1", "[10]AB[21]1");
    }
    void elementsStandInBrackets()
    {
        QFETCH(QByteArray, payload);
        QTEST(bracketedElements(payload), "elements");
    }

    void upcIsShortened_data()
    {
        QTest::addColumn<QByteArray>("digits");
        QTest::addColumn<QByteArray>("shortened");
        const auto row = [](const char *name, const QByteArray &digits,
                            const QByteArray &shortened) {
            QTest::newRow(name) << digits << shortened;
        };
        row("two digits of the maker", "01200000789", "0127890");
        row("two digits and a 1", "01210000789", "0127891");
        row("two digits and a 2", "01220000789", "0127892");
        row("three digits of the maker", "01230000089", "0123893");
        row("four digits of the maker", "01234000009", "0123494");
        row("five digits of the maker", "01234500005", "0123455");
        row("five digits and a small article", "01234500004", "");
        row("check digit stays", "012000007896", "01278906");
        row("another number system", "11200000789", "");
        row("too much", "01234567890", "");
    }
    void upcIsShortened()
    {
        QFETCH(QByteArray, digits);
        QTEST(shortenedUpc(digits), "shortened");
    }

    void starsGoWhereBothAre_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QByteArray>("bare");
        QTest::newRow("both") << QByteArray("*A*") << QByteArray("A");
        QTest::newRow("none") << QByteArray("A") << QByteArray("A");
        QTest::newRow("one") << QByteArray("*A") << QByteArray("*A");
        QTest::newRow("nothing else") << QByteArray("**") << QByteArray("");
        QTest::newRow("a single one") << QByteArray("*") << QByteArray("*");
    }
    void starsGoWhereBothAre()
    {
        QFETCH(QByteArray, payload);
        QTEST(withoutStars(payload), "bare");
    }
};

QTEST_APPLESS_MAIN(TestCodePayload)
#include "tst_codepayload.moc"
