#include <QtTest>

#include "printerdocs/printerdocumentformatter.h"
#include "randomlines.h"
#include "templatelint.h"

using namespace templatelint;

// Values whose tags name others on and on would hang the engine: the checker finds them before.
class TestLintEndless : public QObject
{
    Q_OBJECT

private:
    static constexpr int runs = 3000;

private Q_SLOTS:
    // The engine logs every tag that it fills.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    // Values that hold only tags of names further on come to an end, and are filled.
    void valuesThatEndAreNotEndless()
    {
        const QStringList parts{"<", ">", "[", "]", "<B:>", "text", "%", "%", "<ENTRIES>"};
        RandomLines random(8);
        for (int run = 0; run < runs; ++run) {
            QMap<QString, QVariant> values;
            for (int i = 0; i < 5; ++i) {
                const QString further = QString("<TAG%1>").arg(i + 1 + random.below(3));
                values.insert(QString("TAG%1").arg(i), random.line(parts).replace('%', further));
            }
            PrinterDocument document;
            document.setAttributes(values);
            document.setEntries(random.line(parts).replace('%', "<TAG0>=<TAG1>\t"));
            document.setIsCopy(run % 2 == 1);
            const QStringList lines = random.lines({"<TAG0>", "<DOCNO>", "<ENTRIES>", "x", "["});
            for (const Filling filling : {Filling::Receipt, Filling::EachLine}) {
                const auto endless = endlessValueOf(lines, document, filling);
                if (endless)
                    qInfo() << lines << values << document.entries() << endless->message;
                QVERIFY(!endless);
            }
        }
    }

    // What isn't found to be endless has to come to an end in the engine; if not, this never ends.
    void valuesThatAreNotEndlessEnd()
    {
        const QStringList parts{"<", ">", "[", "]", "TAG0", "TAG1", "<TAG0>", "<TAG1>", "+", "x"};
        RandomLines random(9);
        int refused = 0;
        int filled = 0;
        for (int run = 0; run < runs / 10; ++run) {
            PrinterDocument document;
            document.setAttributes({{"TAG0", random.line(parts)},
                                    {"TAG1", random.line(parts)},
                                    {"TAG0+TAG1", random.line(parts)}});
            document.setEntries(random.line(parts));
            const QStringList lines = random.lines({"<TAG0>", "<TAG1", ">", "<ENTRIES>", "+", "["});
            PrinterDocumentFormatter formatter(0, nullptr);
            formatter.setTemplate(lines.join('\n'));
            const bool isEndless = endlessValueOf(lines, document, Filling::Receipt).has_value();
            refused += isEndless ? 1 : 0;
            if (!isEndless)
                filled += formatter.prepareDocument(document).isEmpty() ? 0 : 1;
            if (!endlessValueOf(lines, document, Filling::EachLine))
                formatter.toFormattedText(document);
        }
        QVERIFY2(refused > 10 && filled > 10,
                 qPrintable(QString("%1 %2").arg(refused).arg(filled)));
    }

    void endlessValuesAreNamedByTheirPlace_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("tag");
        const auto row = [](const char *name, const QStringList &lines, const char *entries,
                            const char *place, const char *tag) {
            QTest::newRow(name) << lines << QString(entries) << QString(place) << QString(tag);
        };
        row("its own tag", {"a", "b<ENDS><SELF>"}, "", "2:8", "\"<SELF>\"");
        row("in a circle", {"<PING>"}, "", "1:1", "\"<P");
        row("doubling", {"x<TWICE>"}, "", "1:2", "\"<TWICE>\"");
        row("behind an expression", {"<ZERO + 0>", "<PONG>"}, "", "2:1", "\"<P");
        row("put together of two", {"<HALF>"}, "", "1:1", "\"<HA");
        row("in the entries", {"a", " <entries>"}, "x=1\ty=<SELF>", "2:2", "\"<SELF>\"");
        row("doubling in an expression", {"1", "<N000 + 1>"}, "", "2:1", "\"<N000 + 1>\"");
        row("without end in a removed part", {"<X:>", "<SELF>", "<:X>"}, "", "2:1", "\"<SELF>\"");
        row("that end", {"<ENDS>", "<N039>", "<LONG>", "<MANY>"}, "<ENDS>=<LONG>", "", "");
        row("for a file of symbols", {"<SPECSYMBOLS=<SELF>"}, "", "", "");
    }
    void endlessValuesAreNamedByTheirPlace()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, entries);
        QFETCH(QString, place);
        QFETCH(QString, tag);
        QMap<QString, QVariant> values{{"SELF", "<SELF>"},
                                       {"PING", "<PONG>"},
                                       {"PONG", "<PING>"},
                                       {"TWICE", "<TWICE><TWICE>"},
                                       {"HALF", "<HA<X>"},
                                       {"HA<X", "<HALF>"},
                                       {"ENDS", "<NAME>[<NONE>x]<NAME"},
                                       {"NAME", "Maya"},
                                       {"LONG", "<BULK>"},
                                       {"BULK", QString(3 << 20, 'x')},
                                       {"MANY", QString("<NAME>").repeated(9000)}};
        for (int i = 0; i < 40; ++i)
            values.insert(QString("N%1").arg(i, 3, 10, QChar('0')),
                          QString("N%1+N%1").arg(i + 1, 3, 10, QChar('0')));
        PrinterDocument document;
        document.setAttributes(values);
        document.setEntries(entries);
        const auto endless = endlessValueOf(lines, document, Filling::Receipt);
        QCOMPARE(endless ? QString("%1:%2").arg(endless->line).arg(endless->column) : QString(),
                 place);
        const QString message = endless ? endless->message : QString();
        QVERIFY2(message.contains(tag), qPrintable(message));
    }
};

QTEST_GUILESS_MAIN(TestLintEndless)
#include "tst_lint_endless.moc"
