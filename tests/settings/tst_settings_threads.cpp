// All operations of the settings classes from many threads at once. Under ThreadSanitizer this
// proves that every access is guarded; without it, that what is read was written, and as a whole.
#include <cxxabi.h>

#include <QFile>
#include <QSet>
#include <QtTest>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <random>

#include "settingsoperations.h"
#include "threads.h"

using namespace settingsoperations;

namespace {

/// Members of these classes that are exported, as all members are, and that no client can call.
const QStringList privateMembers{"existingPortLocked", "portNamedLocked", "setFieldLocked",
                                 "setImageValue",      "setLocked",       "setOwnValue",
                                 "setOwnValueLocked",  "storePrinterId"};

QString demangled(const QByteArray &symbol)
{
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(symbol.constData(), nullptr, nullptr, nullptr), &std::free);
    return QString::fromLatin1(text.get());
}

/// Whether it is a function of the settings classes that a client can call by its name.
bool isOperation(const QString &signature)
{
    static const QSet<QString> classes{"CheckTemplatesSettings", "IPrintDeviceSettings",
                                       "ISystemPrinterSettings", "ITextPrinterSettings",
                                       "PrintSrvSettings",       "PrinterSettings",
                                       "SystemPrinterSettings",  "TextPrinterSettings"};
    const QString name = signature.section('(', 0, 0);
    const QString member = name.section("::", 1);
    return signature.contains('(') && classes.contains(name.section("::", 0, 0)) &&
           !member.startsWith('~') && !privateMembers.contains(member);
}

/// The operations that the library exports, as the stored description of its interface has them.
QSet<QString> exportedOperations()
{
    QSet<QString> operations;
    QFile file(PRINTERSLIB_INTERFACE);
    if (!file.open(QIODevice::ReadOnly))
        return operations;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QString signature = demangled(line.split(' ').first());
        if (isOperation(signature))
            operations.insert(signature);
    }
    return operations;
}

/// Runs all of a table, in another order in each round, and so next to other operations of the
/// other threads.
template <typename Table, typename Use>
void runShuffled(const Table &table, int rounds, unsigned seed, const Use &use)
{
    std::vector<const std::remove_reference_t<decltype(table[0])> *> order;
    for (const auto &operation : table)
        order.push_back(&operation);
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        for (const auto *operation : order)
            use(*operation, round);
    }
}

/// Runs the function on a thread, and the operation over and over on another for as long.
template <typename Operation>
void runBeside(const std::function<void()> &function, const Operation &operation)
{
    std::atomic<bool> isRunning{true};
    runTogether({[&] {
                     function();
                     isRunning.store(false, std::memory_order_relaxed);
                 },
                 [&] {
                     int round = 0;
                     do
                         operation(round++);
                     while (isRunning.load(std::memory_order_relaxed));
                 }});
}

/// What the threads found wrong.
class Findings
{
public:
    void add(const QString &finding)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_findings.insert(finding);
    }
    QByteArray text() const
    {
        QStringList list = m_findings.values();
        list.sort();
        return list.join("\n").toUtf8();
    }

private:
    std::mutex m_mutex;
    QSet<QString> m_findings;
};

}  // namespace

class TestSettingsThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What QtGui makes at its first use is made here: Debian's isn't built for ThreadSanitizer,
    // which sees its lock but not that it is made only once.
    void initTestCase() { SystemPrinterSettings::prepareDefaultFont(); }

    // The first test, as what is made at the first use is made but once in a process.
    void firstObjectsOfManyThreadsKnowAllModels()
    {
        std::atomic<int> wrong{0};
        runOnThreads(8, [&wrong](int thread) {
            const TextPrinterSettings settings;
            if (settings.availablePrinters().size() != PrinterInfo::fromResources().size() ||
                settings.printerInfo(printerId(thread)).fontTypes().size() != 4)
                ++wrong;
        });
        QCOMPARE(wrong.load(), 0);
    }

    void tablesHoldEveryOperation()
    {
        QSet<QString> listed;
        for (const Writer &writer : writers)
            listed.insert(writer.signature);
        for (const Reader &reader : readers)
            listed.insert(reader.signature);
        QCOMPARE(listed.size(), int(std::size(writers) + std::size(readers)));
        const QSet<QString> exported = exportedOperations();
        QCOMPARE((exported - listed).values(), QStringList());
        QCOMPARE((listed - exported).values(), QStringList());
    }

    void readersGetWhatWritersWrote()
    {
        constexpr int rounds = 60;
        constexpr int threads = 4;
        Objects objects;
        writeAll(objects);
        Findings findings;
        runOnThreads(threads, [&objects, &findings](int thread) {
            if (thread % 2 == 0) {
                runShuffled(
                    writers, rounds, unsigned(thread),
                    [&objects](const Writer &writer, int round) { writer.write(objects, round); });
            } else {
                runShuffled(readers, rounds, unsigned(thread),
                            [&](const Reader &reader, int round) {
                                if (!reader.read(objects, round))
                                    findings.add(reader.signature);
                            });
            }
        });
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QCOMPARE(findings.text(), QByteArray());
    }

    // Each operation is alone on its thread here, where no other's lock comes before or after it:
    // to ThreadSanitizer that would put it in order too.
    void everyReaderGuardsItself()
    {
        Objects objects;
        writeAll(objects);
        Findings findings;
        for (const Reader &reader : readers) {
            runBeside([&objects] { writeAll(objects); },
                      [&](int round) {
                          if (!reader.read(objects, round))
                              findings.add(reader.signature);
                      });
        }
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QCOMPARE(findings.text(), QByteArray());
    }

    void everyWriterGuardsItself()
    {
        Objects objects;
        writeAll(objects);
        Findings findings;
        const auto readAll = [&] {
            for (const Reader &reader : readers) {
                if (!reader.read(objects, 0))
                    findings.add(reader.signature);
            }
        };
        for (const Writer &writer : writers)
            runBeside(readAll, [&](int round) { writer.write(objects, round); });
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QCOMPARE(findings.text(), QByteArray());
    }

    void listsAreWrittenAndReadWhole_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("settings of all printers") << int(General);
        QTest::newRow("settings of a system printer") << int(OfSystemPrinter);
        QTest::newRow("settings of templates") << int(OfTemplates);
    }

    void listsAreWrittenAndReadWhole()
    {
        constexpr int rounds = 1500;
        QFETCH(int, kind);
        PrinterSettings().setPrinterId(printerId(0));
        QSet<QString> written;
        for (int round = 0; round < kinds; ++round) {
            writeList(kind, round);
            written.insert(readList(kind));
        }
        QCOMPARE(written.size(), kinds);
        Findings findings;
        runOnThreads(4, [&](int thread) {
            for (int round = thread; round < rounds; ++round) {
                if (thread % 2 == 0) {
                    writeList(kind, round);
                } else {
                    const QString read = readList(kind);
                    if (!written.contains(read))
                        findings.add(read);
                }
            }
        });
        QCOMPARE(findings.text(), QByteArray());
    }

private:
    static void writeAll(Objects &objects)
    {
        for (int round = 0; round < kinds; ++round) {
            for (const Writer &writer : writers)
                writer.write(objects, round);
        }
    }

    enum ListKind { General, OfSystemPrinter, OfTemplates };

    static QList<QVariant> itemsOf(int kind, int round)
    {
        if (kind == General)
            return generalItems(round);
        return kind == OfTemplates ? templatesItems(round) : systemItems(printerId(0), round);
    }

    static void writeList(int kind, int round)
    {
        if (kind == General)
            PrinterSettings().setList(itemsOf(kind, round));
        else if (kind == OfSystemPrinter)
            SystemPrinterSettings().setList(itemsOf(kind, round));
        else
            CheckTemplatesSettings().setList(itemsOf(kind, round));
    }

    /// The values of all items of the kind, in one text.
    static QString readList(int kind)
    {
        QList<QVariant> list;
        if (kind == General)
            list = PrinterSettings().toList();
        else if (kind == OfSystemPrinter)
            list = SystemPrinterSettings().toList();
        else
            list = CheckTemplatesSettings().toList();
        QStringList values;
        for (const QString &key : keysOf(itemsOf(kind, 0)))
            values.append(valueOf(list, key).toString());
        return values.join(' ');
    }
};

QTEST_MAIN(TestSettingsThreads)
#include "tst_settings_threads.moc"
