#include "searchprogress.h"

#include <unistd.h>

#include <QRegularExpression>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "printers/textprintermodels.h"
#include "terminaltext.h"

namespace {

constexpr int showEveryMilliseconds = 200;

// The order in which a search tries the families of printers.
constexpr const char *probes[] = {
    "Custom, Citizen, Epson", "Swecoin", "Star", "AV-268", "Citizen PPU-231",
};
constexpr int identificationProbe = 0;
constexpr int swecoinProbe = 1;
constexpr int starProbe = 2;
constexpr int av268Probe = 3;
constexpr int lastProbe = 4;
// Only the walk over the line settings of Star printers has this length.
constexpr int starEntries = 24;

struct ModelRow
{
    const QString *id;
    int probe;
};

// All other models that can be confirmed are Custom's, Citizen's and Epson's.
constexpr ModelRow modelsWithAProbe[] = {
    {&TextPrinterModels::MODEL_SWECOIN_TM_20XX, swecoinProbe},
    {&TextPrinterModels::MODEL_TSP_TUP, starProbe},
    {&TextPrinterModels::MODEL_AV_268, av268Probe},
    {&TextPrinterModels::MODEL_CITIZEN_PPU_231, lastProbe},
};

// Log lines come from the threads of the search.
std::mutex mutex;
SearchProgress *current = nullptr;
QtMessageHandler previousHandler = nullptr;

QString kindOf(int probe)
{
    return QString::fromLatin1(probes[probe]);
}

QString kindOf(const QString &modelId)
{
    for (const ModelRow &row : modelsWithAProbe) {
        if (modelId == *row.id)
            return kindOf(row.probe);
    }
    return kindOf(identificationProbe);
}

/// As the log names a port: records have "/dev/ttyS0" as well as "ttyS0".
QString loggedName(const QString &portName)
{
    const QString devices = QStringLiteral("/dev/");
    return portName.startsWith(devices) ? portName.mid(devices.size()) : portName;
}

}  // namespace

QString SearchProgress::Port::toString(const QString &name) const
{
    if (entries == 0)
        return QStringLiteral("%1: %2, 115200 baud").arg(name, kind);
    return QStringLiteral("%1: line setting %2 of %3, %4, %5 baud")
        .arg(name)
        .arg(entry)
        .arg(entries)
        .arg(kind, baudRate);
}

SearchProgress::SearchProgress(bool passOn, const QList<PrintDeviceInfo> &confirmed)
    : m_isTerminal(::isatty(STDERR_FILENO) != 0), m_passOn(passOn)
{
    for (const PrintDeviceInfo &record : confirmed) {
        QStringList &kinds = m_confirmedKinds[loggedName(record.settings().portName())];
        if (!kinds.contains(kindOf(record.deviceId())))
            kinds.append(kindOf(record.deviceId()));
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        current = this;
    }
    previousHandler = qInstallMessageHandler(take);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { show(); });
    m_timer.start(showEveryMilliseconds);
}

SearchProgress::~SearchProgress()
{
    qInstallMessageHandler(previousHandler);
    const std::lock_guard<std::mutex> lock(mutex);
    current = nullptr;
}

void SearchProgress::take(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    bool passOn = true;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (current != nullptr) {
            passOn = current->m_passOn;
            if (type == QtDebugMsg && std::strcmp(context.category, "printers") == 0)
                current->takeLine(text);
        }
    }
    if (passOn && previousHandler != nullptr)
        previousHandler(type, context, text);
}

// Lines look like "ttyS0 57600 10 from 63"; the AV-268 has no list, and its line is the port alone.
void SearchProgress::takeLine(const QString &text)
{
    static const QRegularExpression entryLine(
        QStringLiteral("\\A(\\S+) (\\d+) (\\d+) from (\\d+)\\z"));
    const QRegularExpressionMatch match = entryLine.match(text);
    const QString name = match.hasMatch() ? match.captured(1) : text;
    if (!match.hasMatch() && !m_ports.contains(name) && !m_confirmedKinds.contains(name))
        return;
    Port &port = m_ports[name];
    const int entry = match.captured(3).toInt();
    port.entries = match.captured(4).toInt();
    port.probe = nextProbe(port, entry);
    port.entry = entry;
    port.baudRate = match.captured(2);
    port.kind = m_confirmedKinds.isEmpty()
                    ? kindOf(port.probe)
                    : m_confirmedKinds.value(name).join(QStringLiteral(" or "));
}

/// Which family of printers a search is at: the count starting again means the next one.
int SearchProgress::nextProbe(const Port &port, int entry)
{
    if (port.entries == 0)
        return av268Probe;
    if (port.entries == starEntries && port.probe <= starProbe)
        return starProbe;
    if (port.probe == av268Probe)
        return lastProbe;
    if (entry <= port.entry || port.probe < 0)
        return qMin(port.probe + 1, lastProbe);
    return port.probe;
}

void SearchProgress::show()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (m_isTerminal) {
        showInPlace();
        return;
    }
    for (auto port = m_ports.begin(); port != m_ports.end(); ++port) {
        if (port->kind != port->shownKind)
            terminaltext::writeLine(stderr, port->toString(port.key()));
        port->shownKind = port->kind;
    }
}

void SearchProgress::showInPlace()
{
    if (m_linesDrawn > 0)
        std::fprintf(stderr, "\x1B[%dA", m_linesDrawn);
    for (auto port = m_ports.cbegin(); port != m_ports.cend(); ++port)
        terminaltext::writeRaw(
            stderr, QStringLiteral("\r\x1B[K") + terminaltext::shown(port->toString(port.key())));
    m_linesDrawn = m_ports.size();
}
