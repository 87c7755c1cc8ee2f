#include "sessionfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

#include "outputfile.h"
#include "recording.h"

namespace tool {

SessionFile::SessionFile(const QString &fileName, bool replaces)
    : m_fileName(fileName), m_replaces(replaces)
{}

SessionFile::~SessionFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool SessionFile::mayBegin()
{
    return m_replaces || !QFile::exists(m_fileName) || failAsThere();
}

bool SessionFile::begin(const QString &heading)
{
    constexpr mode_t mode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    m_descriptor = ::open(QFile::encodeName(m_fileName).constData(),
                          O_WRONLY | O_CREAT | O_CLOEXEC | (m_replaces ? O_TRUNC : O_EXCL), mode);
    m_clock.start();
    if (m_descriptor >= 0)
        return remark(heading);
    return errno == EEXIST ? failAsThere() : fail();
}

bool SessionFile::failAsThere()
{
    m_fault = isThereText(m_fileName);
    return false;
}

bool SessionFile::fail()
{
    m_fault = QStringLiteral("%1: %2").arg(m_fileName, qt_error_string(errno));
    return false;
}

bool SessionFile::add(bool fromPrinter, const QByteArray &bytes)
{
    constexpr qint64 nanosecondsOfMicrosecond = 1000;
    RecordedPiece piece;
    piece.microseconds = m_clock.nsecsElapsed() / nanosecondsOfMicrosecond;
    piece.fromPrinter = fromPrinter;
    piece.bytes = bytes;
    (fromPrinter ? m_bytesOfPrinter : m_bytesOfHost) += bytes.size();
    return writeLine(piece.toString());
}

bool SessionFile::remark(const QString &text)
{
    // One line, whatever somebody's text holds.
    return writeLine(QStringLiteral("# ") + text.simplified());
}

/// What isn't written whole, as on a full disk, is taken back.
bool SessionFile::writeLine(const QString &line)
{
    if (!m_fault.isEmpty())
        return false;
    const QByteArray bytes = line.toUtf8() + '\n';
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(m_descriptor, bytes.constData() + done,
                                      static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            fail();
            const int result = ::ftruncate(m_descriptor, m_size);
            Q_UNUSED(result)
            return false;
        }
        done += count;
    }
    m_size += done;
    return true;
}

}  // namespace tool
