// A till at work: settings are changed and read, receipts made and a printer searched for at the
// same time, each on a thread of its own.
#include <QEventLoop>
#include <QtTest>
#include <optional>

#include "logcatcher.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerbench.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/checktemplatessettings.h"
#include "settings/textprintersettings.h"
#include "threads.h"

namespace {

QString example(const QString &name)
{
    return QString(PRINTERSLIB_EXAMPLES) + '/' + name;
}

QStringList receipt()
{
    PrinterDocument document;
    document.setAttributes({{"DOCNO", 1207},
                            {"REAL", 12.345},
                            {"SALE", QDateTime(QDate(2026, 3, 14), QTime(18, 5, 30))},
                            {"TEXT", QString::fromUtf8("Чай «Ассам»")}});
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setSpecCharsPath(example(""));
    if (!formatter.loadTemplate(example("tags.cpt"), "UTF-8"))
        return {};
    return formatter.toPlainText(document, 42) +
           QStringList(formatter.toHtmlDocument(document, true));
}

QList<DocumentBlock> coupon()
{
    QFile file(example("coupon.bbcode"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    BbCodeParser parser(nullptr);
    parser.setImagesPath(example("images"));
    parser.parseText(QString::fromUtf8(file.readAll()));
    return parser.blocks();
}

void installSettings(int round)
{
    const QSharedPointer<TextPrinterSettings> settings(new TextPrinterSettings);
    settings->setPrinterId(QString::number(round));
    settings->setEmptyStringsAtEnd(round);
    settings->setCodec(QString::number(round));
    CheckTemplatesSettings().setCheckTemplatesPath(QString::number(round));
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

bool settingsAreReadable(const PrinterInfo &any)
{
    const TextPrinterSettings settings;
    return settings.toList().size() > 10 && settings.availablePrinters().size() > 10 &&
           !settings.codec().isEmpty() && settings.printerInfo("none") == any &&
           !CheckTemplatesSettings().checkTemplatesPath().isEmpty();
}

/// The models that a search finds on the ports.
QStringList search(const QStringList &ports)
{
    QStringList models;
    QEventLoop loop;
    PrintDeviceFinder finder(nullptr);
    bool isOver = false;
    QObject::connect(&finder, &PrintDeviceFinder::deviceFinded, &loop,
                     [&models](const PrintDeviceInfo &info) { models.append(info.deviceId()); });
    QObject::connect(&finder, &PrintDeviceFinder::finished, &loop, [&isOver] { isOver = true; });
    finder.start(ports);
    while (!isOver)
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    return models;
}

}  // namespace

class TestParallelUse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_quiet.emplace(); }

    void cleanupTestCase()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        m_quiet.reset();
    }

    void settingsReceiptsAndSearchesDontDisturbEachOther()
    {
        constexpr int searches = 10;
        PrinterBench bench;
        const QStringList ports{bench.add(faultyPrinter(VirtualFault::Silent))->portPath(),
                                bench.add(printerOf("CUSTOM_VKP_80", 19200))->portPath()};
        std::vector<std::function<bool()>> uses;
        installSettings(1);
        uses = {
            [round = 0]() mutable { return installSettings(++round), true; },
            [any = TextPrinterSettings().printerInfo("none")] { return settingsAreReadable(any); },
            [expected = receipt()] { return expected.size() > 40 && receipt() == expected; },
            [expected = receipt()] { return receipt() == expected; },
            [expected = coupon()] { return expected.size() > 10 && coupon() == expected; },
        };
        std::atomic<bool> isSearching{true};
        std::atomic<int> wrong{0};
        std::vector<std::function<void()>> threads{[&] {
            for (int count = 0; count < searches; ++count)
                wrong += search(ports) != QStringList("CUSTOM_VKP_80");
            isSearching = false;
        }};
        for (auto &use : uses)
            threads.emplace_back([&wrong, &isSearching, &use] {
                do
                    wrong += !use();
                while (isSearching);
            });
        runTogether(threads);
        QCOMPARE(wrong.load(), 0);
    }

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestParallelUse)
#include "tst_parallel_use.moc"
