#include "searchprogress.h"

#include <unistd.h>

#include <QRegularExpression>
#include <cstdio>
#include <cstring>
#include <mutex>

namespace {

constexpr int showEveryMilliseconds = 200;

// The order in which a search tries the families of printers.
constexpr const char *probes[] = {
    "Custom, Citizen, Epson", "Swecoin", "Star", "AV-268", "Citizen PPU-231",
};
constexpr int starProbe = 2;
constexpr int av268Probe = 3;
constexpr int lastProbe = 4;
// Only the walk over the line settings of Star printers has this length.
constexpr int starEntries = 24;

// Log lines come from the threads of the search.
std::mutex mutex;
SearchProgress *current = nullptr;
QtMessageHandler previousHandler = nullptr;

void writeLine(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

}  // namespace

QString SearchProgress::Port::toString(const QString &name) const
{
    const QString kind = QString::fromLatin1(probes[probe]);
    if (probe == av268Probe)
        return QStringLiteral("%1: %2, 115200 baud").arg(name, kind);
    return QStringLiteral("%1: line setting %2 of %3, %4, %5 baud")
        .arg(name)
        .arg(entry)
        .arg(entries)
        .arg(kind, baudRate);
}

SearchProgress::SearchProgress(bool passOn)
    : m_isTerminal(::isatty(STDERR_FILENO) != 0), m_passOn(passOn)
{
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
// The count starting again means the next family of printers.
void SearchProgress::takeLine(const QString &text)
{
    static const QRegularExpression entryLine(
        QStringLiteral("\\A(\\S+) (\\d+) (\\d+) from (\\d+)\\z"));
    const QRegularExpressionMatch match = entryLine.match(text);
    if (!match.hasMatch()) {
        const auto port = m_ports.find(text);
        if (port != m_ports.end())
            port->probe = av268Probe;
        return;
    }
    Port &port = m_ports[match.captured(1)];
    const int entry = match.captured(3).toInt();
    port.entries = match.captured(4).toInt();
    if (port.entries == starEntries && port.probe <= starProbe)
        port.probe = starProbe;
    else if (port.probe == av268Probe)
        port.probe = lastProbe;
    else if (entry <= port.entry || port.probe < 0)
        port.probe = qMin(port.probe + 1, lastProbe);
    port.entry = entry;
    port.baudRate = match.captured(2);
}

void SearchProgress::show()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (m_isTerminal) {
        showInPlace();
        return;
    }
    for (auto port = m_ports.begin(); port != m_ports.end(); ++port) {
        if (port->probe != port->shownProbe)
            writeLine(port->toString(port.key()));
        port->shownProbe = port->probe;
    }
}

void SearchProgress::showInPlace()
{
    if (m_linesDrawn > 0)
        std::fprintf(stderr, "\x1B[%dA", m_linesDrawn);
    for (auto port = m_ports.cbegin(); port != m_ports.cend(); ++port)
        writeLine(QStringLiteral("\r\x1B[K") + port->toString(port.key()));
    m_linesDrawn = m_ports.size();
}
