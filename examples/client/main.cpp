// A minimal print service: reads its settings, finds the printer, fills a receipt, keeps it in a
// document file, prints it, and tells the system how the printer is and how that went.
#include <printerslib/drivers/documentcleaner.h>
#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/documentfiles.h>
#include <printerslib/drivers/printersearch.h>
#include <printerslib/drivers/printjob.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QProcess>
#include <QTextStream>
#include <optional>

// Another platform may choose the language in a way of its own.
#if __has_include("hearth/apptranslations.h")
#include "hearth/apptranslations.h"
#include "hearth/initconfig.h"
#define HAS_TRANSLATIONS
#endif
#include "printdevicefinder/printdeviceinfo.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "settings/textprintersettings.h"
#include "shownlog.h"

using namespace printerslib::drivers;

namespace {

constexpr int startMilliseconds = 10000;
constexpr int mendMilliseconds = 60000;  // so long the shop has for a new roll

void say(const QString &line)
{
    QTextStream(stdout) << shownText(line) << '\n';
}

/// The settings are the process's own from here on: the library reads them too.
bool loadSettings(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QVariantList items = QJsonDocument::fromJson(file.readAll()).toVariant().toList();
    const auto settings = QSharedPointer<TextPrinterSettings>::create();
    settings->setList(items);
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
    return !items.isEmpty();
}

/// The shop's language, which the system's configuration names, for the words that the library
/// prints by itself, such as the mark of a copy. The application object is there already.
void speakShopsLanguage()
{
#ifdef HAS_TRANSLATIONS
    const QString language =
        hearth::InitConfig("/opt/tarnwick/etc/tarn.conf", false).locale();  // "ru", "de"
    if (!hearth::AppTranslations::use(language))
        say(QStringLiteral("there is no translation to \"%1\", but to: %2")
                .arg(language, hearth::AppTranslations::languages().join(", ")));
#endif
}

/// Waits for the end of a search that has begun.
std::optional<PrintDeviceInfo> foundBy(PrinterSearch &search)
{
    QEventLoop loop;
    QObject::connect(&search, &PrinterSearch::over, &loop, &QEventLoop::quit);
    loop.exec();
    if (search.result() == PrinterSearch::Result::Found)
        return search.device();
    say(QStringLiteral("no printer: %1").arg(search.text()));
    return std::nullopt;
}

/// The printer of the settings, if it answers on its port. A search of all ports, which takes near
/// three minutes where nobody answers, would be search.start().
std::optional<PrintDeviceInfo> confirmPrinter(const TextPrinterSettings &settings)
{
    PrintDeviceInfo record;
    record.setDeviceType(1);
    record.setDeviceId(settings.printerId());
    record.setSettings(settings.port()->portSettings());
    PrinterSearch search;
    search.confirm({record});
    return foundBy(search);
}

/// Starts a program that plays the printer, and finds it. Its dialogue goes to printer.log.
std::optional<PrintDeviceInfo> startVirtualPrinter(QProcess &printer, const QString &program,
                                                   const QString &model, const QDir &folder)
{
    const QString port = folder.filePath("printer");
    QFile::remove(port);
    printer.setStandardOutputFile(folder.filePath("printer.log"));
    printer.start(program, {"--model", model, "--link", port});
    QElapsedTimer waiting;
    waiting.start();
    while (!QFile::exists(port)) {
        if (printer.state() == QProcess::NotRunning || waiting.hasExpired(startMilliseconds))
            return std::nullopt;
        printer.waitForFinished(10);
    }
    PrinterSearch search;
    search.start({port});
    return foundBy(search);
}

/// The name of the second article comes from somebody else, a line feed in it and all.
/// @param isCopy whether the receipt was printed before, and says so
PrinterDocument sale(bool isCopy)
{
    PrinterDocument document;
    document.setIsCopy(isCopy);
    document.setAttributes({{"SHOP", "Harbour Kiosk"},
                            {"DOCNO", 1207},
                            {"SALE_DT", QDateTime(QDate(2026, 5, 9), QTime(14, 30))},
                            {"NAME1", "Newspaper"},
                            {"QTY1", 1},
                            {"PRICE1", 1.85},
                            {"NAME2", "Tea\nto go"},
                            {"QTY2", 2},
                            {"PRICE2", 2.40},
                            {"DISCOUNT", 0}});
    return document;
}

/// The receipt, laid out for the printer; invalid without a template.
std::optional<TextPrinterDocument> makeReceipt(const QString &templateFile, bool isCopy)
{
    PrinterDocumentFormatter formatter(0, nullptr);  // blanks in front are the driver's
    if (!formatter.loadTemplate(templateFile, "UTF-8"))
        return std::nullopt;
    // What others wrote prints, and neither acts as markup nor makes lines of its own.
    const PrinterDocument document = DocumentCleaner::cleanedDocument(sale(isCopy));
    return formatter.toTextPrinterDocument(document);
}

/// True only when the document is on the disk and can be read back. Nothing is opened in a folder
/// or behind a name where somebody else could have put something.
bool keep(const TextPrinterDocument &receipt, const QString &fileName)
{
    const QString fault = DocumentFiles::save(receipt, fileName);
    if (!fault.isEmpty())
        qCritical().noquote() << fault;
    return fault.isEmpty();
}

/// The receipt as bytes of the printer. What isn't printed as it asks for is said, and is no fault.
EncodedDocument printerBytes(const TextPrinterDocument &receipt, TextPrinterSettings &settings)
{
    const auto target = PrintTarget::forModel(settings.printerId(), settings.paperTypeId(),
                                              settings.baseFiscalFont() - 1);  // from 1 in settings
    EncodedDocument job;
    job.error = QStringLiteral("the model isn't known");
    if (target)
        job = DocumentEncoder(*target, PrintOptions::fromSettings(settings)).encode(receipt);
    for (const PrintNote &note : job.notes)
        say(note.toString());
    return job;
}

/// The message bus, on which this example has nothing but a file.
class Bus
{
public:
    explicit Bus(QString fileName) : m_fileName(std::move(fileName)) {}

    void publish(const corvid::ClientState &record)
    {
        say(QStringLiteral("state on the bus: %1").arg(record.state()));
        QFile file(m_fileName);
        if (!file.open(QIODevice::WriteOnly) || file.write(record.state().toUtf8()) < 0 ||
            !file.flush()) {
            m_isWhole = false;
            qCritical().noquote() << m_fileName << file.errorString();
        }
    }
    /// What the printer can't tell by itself.
    void publishTrouble(const QString &trouble)
    {
        PrintServiceState state;
        state.setServiceState(PrintServiceState::ServiceWorkableFirst);
        state.setDeviceState(PrintServiceState::DeviceCritical);
        state.setDeviceErorMsg(trouble);
        publish(PrintServiceStateCorvidWrapper(state).toClientState());
    }
    /// Whether all of it was published.
    bool isWhole() const { return m_isWhole; }

private:
    QString m_fileName;
    bool m_isWhole = true;
};

QString wordsFor(const PrintJobResult &result)
{
    static const char *const words[] = {"not printed", "printed in part", "sent", "processed",
                                        "printed"};
    const QString word = QString::fromLatin1(words[static_cast<int>(result.outcome)]);
    return result.text.isEmpty() ? word : word + ": " + result.text;
}

/// Prints, and publishes what the printer tells of itself meanwhile.
PrintJobResult print(const EncodedDocument &receipt, const PrinterProfile &profile,
                     const PrinterAddress &address, Bus &bus)
{
    PrintJobOptions options;
    options.waitMilliseconds = mendMilliseconds;
    PrintJob job(receipt, profile, address, options);
    QObject::connect(&job, &PrintJob::waiting, &job, [](int ahead) {
        say(QStringLiteral("%1 jobs of others are in front").arg(ahead));
    });
    QObject::connect(&job, &PrintJob::note, &job, [](const QString &text) { say(text); });
    QObject::connect(&job, &PrintJob::statusChanged, &job, [&bus](const PrinterStatus &status) {
        const auto service = PrintServiceState::ServiceWorkableFirst;
        bus.publish(PrintServiceStateCorvidWrapper(status.toServiceState(service)).toClientState());
    });
    QEventLoop loop;
    QObject::connect(&job, &PrintJob::finished, &loop, [&](const PrintJobResult &result) {
        say("receipt: " + wordsFor(result));
        if (!job.isRetracting())
            loop.quit();
    });
    QObject::connect(&job, &PrintJob::retracted, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    return job.result();
}

/// @return whether all of it went out
bool printReceipt(const TextPrinterDocument &receipt, TextPrinterSettings &settings,
                  const PrintDeviceInfo &device, Bus &bus)
{
    const EncodedDocument document = printerBytes(receipt, settings);
    QString fault = document.error;
    const auto profile = PrinterProfile::forModel(settings.printerId());
    const auto address = PrinterAddress::fromPortSettings(device.settings(), &fault);
    if (!document.error.isEmpty() || !profile || !address) {
        bus.publishTrouble(fault);
        return false;
    }
    const PrintJobResult result = print(document, *profile, *address, bus);
    // What the printer itself has told is on the bus already.
    if (!result.isSent() && !result.status.toTxtPrinterError())
        bus.publishTrouble(wordsFor(result));
    return result.isSent();
}

/// Finds the printer, or starts one, and prints.
/// @return whether all of it went out
bool findAndPrint(const TextPrinterDocument &receipt, TextPrinterSettings &settings,
                  const QString &virtualPrinter, const QDir &folder, Bus &bus)
{
    QProcess player;
    std::optional<PrintDeviceInfo> device = confirmPrinter(settings);
    if (!device)
        device = startVirtualPrinter(player, virtualPrinter, settings.printerId(), folder);
    bool isSent = false;
    if (device) {
        say(QStringLiteral("printer: %1 on %2")
                .arg(device->deviceId(), device->settings().portName()));
        settings.port()->setPortSettings(device->settings());
        isSent = printReceipt(receipt, settings, *device, bus);
    } else {
        bus.publishTrouble(QStringLiteral("there is no printer"));
    }
    player.terminate();
    player.waitForFinished();
    return isSent;
}

}  // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(writeShownLog);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4 || arguments.size() > 5) {
        say("Usage: print-service SETTINGS.json TEMPLATE FOLDER [VIRTUAL-PRINTER]");
        return 2;
    }
    QLoggingCategory::setFilterRules("default.warning=false\nprinters=false");
    const QDir folder(QDir(arguments.at(3)).absolutePath());
    if (!loadSettings(arguments.at(1))) {
        say(QStringLiteral("%1 holds no settings").arg(arguments.at(1)));
        return 1;
    }
    speakShopsLanguage();
    TextPrinterSettings settings;
    const QString kept = folder.filePath("receipt-1207");
    const std::optional<TextPrinterDocument> receipt =
        makeReceipt(arguments.at(2), QFile::exists(kept));
    Bus bus(folder.filePath("state.json"));
    if (!receipt || !keep(*receipt, kept)) {
        bus.publishTrouble(QStringLiteral("the receipt couldn't be made and kept"));
        return 1;
    }
    const bool isSent =
        findAndPrint(*receipt, settings, arguments.value(4, "virtual-printer"), folder, bus);
    return isSent && bus.isWhole() ? 0 : 1;
}
