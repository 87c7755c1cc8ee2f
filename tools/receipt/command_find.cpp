#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <QThreadPool>
#include <csignal>
#include <memory>

#include "commands.h"
#include "devicejson.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printers/printerinfo.h"
#include "searchprogress.h"
#include "support.h"
#include "virtualprinter.h"

namespace {

const QString portOption = QStringLiteral("port");
const QString jsonOption = QStringLiteral("json");
const QString confirmOption = QStringLiteral("confirm");
const QString virtualOption = QStringLiteral("virtual");

/// Turns an interrupt into an event. The second one ends the program as ever.
class Interrupt
{
public:
    Interrupt()
    {
        if (::pipe2(_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
            return;
        notifier = std::make_unique<QSocketNotifier>(_pipe[0], QSocketNotifier::Read);
        struct sigaction action = {};
        action.sa_handler = [](int) {
            const char byte = 0;
            const ssize_t written = ::write(_pipe[1], &byte, 1);
            Q_UNUSED(written)
        };
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        ::sigaction(SIGINT, &action, nullptr);
        ::sigaction(SIGTERM, &action, nullptr);
    }

    std::unique_ptr<QSocketNotifier> notifier;

private:
    static int _pipe[2];
};

int Interrupt::_pipe[2] = {-1, -1};

struct Outcome
{
    QList<PrintDeviceInfo> devices;
    QString message;  ///< Why there are none.
};

/// Runs a search or a test, whichever begin() starts, to its end.
/// @param confirmed the records of a test; empty for a search
template <typename Begin>
Outcome run(bool verbose, const QList<PrintDeviceInfo> &confirmed, Begin begin)
{
    SearchProgress progress(verbose, confirmed);
    const Interrupt interrupt;
    PrintDeviceFinder finder;
    QEventLoop loop;
    Outcome outcome;
    // "finished" comes before the device, and not at all for an empty input.
    QObject::connect(&finder, &PrintDeviceFinder::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QObject::connect(&finder, &PrintDeviceFinder::noDevices, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QObject::connect(&finder, &PrintDeviceFinder::noDevices, &loop,
                     [&outcome](const QString &err) { outcome.message = err; });
    QObject::connect(&finder, &PrintDeviceFinder::deviceFinded, &loop,
                     [&outcome](const PrintDeviceInfo &info) { outcome.devices.append(info); });
    if (interrupt.notifier) {
        QObject::connect(interrupt.notifier.get(), &QSocketNotifier::activated, &loop,
                         [&outcome, &finder, &interrupt] {
                             interrupt.notifier->setEnabled(false);
                             outcome.message = QStringLiteral("cancelled");
                             finder.cancel();
                         });
    }
    begin(finder);
    loop.exec();
    progress.show();
    // Tasks that were cancelled close their ports; the program can't end before that.
    QThreadPool::globalInstance()->waitForDone();
    return outcome;
}

/// The model's name in the catalogue; empty if it has none.
QString modelName(const QString &id)
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    for (const PrinterInfo &model : models) {
        if (model.id() == id)
            return model.name();
    }
    return {};
}

void printTable(const QList<PrintDeviceInfo> &devices)
{
    const auto row = [](const QString &port, const QString &model, const QString &name,
                        const QString &line) {
        tool::print(QStringLiteral("%1  %2  %3  %4")
                        .arg(port, -12)
                        .arg(model, -16)
                        .arg(name, -30)
                        .arg(line));
    };
    row(QStringLiteral("PORT"), QStringLiteral("MODEL"), QStringLiteral("NAME"),
        QStringLiteral("LINE"));
    for (const PrintDeviceInfo &device : devices)
        row(device.settings().portName(), device.deviceId(), modelName(device.deviceId()),
            devicejson::lineText(device.settings()));
}

int report(const Outcome &outcome, bool asJson)
{
    if (asJson)
        tool::printContent(
            tool::linesOf(QJsonDocument(devicejson::write(outcome.devices)).toJson()));
    else if (!outcome.devices.isEmpty())
        printTable(outcome.devices);
    if (!outcome.devices.isEmpty())
        return tool::Success;
    tool::complain(outcome.message);
    return tool::BadInput;
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Finds the receipt printer on the serial ports by speaking to it. A port "
                       "where nobody answers takes near three minutes. Exit status 1: nothing was "
                       "found."));
    parser.addOption({portOption,
                      QStringLiteral("Search this port only; may be given again. Default: all "
                                     "ports of the machine."),
                      QStringLiteral("name")});
    parser.addOption({jsonOption, QStringLiteral("Print the result as JSON.")});
    parser.addOption({confirmOption,
                      QStringLiteral("Check the printers in this file, as --json prints them, "
                                     "instead of searching."),
                      QStringLiteral("file")});
    parser.addOption({virtualOption,
                      QStringLiteral("Start a virtual printer of this model, and find it."),
                      QStringLiteral("model")});
}

int confirm(const QString &fileName, bool asJson, bool verbose)
{
    const std::optional<QByteArray> text = tool::readInput(fileName);
    if (!text)
        return tool::BadInput;
    std::optional<QList<PrintDeviceInfo>> records = devicejson::read(fileName, *text);
    if (!records)
        return tool::BadInput;
    return report(
        run(verbose, *records, [&records](PrintDeviceFinder &finder) { finder.test(*records); }),
        asJson);
}

/// Where a port lies, as QSerialPort reads its name.
QString locationOf(const QString &port)
{
    const auto begins = [&port](const char *start) {
        return port.startsWith(QLatin1String(start));
    };
    return begins("/") || begins("./") || begins("../") ? port : QStringLiteral("/dev/") + port;
}

/// The search passes over a port that isn't there, and its name may be mistyped.
void complainOfMissing(const QStringList &ports)
{
    for (const QString &port : ports) {
        if (!QFileInfo::exists(locationOf(port)))
            tool::complain(QStringLiteral("find: there is no port %1").arg(locationOf(port)));
    }
}

int search(const QStringList &ports, bool asJson, bool verbose)
{
    return report(run(verbose, {},
                      [&ports](PrintDeviceFinder &finder) {
                          if (ports.isEmpty())
                              finder.start();
                          else
                              finder.start(ports);
                      }),
                  asJson);
}

int searchVirtual(const QString &model, bool asJson, bool verbose)
{
    VirtualPrinterOptions options;
    options.model = model;
    VirtualPrinter printer(options);
    if (!virtualModelIds().contains(model)) {
        tool::complain(QStringLiteral("find: there is no virtual \"%1\", but: %2")
                           .arg(model, virtualModelIds().join(QStringLiteral(", "))));
        return tool::WrongUsage;
    }
    if (!printer.isValid()) {
        tool::complain(QStringLiteral("find: there is no pseudo terminal to be had"));
        return tool::BadInput;
    }
    printer.start();
    return search({printer.portPath()}, asJson, verbose);
}

}  // namespace

int runFind(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    if (const std::optional<int> status =
            tool::parse(parser, QStringLiteral("find"), arguments, 0, 0))
        return *status;
    const int sources = static_cast<int>(parser.isSet(portOption)) +
                        static_cast<int>(parser.isSet(confirmOption)) +
                        static_cast<int>(parser.isSet(virtualOption));
    if (sources > 1) {
        tool::complain(QStringLiteral("find: --port, --confirm and --virtual exclude each other"));
        return tool::WrongUsage;
    }
    const bool verbose = parser.isSet(tool::verboseOption().names().constFirst());
    if (!verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("*=false\nprinters.debug=true"));
    const bool asJson = parser.isSet(jsonOption);
    if (parser.isSet(confirmOption))
        return confirm(parser.value(confirmOption), asJson, verbose);
    if (parser.isSet(virtualOption))
        return searchVirtual(parser.value(virtualOption), asJson, verbose);
    const QStringList ports = parser.values(portOption);
    complainOfMissing(ports);
    return search(ports, asJson, verbose);
}
