#include "programstart.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QTextCodec>
#include <cstdio>
#include <cstdlib>

namespace programstart {

namespace {

constexpr int refused = 2;
constexpr char firstPrintable = ' ';
constexpr char lastPrintable = '~';

/// Bytes that are no text, for a message: what isn't printable ASCII as "\xff".
QString shownBytes(const char *bytes)
{
    QString text;
    for (const char *byte = bytes; *byte != '\0'; ++byte) {
        if (*byte >= firstPrintable && *byte <= lastPrintable)
            text.append(QLatin1Char(*byte));
        else
            text.append(
                QStringLiteral("\\x%1").arg(static_cast<uchar>(*byte), 2, 16, QLatin1Char('0')));
    }
    return text;
}

void openClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free descriptor is this one. It can't be used the way a program uses it.
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

const char *refusalOf(const Rights &rights)
{
    if (rights.user != rights.effectiveUser)
        return "this program must not run setuid, with the rights of another user";
    if (rights.group != rights.effectiveGroup)
        return "this program must not run setgid, with the rights of another group";
    return nullptr;
}

void begin(const char *program)
{
    openClosedStreams();
    const char *refusal = refusalOf({::getuid(), ::geteuid(), ::getgid(), ::getegid()});
    if (refusal == nullptr)
        return;
    std::fprintf(stderr, "%s: %s\n", program, refusal);
    std::exit(refused);
}

QString refusalOfArguments(int count, const char *const *arguments)
{
    for (int index = 1; index < count; ++index) {
        const char *argument = arguments[index];
        if (QString::fromLocal8Bit(argument).toLocal8Bit() != argument)
            return QStringLiteral("the argument \"%1\" isn't %2, so it can't name a file")
                .arg(shownBytes(argument),
                     QString::fromLatin1(QTextCodec::codecForLocale()->name()));
    }
    return QString();
}

}  // namespace programstart
