#include "streamdestination.h"

#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "outputfile.h"
#include "printeroption.h"
#include "progressline.h"
#include "support.h"

namespace tool {

using printerslib::drivers::PrinterAddress;

namespace {

// What a slow line takes in a moment, so that the progress moves.
constexpr int writtenAtOnce = 512;

bool isSameDevice(int one, int other)
{
    struct stat status = {};
    struct stat otherStatus = {};
    return ::fstat(one, &status) == 0 && ::fstat(other, &otherStatus) == 0 &&
           status.st_rdev == otherStatus.st_rdev;
}

/// Whether it is the terminal that the user sits at, and no serial line.
bool isUsersTerminal()
{
    return ::tcgetpgrp(STDOUT_FILENO) >= 0 || isSameDevice(STDOUT_FILENO, STDIN_FILENO) ||
           isSameDevice(STDOUT_FILENO, STDERR_FILENO);
}

/// Whether a line sends other bytes than it is given, such as a carriage return with each line
/// feed.
bool changesBytes()
{
    termios line{};
    return ::tcgetattr(STDOUT_FILENO, &line) == 0 && (line.c_oflag & OPOST) != 0;
}

/// Writes what is taken at once. Below 0 on failure.
ssize_t writeSome(const char *bytes, std::size_t count)
{
    for (;;) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes, count);
        if (written >= 0 || (errno != EINTR && errno != EAGAIN))
            return written;
        pollfd output{STDOUT_FILENO, POLLOUT, 0};
        if (errno == EAGAIN)
            ::poll(&output, 1, -1);
    }
}

bool writeToStandardOutput(const QByteArray &bytes)
{
    ProgressLine line(QStringLiteral("sending"));
    for (int done = 0; done < bytes.size();) {
        const int count = std::min(writtenAtOnce, bytes.size() - done);
        const ssize_t written =
            writeSome(bytes.constData() + done, static_cast<std::size_t>(count));
        if (written < 0) {
            const QString reason = qt_error_string(errno);
            line.clear();
            complain(QStringLiteral("standard output: %1").arg(reason));
            return false;
        }
        done += static_cast<int>(written);
        line.show(done, bytes.size());
    }
    return true;
}

}  // namespace

StreamDestination::StreamDestination(const QString &fileName) : m_fileName(fileName) {}

StreamDestination::StreamDestination(const PrinterAddress &printer) : m_printer(printer) {}

bool StreamDestination::canTake() const
{
    if (isFile() || isPrinter() || ::isatty(STDOUT_FILENO) == 0)
        return true;
    if (isUsersTerminal()) {
        complain(
            QStringLiteral("standard output is a terminal, which would obey a printer's bytes; "
                           "lead it elsewhere, or name a file by --to file:PATH"));
        return false;
    }
    if (changesBytes()) {
        complain(QStringLiteral("standard output is a line that changes bytes; \"stty -F %1 raw\" "
                                "ends that")
                     .arg(QString::fromLocal8Bit(::ttyname(STDOUT_FILENO))));
        return false;
    }
    return true;
}

bool StreamDestination::take(const QByteArray &bytes) const
{
    return isFile() ? writeFile(m_fileName, bytes) : writeToStandardOutput(bytes);
}

QCommandLineOption destinationOption()
{
    return {QStringLiteral("to"),
            QStringLiteral("Where the bytes go: to a printer, serial:/dev/ttyS0?baud=19200, "
                           "device:/dev/usb/lp0, usb:VENDOR:PRODUCT or tcp:HOST:9100; file:PATH, a "
                           "file that is written whole or not at all; or -, standard output. "
                           "Default: the printer of --config."),
            QStringLiteral("DESTINATION")};
}

std::optional<StreamDestination> destinationOf(const QCommandLineParser &parser)
{
    if (parser.value(destinationOption()) == QLatin1String("-"))
        return StreamDestination();
    if (!parser.isSet(destinationOption())) {
        complain(QStringLiteral("--to is needed, or --dry-run"));
        return std::nullopt;
    }
    const auto address = printerAddressOf(parser, destinationOption());
    if (!address)
        return std::nullopt;
    return address->kind() == PrinterAddress::Kind::File ? StreamDestination(address->path())
                                                         : StreamDestination(*address);
}

}  // namespace tool
