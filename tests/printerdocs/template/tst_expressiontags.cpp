#include <QtTest>
#include <random>

#include "formatterbench.h"

using namespace formatterbench;

class TestExpressionTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void expressionTags_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<Attributes>("attributes");
        QTest::addColumn<QString>("result");
        const Attributes prices{{"PRICE", 2.5}, {"QTY", 3}};
        QTest::newRow("number that is no key") << "<1234>" << Attributes{} << "1234.00";
        QTest::newRow("number that is a key") << "<1234>" << Attributes{{"1234", "x"}} << "x";
        QTest::newRow("product") << "<PRICE*QTY>" << prices << "7.50";
        QTest::newRow("product with a format") << "<PRICE*QTY,0.000>" << prices << "7.500";
        QTest::newRow("whole result prints decimals") << "<2 + 2>" << Attributes{} << "4.00";
        QTest::newRow("longer keys go first")
            << "<A10+A1>" << Attributes{{"A1", 5}, {"A10", 70}} << "75.00";
        QTest::newRow("key inside a longer one")
            << "<TOTAL-TO,0>" << Attributes{{"TO", 1}, {"TOTAL", 10}} << "9";
        QTest::newRow("every occurrence") << "<QTY*QTY,0>" << prices << "9";
        QTest::newRow("value put in holds a key that goes later")
            << "<SUMME,0>" << Attributes{{"SUMM", "AB+1"}, {"AB", 4}, {"E", ""}} << "5";
        QTest::newRow("key of one character") << "<X+X+X,0>" << Attributes{{"X", 2}} << "6";
        QTest::newRow("Cyrillic keys")
            << "<ЦЕНА*КОЛ>" << Attributes{{"ЦЕНА", "2,5"}, {"КОЛ", 4}} << "10.00";
        QTest::newRow("decimal comma of the value is a point")
            << "<PRICE+1>" << Attributes{{"PRICE", "1,5"}} << "2.50";
        QTest::newRow("bad expression prints nothing") << "a<PRICE*>b" << prices << "ab";
        QTest::newRow("division by zero is zero") << "<PRICE/0>" << prices << "0.00";
        QTest::newRow("negative value behind a sign")
            << "<5-DISC,0>" << Attributes{{"DISC", -2}} << "7";
        QTest::newRow("keys are case-sensitive")
            << "a<price*2>b" << Attributes{{"PRICE", 3}} << "ab";
        QTest::newRow("key that overlaps itself")
            << "<1A1A1,0>" << Attributes{{"1A1", 5}, {"A1", 3}} << "53";
        QTest::newRow("empty key stands everywhere") << "<2+3,0>" << Attributes{{"", 1}} << "252";
        QTest::newRow("text value") << "a<NAME*2>b" << Attributes{{"NAME", "Чай"}} << "ab";
        for (const int length : {62, 63, 64, 65, 500}) {
            const QString name(length, 'N');
            QTest::addRow("key of %d characters", length)
                << "<" + name + "+1,0>" << Attributes{{name, 4}, {"N", 1000}} << "5";
        }
    }

    void expressionTags()
    {
        QFETCH(QString, line);
        QFETCH(Attributes, attributes);
        QFETCH(QString, result);
        QCOMPARE(
            PrinterDocumentFormatter(0, nullptr).processDocAttributes(line, documentOf(attributes)),
            result);
    }

    void realNumbersStandInExpressionsAsTheirShortestText_data()
    {
        QTest::addColumn<double>("value");
        for (const double value :
             {0.0, 7.0, -7.0, 2.5, -2.5, 0.1, -0.0001, 0.00012, 1e-5, 12345.6789, 99999.9999,
              -99999.9999, 100000.0, 123456.75, 1e6, 1e20, -1.5e300, 1.0 / 3})
            QTest::addRow("%.17g", value) << value;
    }

    void realNumbersStandInExpressionsAsTheirShortestText()
    {
        QFETCH(double, value);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QString shortest = QString::number(value, 'g', QLocale::FloatingPointShortest);
        // Digits around the name make visible how the number was written.
        const QString expected =
            formatter.processDocAttributes("<1" + shortest + "1,0.000000>", PrinterDocument());
        QVERIFY(!expected.isEmpty());
        QCOMPARE(formatter.processDocAttributes("<1V1,0.000000>", documentOf({{"V", value}})),
                 expected);
    }

    /// One after the other, longest first, each wherever it stands: by the letter, on random texts.
    void keysAreReplacedOneAfterTheOther()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        std::mt19937 random(7);
        const QString letters = "ABC";
        for (int round = 0; round < 3000; ++round) {
            Attributes attributes;
            for (int i = 0; i < 6; ++i) {
                QString key;
                for (unsigned k = 0; k < 1 + random() % 3; ++k)
                    key += letters.at(int(random() % 3));
                attributes.insert(key,
                                  i % 2 ? QVariant(int(random() % 9) + 1)
                                        : QVariant(QString(letters.at(int(random() % 3))) + "*2"));
            }
            QString expression;
            for (int i = 0; i < 6; ++i)
                expression += QString(i ? "+" : "") + letters.at(int(random() % 3)) +
                              letters.at(int(random() % 3));
            const PrinterDocument document = documentOf(attributes);
            if (document.hasAttribute(expression))
                continue;
            QStringList keys = attributes.keys();
            std::stable_sort(keys.begin(), keys.end(), [](const QString &a, const QString &b) {
                return a.size() > b.size();
            });
            QString filled = expression;
            for (const QString &key : keys)
                filled.replace(key, document.attributeValue(key).toString());
            // The filled text as an expression of its own, over no attributes.
            const QString expected =
                formatter.processDocAttributes("<" + filled + ">", PrinterDocument());
            QVERIFY2(formatter.processDocAttributes("<" + expression + ">", document) == expected,
                     qPrintable(expression + " -> " + filled));
        }
    }

    void valuesThatNameOthersManyTimesEndUnread_data()
    {
        QTest::addColumn<Attributes>("attributes");
        const auto times = [](const char *part) { return QString(part).repeated(300); };
        QTest::newRow("names of four lengths") << Attributes{{"ABCDEF", times("VWXYZ+")},
                                                             {"VWXYZ", times("PQRS+")},
                                                             {"PQRS", times("KLM+")},
                                                             {"KLM", times("7+")}};
        QTest::newRow("names of one length") << Attributes{{"ABCDEF", times("B__+")},
                                                           {"B__", times("C__+")},
                                                           {"C__", times("D__+")},
                                                           {"D__", times("7+")}};
        QTest::newRow("the empty name")
            << Attributes{{"ABCDEF", times("7+")}, {"", QString(4096, '7')}};
    }

    /// An expression of more than a million characters is none, like one that can't be read.
    void valuesThatNameOthersManyTimesEndUnread()
    {
        QFETCH(Attributes, attributes);
        QCOMPARE(PrinterDocumentFormatter(0, nullptr)
                     .processDocAttributes("a<ABCDEF+1>b", documentOf(attributes)),
                 QString("ab"));
    }

    void longValuesOfExpressionsAreRead()
    {
        // A million characters more, and one character too many.
        const int most = 1 << 20;
        const PrinterDocumentFormatter formatter(0, nullptr);
        // The name makes room for three.
        const QString longest = QString(most + 2, ' ') + "7";
        QCOMPARE(formatter.processDocAttributes("<VAL+1>", documentOf({{"VAL", longest}})),
                 QString("8.00"));
        QCOMPARE(formatter.processDocAttributes("<VAL+1>", documentOf({{"VAL", " " + longest}})),
                 QString());
    }

    void expressionsOverManyAttributesAreFilled()
    {
        Attributes attributes;
        QString expression;
        for (int i = 0; i < 20000; ++i) {
            const QString name = QString("K%1").arg(i, 6, 10, QChar('0'));
            attributes.insert(name, 1);
            expression += (i ? "+" : "") + name;
        }
        for (int length = 1; length < 100; ++length)
            attributes.insert(QString(length, 'Z'), 1);
        const PrinterDocument document = documentOf(attributes);
        QCOMPARE(PrinterDocumentFormatter(0, nullptr)
                     .processDocAttributes("<" + expression + ",0>", document),
                 QString("20000"));
    }

    void summAddsOnlySignedAndRealNumbers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("isSum");
        QTest::addColumn<QString>("result");
        QTest::newRow("no plus") << "INT"
                                 << "" << false << "INT";
        QTest::newRow("empty") << ""
                               << "" << false << "";
        QTest::newRow("two attributes") << "INT+REAL"
                                        << "" << true << "3.50";
        QTest::newRow("format") << "INT+REAL"
                                << "000.0" << true << "003.5";
        QTest::newRow("long") << "LONG+1"
                              << "0" << true << "11";
        QTest::newRow("unsigned adds nothing") << "INT+UINT"
                                               << "" << true << "2.00";
        QTest::newRow("unsigned 64 bits adds nothing") << "INT+ULONG"
                                                       << "" << true << "2.00";
        QTest::newRow("bool adds nothing") << "INT+BOOL"
                                           << "" << true << "2.00";
        QTest::newRow("numeric text") << "INT+NUMBER"
                                      << "" << true << "9.25";
        QTest::newRow("other text adds nothing") << "INT+TEXT"
                                                 << "" << true << "2.00";
        QTest::newRow("unknown name adds nothing") << "INT+WHAT"
                                                   << "" << true << "2.00";
        QTest::newRow("literal numbers") << "1.5+2"
                                         << "" << true << "3.50";
        QTest::newRow("what overflows doesn't parse") << "1e999+1"
                                                      << "" << true << "1.00";
        QTest::newRow("nor does it as an attribute") << "INT+HUGE"
                                                     << "" << true << "2.00";
        QTest::newRow("literal with a comma adds nothing") << "1,5+2"
                                                           << "" << true << "2.00";
        QTest::newRow("empty parts add nothing") << "+INT+"
                                                 << "" << true << "2.00";
        QTest::newRow("blanks belong to the name") << "INT + REAL"
                                                   << "" << true << "0.00";
    }

    void summAddsOnlySignedAndRealNumbers()
    {
        QFETCH(QString, name);
        QFETCH(QString, format);
        QFETCH(bool, isSum);
        const PrinterDocument document = documentOf({{"INT", 2},
                                                     {"REAL", 1.5},
                                                     {"LONG", 10LL},
                                                     {"UINT", 5U},
                                                     {"ULONG", 5ULL},
                                                     {"BOOL", true},
                                                     {"NUMBER", "7,25"},
                                                     {"TEXT", "abc"},
                                                     {"HUGE", "1e999"}});
        QCOMPARE(PrinterDocumentFormatter(0, nullptr).summAttributes(name, document, format),
                 isSum);
        QTEST(name, "result");
    }
};

QTEST_GUILESS_MAIN(TestExpressionTags)
#include "tst_expressiontags.moc"
