#include <QtTest>

#include "receiptprogram.h"

class TestReceiptEval : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valueIsPrinted_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("value");
        QTest::newRow("precedence") << "1+2*3"
                                    << "7";
        QTest::newRow("brackets") << "(1+2)*3"
                                  << "9";
        QTest::newRow("blanks") << " 1 + 1 "
                                << "2";
        QTest::newRow("function") << "pow(2,10)"
                                  << "1024";
        QTest::newRow("list") << "1,2"
                              << "2";
        QTest::newRow("all digits of a real number") << "0.1+0.2"
                                                     << "0.30000000000000004";
        QTest::newRow("great number") << "fac(20)"
                                      << "2432902008176640000";
        QTest::newRow("greater number") << "fac(20)*1000"
                                        << "2.43290200817664e+21";
        QTest::newRow("division by zero") << "1/0"
                                          << "inf";
        QTest::newRow("not a number") << "fac(-1)"
                                      << "nan";
    }
    void valueIsPrinted()
    {
        QFETCH(QString, expression);
        QFETCH(QString, value);
        const ReceiptRun run = runReceipt({"eval", expression});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, value + '\n');
        QCOMPARE(run.status, 0);
    }

    void leadingMinusStandsBehindTwoDashes()
    {
        const ReceiptRun run = runReceipt({"eval", "--", "-2^2"});
        QCOMPARE(run.output, QString("4\n"));
        QCOMPARE(run.status, 0);
    }

    void caretStandsBelowTheError_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing") << "" << 1 << "";
        QTest::newRow("unknown name") << "foo" << 3 << "foo";
        QTest::newRow("end instead of a number") << "1+" << 2 << "1+";
        QTest::newRow("second number") << "1 2" << 3 << "1 2";
        QTest::newRow("upper case") << "ABC" << 1 << "ABC";
        QTest::newRow("in the middle") << "1 + ? + 2" << 5 << "1 + ? + 2";
        // The evaluator counts bytes; a person counts characters.
        QTest::newRow("letter of two bytes")
            << QString::fromUtf8("2*ж") << 3 << QString::fromUtf8("2*ж");
        QTest::newRow("tab and line feed") << "1\t+\n?" << 5 << "1 + ?";
    }
    void caretStandsBelowTheError()
    {
        QFETCH(QString, expression);
        QFETCH(int, position);
        QFETCH(QString, shown);
        const ReceiptRun run = runReceipt({"eval", expression});
        QCOMPARE(run.errors,
                 QString("receipt: wrong at character %1 of the expression\n  %2\n  %3\n")
                     .arg(position)
                     .arg(shown)
                     .arg("^", position));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }

    void nestingBeyondTheBoundIsAnErrorAndNoCrash()
    {
        QCOMPARE(runReceipt({"eval", QString(1500, '(') + '1' + QString(1500, ')')}).output,
                 QString("1\n"));
        const ReceiptRun run = runReceipt({"eval", QString(100000, '(')});
        QCOMPARE(run.status, 1);
    }
};

QTEST_GUILESS_MAIN(TestReceiptEval)
#include "tst_receipt_eval.moc"
