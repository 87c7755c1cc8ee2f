#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSerialPortInfo>
#include <cstdio>

#include "commands.h"
#include "devicejson.h"
#include "forms.h"
#include "interrupt.h"
#include "paper.h"
#include "portsearch.h"
#include "printdevicefinder/printdevicefinder.h"
#include "searchprogress.h"
#include "support.h"
#include "virtualprinter.h"

namespace {

constexpr unsigned int serialTextPrinter = 1;

const QString portOption = QStringLiteral("port");
const QString confirmOption = QStringLiteral("confirm");
const QString lastOption = QStringLiteral("last");
const QString virtualOption = QStringLiteral("virtual");

/// The model's name in the catalogue; empty if it has none.
QString modelName(const QString &id)
{
    const auto model = receiptpreview::catalogueModel(id);
    return model ? model->name() : QString();
}

QStringList jsonLines(const QList<PrintDeviceInfo> &devices)
{
    return tool::linesOf(QJsonDocument(devicejson::write(devices)).toJson());
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

/// One run of the command: which options it has, and what has been found.
class FindCommand
{
public:
    explicit FindCommand(const QCommandLineParser &parser);

    int run();

private:
    int confirm();
    int last();
    int searchVirtual();
    int search(const QStringList &ports);
    /// What is known from earlier; nothing if the file can't be read.
    static std::optional<QList<PrintDeviceInfo>> knownDevices(const QString &fileName);

    QList<PortTask> searchTasks(const QStringList &ports);
    QList<PortTask> confirmTasks(const QList<PrintDeviceInfo> &records);
    /// The task on the port of this name, a new one if it has none yet; null if it isn't usable.
    PortTask *taskOn(const QString &port, QList<PortTask> &tasks);
    void runTasks(const QList<PortTask> &tasks);

    void printFound() const;
    int reported(const QString &reason) const;

    const QCommandLineParser &m_parser;
    const bool m_isVerbose;
    const bool m_asJson;
    const Interrupt m_interrupt;
    QStringList m_complaints;  ///< About ports, each once.
    QList<PrintDeviceInfo> m_found;
};

FindCommand::FindCommand(const QCommandLineParser &parser)
    : m_parser(parser),
      m_isVerbose(parser.isSet(tool::verboseOption())),
      m_asJson(parser.isSet(tool::jsonOption()))
{}

int FindCommand::run()
{
    if (m_parser.isSet(confirmOption))
        return confirm();
    if (m_parser.isSet(lastOption))
        return last();
    if (m_parser.isSet(virtualOption))
        return searchVirtual();
    return search(m_parser.values(portOption));
}

PortTask *FindCommand::taskOn(const QString &port, QList<PortTask> &tasks)
{
    const PortUse use(port);
    for (PortTask &task : tasks) {
        if (task.port.canonicalPath() == use.canonicalPath() && use.isUsable())
            return &task;
    }
    if (!use.isUsable()) {
        if (!m_complaints.contains(use.reason()))
            tool::complain(QStringLiteral("find: ") + use.reason());
        m_complaints.append(use.reason());
        return nullptr;
    }
    tasks.append({use, {}});
    return &tasks.last();
}

QList<PortTask> FindCommand::searchTasks(const QStringList &ports)
{
    QList<PortTask> tasks;
    for (const QString &port : ports)
        taskOn(port, tasks);
    return tasks;
}

QList<PortTask> FindCommand::confirmTasks(const QList<PrintDeviceInfo> &records)
{
    QList<PortTask> tasks;
    for (const PrintDeviceInfo &record : records) {
        const QString port = record.settings().portName();
        if (record.deviceType() != serialTextPrinter || record.deviceId().isEmpty() ||
            port.isEmpty()) {
            tool::complain(
                QStringLiteral("find: device %1 is no serial printer with a model and a port")
                    .arg(records.indexOf(record) + 1));
            continue;
        }
        if (PortTask *const task = taskOn(port, tasks))
            task->records.append(record);
    }
    return tasks;
}

/// Runs the tasks to their end, and prints the printer when it is found.
void FindCommand::runTasks(const QList<PortTask> &tasks)
{
    PortSearch portSearch(tasks);
    QEventLoop loop;
    SearchProgress progress([&portSearch] { return portSearch.progress(); }, !m_isVerbose);
    QObject::connect(&portSearch, &PortSearch::over, &loop, &QEventLoop::quit);
    QObject::connect(&portSearch, &PortSearch::found, &loop,
                     [this, &progress](const PrintDeviceInfo &device) {
                         m_found.append(device);
                         progress.clear();
                         printFound();
                     });
    if (m_interrupt.notifier() != nullptr)
        QObject::connect(m_interrupt.notifier(), &QSocketNotifier::activated, &portSearch,
                         [this, search = &portSearch] {
                             m_interrupt.notifier()->setEnabled(false);
                             search->interrupt();
                         });
    if (!m_interrupt.hasCome()) {
        portSearch.start();
        loop.exec();
    }
}

void FindCommand::printFound() const
{
    if (m_asJson)
        tool::printContent(jsonLines(m_found));
    else
        printTable(m_found);
    std::fflush(stdout);
}

/// @param reason why nothing was found, if that is so
int FindCommand::reported(const QString &reason) const
{
    if (!m_found.isEmpty())
        return tool::Success;
    if (m_asJson)
        printFound();
    tool::complain(m_interrupt.hasCome() ? QStringLiteral("cancelled") : reason);
    return tool::BadInput;
}

int FindCommand::confirm()
{
    const QString fileName = m_parser.value(confirmOption);
    const std::optional<QByteArray> text = tool::readInput(fileName);
    if (!text)
        return tool::BadInput;
    const std::optional<QList<PrintDeviceInfo>> records = devicejson::read(fileName, *text);
    if (!records)
        return tool::BadInput;
    if (records->isEmpty())
        return reported(PrintDeviceFinder::tr("There are no available configs"));
    runTasks(confirmTasks(*records));
    return reported(PrintDeviceFinder::tr("There no devices finded"));
}

int FindCommand::search(const QStringList &ports)
{
    QStringList names = ports;
    if (names.isEmpty()) {
        const QList<QSerialPortInfo> available = QSerialPortInfo::availablePorts();
        for (const QSerialPortInfo &port : available)
            names.append(port.portName());
    }
    if (names.isEmpty())
        return reported(PrintDeviceFinder::tr("There are no available ports"));
    runTasks(searchTasks(names));
    return reported(PrintDeviceFinder::tr("There no devices finded"));
}

std::optional<QList<PrintDeviceInfo>> FindCommand::knownDevices(const QString &fileName)
{
    if (!QFileInfo::exists(fileName) && !QFileInfo(fileName).isSymLink())
        return QList<PrintDeviceInfo>();
    const std::optional<QByteArray> text = tool::readInput(fileName);
    if (!text)
        return std::nullopt;
    if (text->trimmed().isEmpty())
        return QList<PrintDeviceInfo>();
    return devicejson::read(fileName, *text);
}

/// A file that isn't one of devices is left alone, and so is one whose printer answers as it stands
/// there, or when nobody answers: a printer that is switched off will be asked first again.
int FindCommand::last()
{
    const QString fileName = m_parser.value(lastOption);
    const std::optional<QList<PrintDeviceInfo>> known = knownDevices(fileName);
    if (!known)
        return tool::BadInput;
    if (!known->isEmpty())
        runTasks(confirmTasks(*known));
    if (!m_found.isEmpty() && known->contains(m_found.constFirst()))
        return tool::Success;
    int status = tool::Success;
    if (m_found.isEmpty())
        status = search(m_parser.values(portOption));
    if (m_found.isEmpty())
        return status;
    return tool::writeLines(fileName, jsonLines(m_found)) ? status : tool::BadInput;
}

int FindCommand::searchVirtual()
{
    VirtualPrinterOptions options;
    options.model = m_parser.value(virtualOption);
    VirtualPrinter printer(options);
    if (!virtualModelIds().contains(options.model)) {
        tool::complain(QStringLiteral("find: there is no virtual \"%1\", but: %2")
                           .arg(options.model, virtualModelIds().join(QStringLiteral(", "))));
        return tool::WrongUsage;
    }
    if (!printer.isValid()) {
        tool::complain(QStringLiteral("find: there is no pseudo terminal to be had"));
        return tool::BadInput;
    }
    printer.start();
    return search({printer.portPath()});
}

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Finds the receipt printer on the serial ports by speaking to it, and prints it as soon as "
        "it "
        "has answered. A port where nobody answers takes 171 seconds. A port that can't be used is "
        "named beforehand, with the reason. Ctrl+C ends the search at once and leaves the ports as "
        "they were. Exit status 1: nothing was found."));
    parser.addOption({portOption,
                      QStringLiteral("Search this port only; may be given again. Default: all "
                                     "ports of the machine."),
                      QStringLiteral("NAME")});
    parser.addOption(tool::jsonOption());
    parser.addOption({confirmOption,
                      QStringLiteral("Check the printers in this file, as --json prints them, "
                                     "instead of searching. Those on one port are asked one after "
                                     "the other."),
                      QStringLiteral("FILE")});
    parser.addOption({lastOption,
                      QStringLiteral("Check the printers in this file first, search only if none "
                                     "of them answers, and write what was found to it. It need not "
                                     "exist yet."),
                      QStringLiteral("FILE")});
    parser.addOption({virtualOption,
                      QStringLiteral("Start a virtual printer of this model, and find it."),
                      QStringLiteral("MODEL")});
}

/// Whether the options go together; complains if they don't.
bool agree(const QCommandLineParser &parser)
{
    const int sources = static_cast<int>(parser.isSet(portOption)) +
                        static_cast<int>(parser.isSet(confirmOption)) +
                        static_cast<int>(parser.isSet(virtualOption));
    const bool lastIsAlone =
        !parser.isSet(lastOption) || sources == 0 || (sources == 1 && parser.isSet(portOption));
    if (sources <= 1 && lastIsAlone)
        return true;
    tool::complain(
        QStringLiteral("find: --port, --confirm and --virtual exclude each other, and "
                       "--last goes with --port only"));
    return false;
}

}  // namespace

int runFind(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    if (const std::optional<int> status =
            tool::parse(parser, QStringLiteral("find"), arguments, 0, 0))
        return *status;
    if (!agree(parser))
        return tool::WrongUsage;
    return FindCommand(parser).run();
}
