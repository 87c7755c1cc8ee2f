#include <QRandomGenerator>
#include <QtTest>

#include "printerdocs/printerdocument.h"

class TestPrinterDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsAreEmptyAndNoCopy()
    {
        const PrinterDocument document;
        QCOMPARE(document.isCopy(), false);
        QVERIFY(document.entries().isNull());
        QVERIFY(document.attributes().isEmpty());
    }

    void settersReplaceTheirField()
    {
        PrinterDocument document;
        document.setIsCopy(true);
        document.setEntries("a=1\tb=2");
        document.setAttributes({{"A", 1}, {"B", 2}});
        document.setAttributes({{"C", 3}});
        QCOMPARE(document.isCopy(), true);
        QCOMPARE(document.entries(), QString("a=1\tb=2"));
        QCOMPARE(document.attributes(), (QMap<QString, QVariant>{{"C", 3}}));
    }

    void missingNameReadsAsNullText()
    {
        const PrinterDocument document;
        const QVariant value = document.attributeValue("NAME");
        QVERIFY(value.isValid());
        QCOMPARE(value.type(), QVariant::String);
        QVERIFY(value.toString().isNull());
        QCOMPARE(document.hasAttribute("NAME"), false);
    }

    void namesAreCaseSensitive()
    {
        PrinterDocument document;
        document.setAttributes({{"NAME", 1}});
        QVERIFY(document.hasAttribute("NAME"));
        QVERIFY(!document.hasAttribute("Name"));
    }

    void textReadsAsNumberWhereItIsOne_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QVariant>("read");

        QTest::newRow("leading zeros are lost") << QVariant("007") << QVariant(7LL);
        QTest::newRow("negative whole") << QVariant("-15") << QVariant(-15LL);
        QTest::newRow("decimal comma") << QVariant("12,50") << QVariant(12.5);
        QTest::newRow("decimal point") << QVariant("12.50") << QVariant(12.5);
        QTest::newRow("two commas stay text") << QVariant("1,2,3") << QVariant("1,2,3");
        QTest::newRow("18 digits are a number")
            << QVariant("123456789012345678") << QVariant(123456789012345678LL);
        QTest::newRow("19 digits stay text")
            << QVariant("1234567890123456789") << QVariant("1234567890123456789");
        QTest::newRow("sign counts as a character: 18 digits and a sign stay text")
            << QVariant("-123456789012345678") << QVariant("-123456789012345678");
        QTest::newRow("16 characters with a point stay text")
            << QVariant("1234567890123.45") << QVariant("1234567890123.45");
        QTest::newRow("15 characters with a point are a number")
            << QVariant("123456789012.45") << QVariant(123456789012.45);
        QTest::newRow("16 characters with a comma stay text")
            << QVariant("1234567890123,45") << QVariant("1234567890123,45");
        QTest::newRow("15 characters with a comma are a number")
            << QVariant("123456789012,45") << QVariant(123456789012.45);
        QTest::newRow("exponent") << QVariant("1e3") << QVariant(1000.0);
        QTest::newRow("empty text stays") << QVariant("") << QVariant("");
        QTest::newRow("null text stays") << QVariant(QString()) << QVariant(QString());
        QTest::newRow("infinity is a number") << QVariant("inf") << QVariant(qInf());
        QTest::newRow("what overflows stays text") << QVariant("1e999") << QVariant("1e999");
        QTest::newRow("words stay") << QVariant("Чай, чёрный") << QVariant("Чай, чёрный");
        QTest::newRow("non-ASCII digits stay text") << QVariant("٣") << QVariant("٣");
        QTest::newRow("double keeps its type") << QVariant(2.0) << QVariant(2.0);
        QTest::newRow("int keeps its type") << QVariant(5) << QVariant(5);
        QTest::newRow("bool is no number") << QVariant(true) << QVariant(true);
        QTest::newRow("date stays") << QVariant(QDate(2026, 1, 2)) << QVariant(QDate(2026, 1, 2));
        QTest::newRow("byte array stays") << QVariant(QByteArray("7")) << QVariant(QByteArray("7"));
    }

    void textReadsAsNumberWhereItIsOne()
    {
        QFETCH(QVariant, stored);
        QFETCH(QVariant, read);
        PrinterDocument document;
        document.setAttributes({{"NAME", stored}});
        const QVariant value = document.attributeValue("NAME");
        QCOMPARE(value.userType(), read.userType());
        QCOMPARE(value, read);
        QCOMPARE(document.attributes().value("NAME").userType(), stored.userType());
        QCOMPARE(document.attributes().value("NAME"), stored);
    }

    /// By QString's own functions, as the rule has it: most texts are told from numbers without.
    void anyTextCountsAsTheRuleSays()
    {
        const auto byTheRule = [](const QString &text) -> QVariant {
            bool ok = false;
            const qlonglong whole = text.toLongLong(&ok);
            if (ok && text.size() < 19)
                return whole;
            const double real = text.toDouble(&ok);
            if (ok && text.size() < 16)
                return real;
            const double pointed = QString(text).replace(',', '.').toDouble(&ok);
            if (ok && text.size() < 16)
                return pointed;
            return text;
        };
        const QString letters = "00112345678999..,,,--+eEinfatyxpbQZ \t\u0416\u0130";
        QStringList texts{"12 Quay", "infinity", "-inf", "nan", "0x1F", "+5", " 5 ", "1,5e2", "."};
        QRandomGenerator random(23);
        for (int round = 0; round < 50000; ++round) {
            QString text;
            const int kinds = round % 2 == 0 ? 20 : letters.size();
            for (int count = random.bounded(1, 20); count > 0; --count)
                text += letters.at(random.bounded(kinds));
            texts << text;
        }
        int numbers = 0;
        for (const QString &text : texts) {
            PrinterDocument document;
            document.setAttributes({{"NAME", text}});
            const QVariant value = document.attributeValue("NAME");
            const QVariant expected = byTheRule(text);
            QVERIFY2(value.userType() == expected.userType() &&
                         (value == expected || value.toString() == expected.toString()),
                     qPrintable(text));
            numbers += value.userType() != QMetaType::QString;
        }
        QVERIFY(numbers > 1000);
    }

    void fiscalPartsAreAlwaysRemoved()
    {
        PrinterDocument document;
        QVERIFY(document.removeFiscalAttrs());
        document.setIsCopy(true);
        QVERIFY(document.removeFiscalAttrs());
    }

    void everyFieldTakesPartInTheComparison()
    {
        const PrinterDocument base;
        PrinterDocument copy = base;
        QVERIFY(copy == base);
        QVERIFY(!(copy != base));
        copy.setIsCopy(true);
        QVERIFY(copy != base);
        copy = base;
        copy.setEntries("x");
        QVERIFY(copy != base);
        copy = base;
        copy.setAttributes({{"A", 1}});
        QVERIFY(copy != base);
    }

    void copiesAreIndependent()
    {
        PrinterDocument first;
        first.setAttributes({{"A", 1}});
        PrinterDocument second = first;
        second.setAttributes({{"A", 2}});
        QCOMPARE(first.attributeValue("A"), QVariant(1));
        const PrinterDocument moved = std::move(second);
        QCOMPARE(moved.attributeValue("A"), QVariant(2));
        PrinterDocument assigned;
        assigned = std::move(first);
        QCOMPARE(assigned.attributeValue("A"), QVariant(1));
    }
};

QTEST_APPLESS_MAIN(TestPrinterDocument)
#include "tst_printerdocument.moc"
