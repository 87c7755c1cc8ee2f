#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>

namespace tool {

/// A recording of a session with a printer, as a virtual printer replays it. Each line is in the
/// file, and whole, when the call returns, so that whatever ends the program leaves a recording.
class SessionFile
{
public:
    /// @param replaces whether a file that is there may be lost
    SessionFile(const QString &fileName, bool replaces);
    ~SessionFile();
    SessionFile(const SessionFile &) = delete;
    SessionFile &operator=(const SessionFile &) = delete;

    /// Whether begin() wouldn't fail for a file that is there.
    bool mayBegin();
    /// Makes the file, and one line that is none of the session. The time counts from here.
    bool begin(const QString &heading);
    bool hasBegun() const { return m_descriptor >= 0; }
    /// Adds bytes that one side has sent now.
    bool add(bool fromPrinter, const QByteArray &bytes);
    /// Adds a line that is none of the session.
    bool remark(const QString &text);

    /// What went wrong, with the file's name; empty if nothing did. Nothing is added then any more.
    QString fault() const { return m_fault; }
    qint64 bytesOfHost() const { return m_bytesOfHost; }
    qint64 bytesOfPrinter() const { return m_bytesOfPrinter; }

private:
    bool writeLine(const QString &line);
    bool fail();
    bool failAsThere();

    const QString m_fileName;
    const bool m_replaces;
    QString m_fault;
    int m_descriptor = -1;
    qint64 m_size = 0;  ///< of what is whole
    QElapsedTimer m_clock;
    qint64 m_bytesOfHost = 0;
    qint64 m_bytesOfPrinter = 0;
};

}  // namespace tool
