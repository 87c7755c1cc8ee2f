#pragma once

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QByteArray>
#include <QSerialPort>
#include <QString>
#include <chrono>
#include <thread>

/// A terminal that a program can be started on, and that keeps what the program writes as it comes.
class PseudoTerminal
{
public:
    PseudoTerminal() : m_ours(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_ours < 0 || ::grantpt(m_ours) != 0 || ::unlockpt(m_ours) != 0)
            return;
        m_path = QString::fromLocal8Bit(::ptsname(m_ours));
        m_programs = ::open(::ptsname(m_ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
        waitUntilUnlocked();
        termios settings{};
        ::tcgetattr(m_programs, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(m_programs, TCSANOW, &settings);
    }
    ~PseudoTerminal() { hangUp(); }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    const QString &path() const { return m_path; }

    /// All that has been written and not been read yet.
    QByteArray read()
    {
        QByteArray bytes;
        pollfd waiting{m_ours, POLLIN, 0};
        while (::poll(&waiting, 1, 0) > 0) {
            char piece[4096];
            const ssize_t count = ::read(m_ours, piece, sizeof piece);
            if (count <= 0)
                break;
            bytes.append(piece, static_cast<int>(count));
        }
        return bytes;
    }

    /// What the other end of the line says to the program.
    void write(const QByteArray &bytes)
    {
        if (::write(m_ours, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
            qFatal("the terminal takes nothing");
    }

    /// Waits until a program could read what was written.
    bool hasForPrograms() const
    {
        constexpr int patience = 30000;
        pollfd waiting{m_programs, POLLIN, 0};
        return ::poll(&waiting, 1, patience) > 0;
    }

    /// How the program has set the line.
    termios settings() const
    {
        termios settings{};
        ::tcgetattr(m_programs, &settings);
        return settings;
    }

    /// As if the cable were pulled out.
    void hangUp()
    {
        if (m_ours < 0)
            return;
        ::close(m_programs);
        ::close(m_ours);
        m_ours = -1;
    }

private:
    /// The test that had the last terminal of this name may have closed its port, and not have
    /// unlocked it yet.
    void waitUntilUnlocked() const
    {
        QSerialPort port(m_path);
        const auto isOpen = [&port] { return port.open(QIODevice::ReadWrite); };
        for (int tries = 0; tries < 10000 && !isOpen(); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    int m_ours;
    int m_programs = -1;
    QString m_path;
};
