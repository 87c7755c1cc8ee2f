#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "interrupt.h"

namespace tool {

/// Lines that somebody types, or that come on standard input from elsewhere. A wait for one ends by
/// an interrupt.
class AnswerInput
{
public:
    /// Shows what is asked on standard error, and waits for a line. Nothing at the end of the
    /// input, and behind an interrupt.
    std::optional<QString> ask(const QString &prompt);
    bool isInterrupted() const { return m_interrupt.hasCome(); }

private:
    bool readMore();

    const Interrupt m_interrupt;
    QByteArray m_read;
    bool m_isAtEnd = false;
};

}  // namespace tool
