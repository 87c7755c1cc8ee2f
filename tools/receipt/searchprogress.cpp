#include "searchprogress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <utility>

#include "terminaltext.h"

namespace {

constexpr int showEveryMilliseconds = 200;
constexpr int percent = 100;
constexpr int second = 1000;  // in milliseconds
// The line below the last one, in which the cursor stands.
constexpr int cursorLine = 1;

/// A port as short as the library's log names it: "ttyS0" for "/dev/ttyS0".
QString shortName(const QString &portName)
{
    const QString devices = QStringLiteral("/dev/");
    return portName.startsWith(devices) ? portName.mid(devices.size()) : portName;
}

QString portLine(const PortProgress &port)
{
    return QStringLiteral("%1: %2").arg(shortName(port.name), port.plan.toString());
}

/// The columns that a character takes: two if the locale doesn't know it.
int columnsOf(uint character)
{
    const int columns = ::wcwidth(static_cast<wchar_t>(character));
    return columns < 0 ? 2 : columns;
}

/// As much of a line's start as has room in so many columns.
QString fitting(const QString &line, int columns)
{
    QVector<uint> characters = line.toUcs4();
    int count = 0;
    while (count < characters.size() && columnsOf(characters.at(count)) <= columns)
        columns -= columnsOf(characters.at(count++));
    characters.resize(count);
    return QString::fromUcs4(characters.constData(), count);
}

/// The ports are searched at once: the whole takes as long as the longest of them.
QString wholeLine(const QList<PortProgress> &ports)
{
    int whole = 0;
    int rest = 0;
    for (const PortProgress &port : ports) {
        whole = std::max(whole, port.plan.wholeTime());
        rest = std::max(rest, port.plan.restTime());
    }
    const int done =
        whole == 0 ? percent : static_cast<int>(qint64(whole - rest) * percent / whole);
    return QStringLiteral("%1 %, %2 s left").arg(done).arg((rest + second - 1) / second);
}

}  // namespace

QStringList searchProgressLines(const QList<PortProgress> &ports, int height, int width)
{
    QStringList lines(wholeLine(ports));
    for (const PortProgress &port : ports)
        lines.append(portLine(port));
    const int room = height <= 0 ? lines.size() : std::max(1, height - cursorLine);
    if (lines.size() > room) {
        const int hidden = lines.size() - room + 1;
        lines = lines.mid(0, room - 1);
        if (room > 1)
            lines.append(QStringLiteral("and %1 more").arg(hidden));
        else
            lines.append(wholeLine(ports));
    }
    for (QString &line : lines) {
        line = terminaltext::shown(line);
        // A line of the full width would wrap, and be two.
        if (width > 0)
            line = fitting(line, std::max(1, width - 1));
    }
    return lines;
}

SearchProgress::SearchProgress(std::function<QList<PortProgress>()> progress, bool inPlace)
    : m_progress(std::move(progress)), m_inPlace(inPlace && ::isatty(STDERR_FILENO) != 0)
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { show(); });
    m_timer.start(showEveryMilliseconds);
    show();
}

SearchProgress::~SearchProgress()
{
    clear();
}

void SearchProgress::show()
{
    const QList<PortProgress> ports = m_progress();
    if (m_inPlace)
        showInPlace(ports);
    else
        showChanges(ports);
}

void SearchProgress::showChanges(const QList<PortProgress> &ports)
{
    for (const PortProgress &port : ports) {
        QString &shown = m_shownKinds[port.name];
        if (!port.plan.kind().isEmpty() && port.plan.kind() != shown)
            terminaltext::writeLine(stderr, portLine(port));
        shown = port.plan.kind();
    }
}

void SearchProgress::showInPlace(const QList<PortProgress> &ports)
{
    winsize size = {};
    ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size);
    clear();
    const QStringList lines = searchProgressLines(ports, size.ws_row, size.ws_col);
    for (const QString &line : lines)
        terminaltext::writeRaw(stderr, line);
    m_linesDrawn = lines.size();
}

void SearchProgress::clear()
{
    if (m_linesDrawn > 0)
        std::fprintf(stderr, "\x1B[%dA\r\x1B[J", m_linesDrawn);
    m_linesDrawn = 0;
}
