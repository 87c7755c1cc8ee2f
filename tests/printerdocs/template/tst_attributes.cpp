#include <QtTest>
#include <random>

#include "formatterbench.h"
#include "logcatcher.h"

using namespace formatterbench;

namespace {

/// The substitution by the public steps, each on the whole text.
QString substituteStepByStep(const PrinterDocumentFormatter &formatter, const QString &line,
                             const PrinterDocument &document)
{
    QString text = line;
    int position = 0;
    while (true) {
        QString inner = formatter.extractAttr(text, position);
        if (!inner.isEmpty()) {
            QString format;
            formatter.extractFormat(inner, format);
            const QString value = formatter.nameToVal(inner, document, format);
            text.insert(position, value);
            formatter.removeGroupIfZero(position, text, value);
        } else if (position >= text.size()) {
            return text;
        }
    }
}

}  // namespace

/// Attributes are put into a line, and groups of nothing vanish from it.
class TestAttributes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void lineIsFilled_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<Attributes>("attributes");
        QTest::addColumn<QString>("result");

        QTest::newRow("empty line") << "" << Attributes{} << "";
        QTest::newRow("no tag") << "plain [text]" << Attributes{} << "plain [text]";
        QTest::newRow("text") << "a<NAME>b" << Attributes{{"NAME", "чай"}} << "aчайb";
        QTest::newRow("text with a format") << "<NAME,000>" << Attributes{{"NAME", "чай"}} << "чай";
        QTest::newRow("whole number") << "<DOCNO,00000>" << Attributes{{"DOCNO", 42}} << "00042";
        QTest::newRow("unsigned") << "<DOCNO,000>" << Attributes{{"DOCNO", 42U}} << "042";
        QTest::newRow("64 bits") << "<DOCNO>" << Attributes{{"DOCNO", -9000000000LL}}
                                 << "-9000000000";
        QTest::newRow("unsigned 64 bits")
            << "<DOCNO>" << Attributes{{"DOCNO", 9000000000ULL}} << "9000000000";
        QTest::newRow("text of digits is a number")
            << "<DOCNO,00000>" << Attributes{{"DOCNO", "007"}} << "00007";
        QTest::newRow("19 digits print digit for digit")
            << "<CARD,0.00>" << Attributes{{"CARD", "0234567890123456789"}}
            << "0234567890123456789";
        QTest::newRow("unsigned 64 bits beyond the signed")
            << "<DOCNO>" << Attributes{{"DOCNO", 18446744073709551615ULL}} << "-1";
        QTest::newRow("short name, long format") << "<A,00>" << Attributes{{"A", 7}} << "07";
        QTest::newRow("real") << "<PRICE>" << Attributes{{"PRICE", 2.5}} << "2.50";
        QTest::newRow("decimal comma") << "<PRICE,0.0>" << Attributes{{"PRICE", "12,50"}} << "12.5";
        QTest::newRow("bool ignores its format")
            << "<FLAG,000>" << Attributes{{"FLAG", true}} << "true";
        QTest::newRow("false") << "<FLAG>" << Attributes{{"FLAG", false}} << "false";
        QTest::newRow("date") << "<DATE>" << Attributes{{"DATE", QDate(2026, 11, 2)}} << "02.11.26";
        QTest::newRow("date with a format")
            << "<DATE,dd.mm.yyyy>" << Attributes{{"DATE", QDate(2026, 11, 2)}} << "02.11.2026";
        QTest::newRow("time") << "<TIME>" << Attributes{{"TIME", QTime(9, 5, 7)}} << "09:05";
        QTest::newRow("time with a format")
            << "<TIME,hh:nn:ss>" << Attributes{{"TIME", QTime(9, 5, 7)}} << "09:05:07";
        QTest::newRow("date and time")
            << "<WHEN>" << Attributes{{"WHEN", QDateTime(QDate(2026, 11, 2), QTime(9, 5))}}
            << "02.11.26 09:05";
        QTest::newRow("other types through their text")
            << "<DATA,00>" << Attributes{{"DATA", QByteArray("xyz")}} << "xyz";

        QTest::newRow("unknown attribute prints nothing") << "a<ABCD>b" << Attributes{} << "ab";
        QTest::newRow("empty name prints nothing") << "a<,0.00>b" << Attributes{} << "ab";
        QTest::newRow("three characters are no attribute")
            << "<ABC>" << Attributes{{"ABC", 1}} << "<ABC>";
        QTest::newRow("markup passes")
            << "<B><H2:>x<:H2><LS3><F12><123>" << Attributes{} << "<B><H2:>x<:H2><LS3><F12><123>";
        QTest::newRow("four characters with # are an attribute")
            << "a<#123>b" << Attributes{} << "ab";
        QTest::newRow("too short to be evaluated")
            << "<A+B>" << Attributes{{"A", 1}, {"B", 2}} << "<A+B>";
        QTest::newRow("long enough to be evaluated")
            << "<A + B>" << Attributes{{"A", 1}, {"B", 2}} << "3.00";
        QTest::newRow("tag reaches to the first >")
            << "x<AB<CDEF>y" << Attributes{{"CDEF", 1}} << "xy";
        QTest::newRow("unfinished tag ends the scan")
            << "<NAME> <NAME" << Attributes{{"NAME", "a"}} << "a <NAME";
        QTest::newRow("unfinished tag in front of nothing") << "a < b" << Attributes{} << "a < b";
        QTest::newRow("short tag in front")
            << "<B><NAME><C>" << Attributes{{"NAME", "a"}} << "<B>a<C>";
        QTest::newRow("comma cuts an expression") << "a<ncr(5,2)>b" << Attributes{} << "ab";
        QTest::newRow("trailing format saves it") << "<ncr(5,2),0>" << Attributes{} << "10";
        QTest::newRow("names are case-sensitive") << "<Name>" << Attributes{{"NAME", "a"}} << "";
        QTest::newRow("name with blanks") << "<MY NAME>" << Attributes{{"MY NAME", "a"}} << "a";

        QTest::newRow("value holding a tag is expanded")
            << "<FIRST>" << Attributes{{"FIRST", "(<OTHER>)"}, {"OTHER", "x"}} << "(x)";
        QTest::newRow("two levels")
            << "<FIRST>!" << Attributes{{"FIRST", "<OTHER>"}, {"OTHER", "<THIRD>"}, {"THIRD", "x"}}
            << "x!";
        QTest::newRow("value completes a tag with what follows")
            << "<FIRST>RD>" << Attributes{{"FIRST", "<THI"}, {"THIRD", "x"}} << "x";
        QTest::newRow("what stands in front completes nothing")
            << "<TH<FIRST>" << Attributes{{"FIRST", "IRD>"}, {"THIRD", "x"}} << "";

        QTest::newRow("group vanishes on zero")
            << "a[Discount <DISC>]b" << Attributes{{"DISC", "0"}} << "ab";
        QTest::newRow("group vanishes on empty")
            << "a[Discount <DISC>]b" << Attributes{{"DISC", ""}} << "ab";
        QTest::newRow("group vanishes on unknown") << "a[Discount <DISC>]b" << Attributes{} << "ab";
        QTest::newRow("group vanishes on 0.00") << "[x<DISC>]" << Attributes{{"DISC", 0.0}} << "";
        QTest::newRow("group vanishes on what rounds to zero")
            << "[x<DISC>]" << Attributes{{"DISC", 0.001}} << "";
        QTest::newRow("group stays on text") << "[x<DISC>]" << Attributes{{"DISC", "-"}} << "[x-]";
        QTest::newRow("0,00 is read as a number before")
            << "[x<DISC>]" << Attributes{{"DISC", "0,00"}} << "";
        QTest::newRow("a long 0,00 is no number")
            << "[x<DISC>]" << Attributes{{"DISC", "0,00000000000000"}} << "[x0,00000000000000]";
        QTest::newRow("zeros with two points are no number")
            << "[x<DATE>]" << Attributes{{"DATE", "00.00.00"}} << "[x00.00.00]";
        QTest::newRow("group stays on a value") << "[x<DISC>]" << Attributes{{"DISC", 5}} << "[x5]";
        QTest::newRow("negative value stays") << "[x<DISC>]" << Attributes{{"DISC", -5}} << "[x-5]";
        QTest::newRow("one value of two empty")
            << "[Discount <DISC> of <BASE>]." << Attributes{{"DISC", 5}} << ".";
        QTest::newRow("only the innermost group goes") << "[a[b<DISC>]c]" << Attributes{} << "[ac]";
        QTest::newRow("nested group beside") << "[a[b]<DISC>[c]d]e" << Attributes{} << "e";
        QTest::newRow("zero outside of groups stays") << "<DISC>" << Attributes{{"DISC", 0}} << "0";
        QTest::newRow("only a left bracket") << "[a<DISC>b" << Attributes{{"DISC", 0}} << "[a0b";
        QTest::newRow("only a right bracket") << "a<DISC>b]" << Attributes{{"DISC", 0}} << "a0b]";
        QTest::newRow("brackets the wrong way round")
            << "]<DISC>[" << Attributes{{"DISC", 0}} << "]0[";
        QTest::newRow("closed group in front")
            << "[a]<DISC>]" << Attributes{{"DISC", 0}} << "[a]0]";
        QTest::newRow("brackets inside values count")
            << "[a<FIRST>" << Attributes{{"FIRST", "<ZERO>]b"}, {"ZERO", 0}} << "b";
        QTest::newRow("tag that slides to the left is passed over")
            << "[<ABCD>]<EFGH>" << Attributes{{"ABCD", 0}, {"EFGH", 1}} << "<EFGH>";
        QTest::newRow("tag beyond the slide is expanded")
            << "[<ABCD>] <EFGH>" << Attributes{{"ABCD", 0}, {"EFGH", 1}} << " 1";
        QTest::newRow("slide over the end")
            << "aaaa[bbbb<ABCD>]c" << Attributes{{"ABCD", 0}} << "aaaac";
        QTest::newRow("slide splits a tag, its rest is text")
            << "[x<ABCD>]<EFGH><IJKL>" << Attributes{{"EFGH", 1}, {"IJKL", 2}} << "<EFGH>2";
        QTest::newRow("expression that gives zero") << "a[x<2-1-1>]b" << Attributes{} << "ab";
        QTest::newRow("not a number counts as zero") << "a[x<fac(-1)>]b" << Attributes{} << "ab";
    }

    void lineIsFilled()
    {
        QFETCH(QString, line);
        QFETCH(Attributes, attributes);
        QFETCH(QString, result);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const PrinterDocument document = documentOf(attributes);
        QCOMPARE(formatter.processDocAttributes(line, document), result);
        QCOMPARE(substituteStepByStep(formatter, line, document), result);
    }

    void valueHoldingATagIsExpanded()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        Attributes attributes{{"LAST", "end"}};
        for (int i = 0; i < 1000; ++i)
            attributes.insert(QString("NAME%1").arg(i),
                              i == 999 ? "<LAST>" : QString("<NAME%1>").arg(i + 1));
        QCOMPARE(formatter.processDocAttributes("<NAME0>", documentOf(attributes)), QString("end"));
    }

    /// The whole-text steps are the meaning; the engine works in one pass.
    void onePassGivesWhatTheStepsGive()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        const PrinterDocument document = documentOf({{"ZERO", 0},
                                                     {"FIVE", 5},
                                                     {"TEXT", "абв"},
                                                     {"VOID", ""},
                                                     {"OPEN", "[x"},
                                                     {"SHUT", "y]"},
                                                     {"BOTH", "[<ZERO>]"},
                                                     {"DEEP", "<TEXT>]<VOID>["},
                                                     {"HALF", "<ZE"}});
        const QStringList pieces{"<ZERO>", "<FIVE>", "<TEXT>", "<VOID>",    "<OPEN>", "<SHUT>",
                                 "<BOTH>", "<DEEP>", "<HALF>", "<NONE>",    "[",      "[",
                                 "]",      "]",      "<B>",    "<",         ">",      "x",
                                 "RO>",    "ё ",     "<1+1>",  "<FIVE,000>"};
        std::mt19937 random(20261121);
        for (int round = 0; round < 20000; ++round) {
            QString line;
            const auto count = random() % 14;
            for (std::mt19937::result_type i = 0; i < count; ++i)
                line += pieces.at(int(random() % std::size_t(pieces.size())));
            const QString expected = substituteStepByStep(formatter, line, document);
            QVERIFY2(formatter.processDocAttributes(line, document) == expected, qPrintable(line));
        }
    }

    void hugeLinesAreFilled_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("result");
        QTest::newRow("many tags") << QString("0123456789abcd<FIVE>").repeated(50000)
                                   << QString("0123456789abcd5").repeated(50000);
        QTest::newRow("many zeros in an open group")
            << "[" + QString("0123456789abcd<ZERO>").repeated(50000)
            << "[" + QString("0123456789abcd0").repeated(50000);
        QTest::newRow("many zeros before a closed bracket")
            << QString("0123456789abcd<ZERO>").repeated(50000) + "]"
            << QString("0123456789abcd0").repeated(50000) + "]";
        QTest::newRow("many groups that stay")
            << QString("[abc <FIVE>]").repeated(80000) << QString("[abc 5]").repeated(80000);
        QTest::newRow("deep groups")
            << QString("[").repeated(200000) + "<FIVE>" + QString("]").repeated(200000)
            << QString("[").repeated(200000) + "5" + QString("]").repeated(200000);
        QTest::newRow("only <") << QString("<").repeated(1000000) << QString("<").repeated(1000000);
        QTest::newRow("many short tags")
            << QString("<B>").repeated(300000) << QString("<B>").repeated(300000);
    }

    void hugeLinesAreFilled()
    {
        QFETCH(QString, line);
        QFETCH(QString, result);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const PrinterDocument document = documentOf({{"ZERO", 0}, {"FIVE", 5}});
        QVERIFY(formatter.processDocAttributes(line, document) == result);
    }

    void tagIsCutOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("inner");
        QTest::addColumn<QString>("rest");
        QTest::addColumn<int>("newPosition");
        QTest::newRow("attribute") << "ab<NAME>cd" << 0 << "NAME"
                                   << "abcd" << 2;
        QTest::newRow("at the position") << "ab<NAME>cd" << 2 << "NAME"
                                         << "abcd" << 2;
        QTest::newRow("behind the position")
            << "ab<NAME>cd" << 3 << QString() << "ab<NAME>cd" << 10;
        QTest::newRow("too short") << "ab<ABC>cd" << 0 << QString() << "ab<ABC>cd" << 7;
        QTest::newRow("no tag") << "abcd" << 1 << QString() << "abcd" << 4;
        QTest::newRow("no end") << "ab<NAME" << 0 << QString() << "ab<NAME" << 7;
        QTest::newRow("two") << "<NAME><MORE>" << 0 << "NAME"
                             << "<MORE>" << 0;
        QTest::newRow("position behind the end") << "abc" << 10 << QString() << "abc" << 3;
        QTest::newRow("empty") << "" << 0 << QString() << "" << 0;
        QTest::newRow("inner <") << "<AB<CDEF>" << 0 << "AB<CDEF"
                                 << "" << 0;
    }

    void tagIsCutOut()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QString, inner);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QString actual = formatter.extractAttr(text, position);
        QCOMPARE(actual, inner);
        QCOMPARE(actual.isNull(), inner.isNull());
        QTEST(text, "rest");
        QTEST(position, "newPosition");
    }

    void formatStandsBehindTheLastComma_data()
    {
        QTest::addColumn<QString>("attribute");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("format");
        QTest::newRow("no comma") << "NAME"
                                  << "NAME"
                                  << "";
        QTest::newRow("one comma") << "NAME,0.00"
                                   << "NAME"
                                   << "0.00";
        QTest::newRow("two commas") << "atan2(1,1),0.0"
                                    << "atan2(1,1)"
                                    << "0.0";
        QTest::newRow("comma at the end") << "NAME,"
                                          << "NAME"
                                          << "";
        QTest::newRow("comma at the start") << ",0"
                                            << ""
                                            << "0";
    }

    void formatStandsBehindTheLastComma()
    {
        QFETCH(QString, attribute);
        const PrinterDocumentFormatter formatter(0, nullptr);
        QString format = "old";
        formatter.extractFormat(attribute, format);
        QTEST(attribute, "name");
        QTEST(format, "format");
    }

    void bracketsAreFound_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("right");
        QTest::newRow("around") << "[a]" << 1 << 0 << 2;
        QTest::newRow("on the brackets: left") << "[a]" << 0 << 0 << -1;
        QTest::newRow("on the brackets: right") << "[a]" << 2 << -1 << 2;
        QTest::newRow("nested pair is passed") << "[[b]a[c]]" << 4 << 0 << 8;
        QTest::newRow("none") << "abc" << 1 << -1 << -1;
        QTest::newRow("behind the end: left begins at the last character") << "[a" << 99 << 0 << -1;
        QTest::newRow("negative: right begins at 0") << "a]" << -5 << -1 << 1;
        QTest::newRow("at the end") << "a]" << 2 << -1 << -1;
        QTest::newRow("empty") << "" << 0 << -1 << -1;
        QTest::newRow("too many closed on the left") << "[]]a" << 3 << -1 << -1;
        QTest::newRow("too many open on the right") << "a[[]" << 0 << -1 << -1;
    }

    void bracketsAreFound()
    {
        QFETCH(QString, text);
        QFETCH(int, from);
        const PrinterDocumentFormatter formatter(0, nullptr);
        QTEST(formatter.scanL(text, from), "left");
        QTEST(formatter.scanR(text, from), "right");
    }

    void groupIsRemoved_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("result");
        QTest::newRow("zero") << "a[b0c]d" << 3 << "0"
                              << "ad";
        QTest::newRow("empty") << "a[bc]d" << 3 << ""
                               << "ad";
        QTest::newRow("exactly 1e-12") << "[1e-12]" << 1 << "1e-12"
                                       << "";
        QTest::newRow("above 1e-12") << "[1.1e-12]" << 1 << "1.1e-12"
                                     << "[1.1e-12]";
        QTest::newRow("negative, small") << "[-1e-13]" << 1 << "-1e-13"
                                         << "";
        QTest::newRow("negative") << "[-1]" << 1 << "-1"
                                  << "[-1]";
        QTest::newRow("0,00 counts as present") << "[0,00]" << 1 << "0,00"
                                                << "[0,00]";
        QTest::newRow("0.0.0 counts as present") << "[0.0.0]" << 1 << "0.0.0"
                                                 << "[0.0.0]";
        QTest::newRow("- counts as present") << "[-]" << 1 << "-"
                                             << "[-]";
        QTest::newRow("blank counts as present") << "[ ]" << 1 << " "
                                                 << "[ ]";
        QTest::newRow("nan counts as zero") << "[nan]" << 1 << "nan"
                                            << "";
        QTest::newRow("value at the start of the text") << "0]" << 0 << "0"
                                                        << "0]";
    }

    void groupIsRemoved()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QString, value);
        const PrinterDocumentFormatter formatter(0, nullptr);
        formatter.removeGroupIfZero(position, text, value);
        QTEST(text, "result");
    }

    void logLinesOfAKnownAttribute()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCatcher log;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<NAME,00>", documentOf({{"NAME", 1}}));
        QLoggingCategory::setFilterRules("default.warning=false");
        QCOMPARE(log.lines(), QStringList{"default warning NAME"});
    }

    void logLinesOfAnExpression()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCatcher log;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<AB*ABCD>", documentOf({{"AB", 2}, {"ABCD", 1.25}, {"B", 0}}));
        QLoggingCategory::setFilterRules("default.warning=false");
        const QStringList expected{"default warning AB*ABCD", "default warning AB, ABCD, B",
                                   "default warning ABCD, AB, B", "default warning 2.5",
                                   "default warning 0"};
        QCOMPARE(log.lines(), expected);
    }

    void logLinesOfAnUnknownName()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCatcher log;
        PrinterDocumentFormatter(0, nullptr).processDocAttributes("<UNKNOWN>", PrinterDocument());
        QLoggingCategory::setFilterRules("default.warning=false");
        const QStringList expected{"default warning UNKNOWN", "default warning ",
                                   "default warning ", "default warning nan", "default warning 1"};
        QCOMPARE(log.lines(), expected);
    }

    void logLinesOfAnEmptyName()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCatcher log;
        QString format = "0.00";
        QVERIFY(PrinterDocumentFormatter(0, nullptr)
                    .nameToVal("", documentOf({{"AB", 2}}), format)
                    .isNull());
        QLoggingCategory::setFilterRules("default.warning=false");
        QCOMPARE(log.lines(), QStringList{"default warning "});
    }

    void noLogLinesWhenWarningsAreOff()
    {
        const LogCatcher log;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<NAME><UNKNOWN>", documentOf({{"NAME", 1}}));
        QVERIFY(log.lines().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAttributes)
#include "tst_attributes.moc"
