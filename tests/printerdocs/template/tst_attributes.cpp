#include <QLoggingCategory>
#include <QtTest>
#include <limits>
#include <random>

#include "printerdocs/printerdocumentformatter.h"

namespace {

using Attributes = QMap<QString, QVariant>;

QStringList messages;

void keepMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    messages.append(QString("%1 %2 %3").arg(int(type)).arg(context.category, message));
}

/// Collects the log lines of its lifetime.
struct LogCapture
{
    LogCapture()
    {
        messages.clear();
        m_previous = qInstallMessageHandler(keepMessage);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    QtMessageHandler m_previous;
};

PrinterDocument documentOf(const Attributes &attributes)
{
    PrinterDocument document;
    document.setAttributes(attributes);
    return document;
}

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

/// Attribute substitution and value formatting.
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

    void integerFormats_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<qlonglong>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("padded") << "000" << 7LL << "007";
        QTest::newRow("no format") << "" << 7LL << "7";
        QTest::newRow("no zero: whole length") << "##" << 7LL << "07";
        QTest::newRow("sign doesn't count") << "000" << -7LL << "-007";
        QTest::newRow("from the first zero") << "x0" << 7LL << "7";
        QTest::newRow("from the first zero to the end") << "x0yz" << 7LL << "007";
        QTest::newRow("never cut") << "00" << 12345LL << "12345";
        QTest::newRow("zero") << "000" << 0LL << "000";
        QTest::newRow("smallest") << "" << std::numeric_limits<qlonglong>::min()
                                  << "-9223372036854775808";
        QTest::newRow("largest") << "" << std::numeric_limits<qlonglong>::max()
                                 << "9223372036854775807";
    }

    void integerFormats()
    {
        QFETCH(QString, format);
        QFETCH(qlonglong, value);
        QTEST(PrinterDocumentFormatter(0, nullptr).intToString(format, value), "text");
    }

    void realFormats_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty format is 0.00") << "" << 2.5 << "2.50";
        QTest::newRow("rounds half away from zero") << "0.00" << 1.005 << "1.01";
        QTest::newRow("as a person sees it") << "0.00" << 2.675 << "2.68";
        QTest::newRow("negative half") << "0.00" << -1.125 << "-1.13";
        QTest::newRow("no decimals: whole number") << "000" << 6.5 << "007";
        QTest::newRow("no decimals, negative") << "000" << -6.5 << "-007";
        QTest::newRow("whole pattern pads") << "000.0" << 7.25 << "007.3";
        QTest::newRow("no whole pattern") << ".00" << 7.25 << "7.25";
        QTest::newRow("nothing behind the point: six decimals") << "0." << 1.5 << "1.500000";
        QTest::newRow("E: six significant digits") << "0.E" << 1234567.0 << "1.23457e+06";
        QTest::newRow("E anywhere behind the point") << "0.0E0" << 0.5 << "0.5";
        QTest::newRow("e is no E") << "0.0e" << 0.5 << "0.50";
        QTest::newRow("third part is ignored") << "0.0.000" << 1.25 << "1.3";
        QTest::newRow("third part empty") << "0..0" << 1.5 << "1.500000";
        QTest::newRow("zero") << "0.00" << 0.0 << "0.00";
        QTest::newRow("rounds to zero") << "0.00" << -0.001 << "0.00";
        QTest::newRow("carries into the whole part") << "0.00" << 9.999 << "10.00";
        QTest::newRow("not a number")
            << "0.00" << std::numeric_limits<double>::quiet_NaN() << "0.00";
        QTest::newRow("infinity") << "0.00" << std::numeric_limits<double>::infinity() << "0.00";
        QTest::newRow("infinity without decimals")
            << "0" << std::numeric_limits<double>::infinity() << "0";
        QTest::newRow("whole number beyond 32 bits") << "0" << 3e9 << "3000000000";
        QTest::newRow("largest whole number")
            << "0" << 9223372036854774784.0 << "9223372036854774784";
        QTest::newRow("negative whole number that 64 bits just hold")
            << "0" << -9223372036854774784.0 << "-9223372036854774784";
        QTest::newRow("negative hundredths that 64 bits just hold")
            << "" << -92233720368547744.0 << "0.00";
        QTest::newRow("whole number beyond 64 bits") << "0" << 9223372036854775808.0 << "0";
        QTest::newRow("whole number far beyond 64 bits") << "000" << -1e300 << "000";
        QTest::newRow("hundredths that 64 bits just hold")
            << "0.00" << 92233720368547744.0 << "0.00";
        QTest::newRow("billionths that 64 bits just hold")
            << "0.000000000" << 9223372036.854774 << "0.854774000";
        QTest::newRow("billionths beyond 64 bits")
            << "0.000000000" << 9223372036.854777 << "0.000000000";
        QTest::newRow("hundredths beyond 64 bits") << "0.00" << 1e17 << "0.00";
        QTest::newRow("hundredths beyond 64 bits, negative") << "0.00" << -1e17 << "0.00";
        QTest::newRow("far beyond 64 bits") << "0.00" << 1e300 << "0.00";
        QTest::newRow("padded, beyond 64 bits") << "000.0" << 1e300 << "000.0";
        QTest::newRow("six decimals have all digits")
            << "0." << 1e17 << "100000000000000000.000000";
        QTest::newRow("six digits have their exponent") << "0.E" << 1e300 << "1e+300";
        QTest::newRow("six decimals beyond 32 bits") << "0." << 3e9 << "3000000000.000000";
        QTest::newRow("six decimals keep the sign") << "0." << -0.5 << "-0.500000";
        QTest::newRow("six digits keep the sign") << "0.E" << -0.5 << "-0.5";
        QTest::newRow("nine decimals") << "0.000000000" << 1.5 << "1.500000000";
    }

    void realFormats()
    {
        QFETCH(QString, format);
        QFETCH(double, value);
        QTEST(PrinterDocumentFormatter(0, nullptr).floatToString(format, value), "text");
    }

    void wholePartPassesThrough32Bits_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("largest that fits") << 2147483647.25 << "2147483647.25";
        QTest::newRow("one more") << 2147483648.25 << "0.25";
        QTest::newRow("smallest that fits") << -2147483648.25 << "-2147483648.25";
        QTest::newRow("one less") << -2147483649.25 << "0.25";
        QTest::newRow("sign of a small number is lost") << -0.5 << "0.50";
        QTest::newRow("rounds out of the range") << 2147483647.996 << "0.00";
        QTest::newRow("sign stays when rounding carries") << -0.999 << "-1.00";
        QTest::newRow("sign of one and a half stays") << -1.5 << "-1.50";
    }

    void wholePartPassesThrough32Bits()
    {
        QFETCH(double, value);
        QTEST(PrinterDocumentFormatter(0, nullptr).floatToString("0.00", value), "text");
    }

    void decimalsBeyondAllReasonDoNoHarm()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        for (int decimals = 10; decimals < 70; ++decimals) {
            const QString format = "0." + QString(decimals, '0');
            QVERIFY(formatter.floatToString(format, 3.0).startsWith("3."));
            const QString beyond = formatter.floatToString(format, 1e300);
            QCOMPARE(beyond.count('0'), beyond.size() - 1);
        }
    }

    void dateAndTimeFormats_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("dateTime");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        QTest::newRow("default") << ""
                                 << "07.03.26 09:05"
                                 << "07.03.26"
                                 << "09:05";
        QTest::newRow("m and M are months") << "m M mm MM"
                                            << "3 3 03 03"
                                            << "3 3 03 03"
                                            << "M M MM MM";
        QTest::newRow("n is minutes") << "dd.mm.yyyy nn"
                                      << "07.03.2026 05"
                                      << "07.03.2026 mm"
                                      << "dd.MM.yyyy 05";
        QTest::newRow("hours and seconds") << "hh:nn:ss"
                                           << "09:05:01"
                                           << "hh:mm:ss"
                                           << "09:05:01";
    }

    void dateAndTimeFormats()
    {
        QFETCH(QString, format);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QDate date(2026, 3, 7);
        const QTime time(9, 5, 1);
        QTEST(formatter.dtToString(format, QDateTime(date, time)), "dateTime");
        QTEST(formatter.dateToString(format, date), "date");
        QTEST(formatter.timeToString(format, time), "time");
    }

    /// A long format is taken in pieces, as Qt's time grows with its square.
    void longFormatReadsLikeAShortOne_data()
    {
        QTest::addColumn<QString>("piece");
        for (const char *piece : {"d",
                                  "M",
                                  "y",
                                  "h",
                                  "H",
                                  "z",
                                  "zz",
                                  "a",
                                  "ap",
                                  "AP",
                                  "aP",
                                  "t",
                                  "'",
                                  "''",
                                  "x",
                                  "hx",
                                  "dM",
                                  "dddddM",
                                  "yyy ",
                                  "hh",
                                  "h'a'",
                                  "'dd'd",
                                  "h'''d'",
                                  "a'p'",
                                  "dd.MM.yyyy hh:mm ",
                                  "hhhhhhhhhhhhhpa",
                                  "\u0447h"})
            QTest::newRow(piece) << QString(piece);
    }

    void longFormatReadsLikeAShortOne()
    {
        QFETCH(QString, piece);
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QDate date(2024, 5, 6);
        const QTime time(15, 2, 3, 45);
        for (const QString &end :
             {QString(), QString("p"), QString("'a"), QString("ap"), QString("h'x")}) {
            for (int count = 1; count < 900; count = count * 3 / 2 + 1) {
                // Minutes are "n" here, and "m" is a month.
                const QString format = piece.repeated(count) + end;
                QString qtFormat = QString(format).replace('m', 'M').replace('n', 'm');
                const QDateTime both(date, time);
                QCOMPARE(formatter.dtToString(format, both), both.toString(qtFormat));
                QCOMPARE(formatter.dateToString(format, date), date.toString(qtFormat));
                QCOMPARE(formatter.timeToString(format, time), time.toString(qtFormat));
            }
            const QString format = piece.repeated(300) + end;
            QCOMPARE(formatter.dateToString(format, QDate()), QString());
        }
    }

    /// Steps through a format that Qt repeats for each of its letters would take minutes.
    void formatOfAMillionCharactersIsRead()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QDateTime both(QDate(2024, 5, 6), QTime(15, 2));
        constexpr int count = 1 << 20;
        QCOMPARE(formatter.dtToString(QString(count, 'y'), both),
                 QString("2024").repeated(count / 4));
        QCOMPARE(formatter.dtToString(QString("hx").repeated(count), both),
                 QString("15x").repeated(count));
        QCOMPARE(formatter.dtToString(QString("hd").repeated(count) + 'a', both),
                 QString("36").repeated(count) + "pm");
    }

    void invalidDatePrintsNothing()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        QCOMPARE(formatter.dateToString("", QDate()), QString());
        QCOMPARE(formatter.timeToString("", QTime()), QString());
        QCOMPARE(formatter.dtToString("", QDateTime()), QString());
    }

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

    void logLinesOfAKnownAttribute()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCapture capture;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<NAME,00>", documentOf({{"NAME", 1}}));
        QLoggingCategory::setFilterRules("default.warning=false");
        QCOMPARE(messages, QStringList{"1 default NAME"});
    }

    void logLinesOfAnExpression()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCapture capture;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<AB*ABCD>", documentOf({{"AB", 2}, {"ABCD", 1.25}, {"B", 0}}));
        QLoggingCategory::setFilterRules("default.warning=false");
        const QStringList expected{"1 default AB*ABCD", "1 default AB, ABCD, B",
                                   "1 default ABCD, AB, B", "1 default 2.5", "1 default 0"};
        QCOMPARE(messages, expected);
    }

    void logLinesOfAnUnknownName()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCapture capture;
        PrinterDocumentFormatter(0, nullptr).processDocAttributes("<UNKNOWN>", PrinterDocument());
        QLoggingCategory::setFilterRules("default.warning=false");
        const QStringList expected{"1 default UNKNOWN", "1 default ", "1 default ", "1 default nan",
                                   "1 default 1"};
        QCOMPARE(messages, expected);
    }

    void logLinesOfAnEmptyName()
    {
        QLoggingCategory::setFilterRules("default.warning=true");
        const LogCapture capture;
        QString format = "0.00";
        QVERIFY(PrinterDocumentFormatter(0, nullptr)
                    .nameToVal("", documentOf({{"AB", 2}}), format)
                    .isNull());
        QLoggingCategory::setFilterRules("default.warning=false");
        QCOMPARE(messages, QStringList{"1 default "});
    }

    void noLogLinesWhenWarningsAreOff()
    {
        const LogCapture capture;
        PrinterDocumentFormatter(0, nullptr)
            .processDocAttributes("<NAME><UNKNOWN>", documentOf({{"NAME", 1}}));
        QVERIFY(messages.isEmpty());
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

    void nothingDependsOnTheLocale()
    {
        const QLocale previous;
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        const QString text =
            PrinterDocumentFormatter(0, nullptr)
                .processDocAttributes("<PRICE> <1234567.5>", documentOf({{"PRICE", 1234.5}}));
        QLocale::setDefault(previous);
        QCOMPARE(text, QString("1234.50 1234567.50"));
    }
};

QTEST_GUILESS_MAIN(TestAttributes)
#include "tst_attributes.moc"
