#include <QRandomGenerator>
#include <QtTest>
#include <cmath>
#include <limits>

#include "formatterbench.h"
#include "hearth/fixnumber.h"

using namespace formatterbench;

class TestValueFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

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

    /// Most amounts are written in another way than the others; what they are counted in tells
    /// what they have to be.
    void amountsOfAnySizeReadAsTheirParts()
    {
        const auto byParts = [](int fewestWhole, int decimals, double value) {
            const auto unit = static_cast<qint64>(std::pow(10, decimals));
            const qint64 parts = hearth::FixNumber(static_cast<quint32>(unit), value).value();
            const qint64 whole = parts / unit;
            const bool fits = whole == static_cast<int>(whole);
            const QString digits = QString::number(fits ? std::abs(whole) : 0);
            return (fits && whole < 0 ? "-" : "") + digits.rightJustified(fewestWhole, '0') + '.' +
                   QString::number(std::abs(parts % unit)).rightJustified(decimals, '0');
        };
        const PrinterDocumentFormatter formatter(0, nullptr);
        const double edges[] = {0,
                                1,
                                10,
                                100,
                                1000,
                                9999.99,
                                10000,
                                100000,
                                999999,
                                999998.99,
                                999999.994,
                                999999.995,
                                1e6,
                                1e7,
                                2147483647.99,
                                2147483648.0,
                                4294967296.0,
                                1e9};
        const double steps[] = {0, 0.0004, 0.0005, 0.004, 0.005, 0.0051, 0.0949, 0.1, 0.994, 0.995};
        for (const double edge : edges) {
            for (const double step : steps) {
                for (const double value : {edge + step, edge - step, -edge - step, step - edge}) {
                    for (int whole = 0; whole < 4; ++whole) {
                        for (int decimals = 1; decimals < 6; ++decimals) {
                            const QString format =
                                QString(whole, '0') + '.' + QString(decimals, '0');
                            QCOMPARE(formatter.floatToString(format, value),
                                     byParts(qMax(whole, 1), decimals, value));
                        }
                    }
                }
            }
        }
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

    /// Most formats are written without asking Qt.
    void formatsOfDigitsReadAsQtWritesThem()
    {
        const char *const pieces[] = {"dd", "MM", "mm",     "yyyy", "yy", "hh",  "HH",
                                      "nn", "ss", ".",      "/",    " ",  ":",   "-",
                                      "\t", "0",  "\u0436", ", ",   "d",  "MMM", "yyy",
                                      "h",  "n",  "'",      "zzz",  "a",  "T",   "x"};
        constexpr int usual = 18;  // of the pieces
        const int years[] = {-44, 1, 99, 999, 1582, 1999, 2024, 9999, 10000};
        const PrinterDocumentFormatter formatter(0, nullptr);
        QRandomGenerator random(26);
        for (int round = 0; round < 20000; ++round) {
            QString format;
            const bool isUsual = round % 4 != 0;
            for (int count = random.bounded(1, 9); count > 0; --count)
                format += QString::fromUtf8(
                    pieces[random.bounded(isUsual ? usual : int(std::size(pieces)))]);
            const QDate date = QDate(years[random.bounded(int(std::size(years)))], 1, 1)
                                   .addDays(random.bounded(366));
            const QTime time = QTime(0, 0).addMSecs(random.bounded(24 * 3600 * 1000));
            const QDateTime value(date, time, round % 2 == 0 ? Qt::UTC : Qt::LocalTime);
            const QString qtFormat = QString(format).replace('m', 'M').replace('n', 'm');
            QVERIFY2(formatter.dtToString(format, value) == value.toString(qtFormat),
                     qPrintable(format + value.toString(" | yyyy-MM-dd hh:mm:ss")));
        }
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

QTEST_GUILESS_MAIN(TestValueFormats)
#include "tst_valueformats.moc"
