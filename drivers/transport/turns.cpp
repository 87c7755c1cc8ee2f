#include "transport/turns_p.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

namespace printerslib::drivers {

namespace {

constexpr off_t mutex = 0;        // the byte that is held while a ticket is chosen
constexpr off_t firstTicket = 1;  // and those of the queue
constexpr off_t endOfFile = 0;    // as fcntl() counts lengths
constexpr mode_t modeForAll = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
constexpr int attemptsToOpen = 10;

struct flock bytesOf(off_t start, off_t length, short type)
{
    struct flock range = {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = start;
    range.l_len = length;
    return range;
}

}  // namespace

Turns::Turns(const QString &path) : m_path(path) {}

Turns::~Turns()
{
    close();
}

void Turns::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_ticket = 0;
}

bool Turns::fail(const QString &what)
{
    m_fault = QStringLiteral("%1: %2").arg(m_path, what);
    close();
    return false;
}

// What another user made isn't opened with O_CREAT: in a folder of all users, systems refuse that.
bool Turns::open()
{
    const QByteArray name = QFile::encodeName(m_path);
    const int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    for (int i = 0; m_descriptor < 0 && i < attemptsToOpen; ++i) {
        m_descriptor = ::open(name.constData(), flags);
        if (m_descriptor >= 0 || errno != ENOENT)
            break;
        m_descriptor = ::open(name.constData(), flags | O_CREAT | O_EXCL, modeForAll);
        if (m_descriptor >= 0)
            ::fchmod(m_descriptor, modeForAll);
        else if (errno != EEXIST)
            break;
    }
    struct stat status = {};
    if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0)
        return fail(qt_error_string(errno));
    return S_ISREG(status.st_mode) || fail(QStringLiteral("this is no file"));
}

bool Turns::lockByte(off_t byte, short type)
{
    struct flock range = bytesOf(byte, 1, type);
    return ::fcntl(m_descriptor, F_OFD_SETLK, &range) == 0;
}

/// A byte between the two that somebody else holds, not always the first; -1 if there is none.
off_t Turns::lockedFrom(off_t start, off_t end, off_t &behind) const
{
    if (end != endOfFile && end <= start)
        return -1;
    const off_t length = end == endOfFile ? endOfFile : end - start;
    struct flock range = bytesOf(start, length, F_WRLCK);
    if (::fcntl(m_descriptor, F_OFD_GETLK, &range) != 0 || range.l_type == F_UNLCK)
        return -1;
    behind = range.l_len == 0 ? endOfFile : range.l_start + range.l_len;
    return range.l_start;
}

off_t Turns::greatestTicket() const
{
    off_t greatest = 0;
    off_t behind = firstTicket;
    for (off_t ticket = lockedFrom(behind, endOfFile, behind); ticket >= 0;
         ticket = lockedFrom(behind, endOfFile, behind)) {
        greatest = ticket;
        if (behind == endOfFile)
            break;
    }
    return greatest;
}

int Turns::countTickets(off_t start, off_t end) const
{
    off_t behind = 0;
    const off_t ticket = lockedFrom(start, end, behind);
    if (ticket < 0)
        return 0;
    const int behindIt = behind == endOfFile ? 0 : countTickets(behind, end);
    return countTickets(start, ticket) + 1 + behindIt;
}

/// False if another one is choosing its own just now.
bool Turns::takeTicket()
{
    if (!lockByte(mutex, F_WRLCK))
        return false;
    const off_t ticket = greatestTicket() + 1;
    const bool isTaken = lockByte(ticket, F_WRLCK);
    lockByte(mutex, F_UNLCK);
    if (isTaken)
        m_ticket = ticket;
    return isTaken;
}

/// Whether the name still leads to the file whose lock was taken.
bool Turns::isStillThere() const
{
    struct stat held = {};
    struct stat named = {};
    return ::fstat(m_descriptor, &held) == 0 &&
           ::lstat(QFile::encodeName(m_path).constData(), &named) == 0 &&
           held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

Turns::Outcome Turns::attempt()
{
    if (m_descriptor >= 0 && !isStillThere())
        close();
    if (m_descriptor < 0 && !open())
        return Outcome::Failed;
    if (m_ticket == 0 && !takeTicket()) {
        m_ahead = qMax(1, m_ahead);
        return Outcome::Waiting;
    }
    m_ahead = countTickets(firstTicket, m_ticket);
    if (m_ahead == 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return Outcome::Taken;
    m_ahead = qMax(1, m_ahead);
    return Outcome::Waiting;
}

}  // namespace printerslib::drivers
