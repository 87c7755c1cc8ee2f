#include <QtTest>

#include "log/loghelper.h"

class TestLogHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabSeparatesWithoutBlanks()
    {
        QString line;
        QDebug(&line).noquote().nospace() << "a" << logtab << "b";
        QCOMPARE(line, QString("a\tb"));
    }

    void listWritesItsItems()
    {
        QString line;
        const QStringList items{"one", "two"};
        QDebug(&line).noquote() << loglist(items);
        QCOMPARE(line.trimmed(), QString("one, two"));
    }

    void binaryWritesUpperCaseHexadecimalPairs()
    {
        QString line;
        QDebug(&line).noquote() << logbinary(QByteArray("\x1d\x49\x01\xff", 4));
        QCOMPARE(line.trimmed(), QString("1D 49 01 FF"));
    }
};

QTEST_APPLESS_MAIN(TestLogHelper)
#include "tst_loghelper.moc"
