#pragma once

#include <memory>

#include "job/duequestions_p.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// Finds the answers in a dialect's bytes, one byte after the other. It doesn't look at what they
/// say.
class AnswerReader
{
public:
    static std::unique_ptr<AnswerReader> make(const PrinterProfile &profile);
    virtual ~AnswerReader() = default;
    AnswerReader(const AnswerReader &) = delete;
    AnswerReader &operator=(const AnswerReader &) = delete;

    /// Takes a byte. Answers that are whole by it are in answers(), no longer among the due.
    virtual void take(char byte, DueQuestions &due) = 0;
    /// Throws away what isn't whole.
    virtual void drop();

    QVector<StatusAnswer> takeAnswers();
    qint64 strayBytes() const { return m_strayBytes; }

protected:
    AnswerReader() = default;
    /// XON and XOFF, which come between any two bytes.
    static bool isFlowControl(quint8 byte) { return byte == 0x11 || byte == 0x13; }
    void answer(StatusQuestion question, const QByteArray &bytes, DueQuestions &due,
                const QByteArray &id = QByteArray());
    void stray(int count = 1) { m_strayBytes += count; }

    QByteArray m_held;  ///< the answer that isn't whole yet

private:
    QVector<StatusAnswer> m_answers;
    qint64 m_strayBytes = 0;
};

std::unique_ptr<AnswerReader> makeEscPosAnswerReader(const PrinterProfile &profile);
std::unique_ptr<AnswerReader> makeStarAnswerReader();
std::unique_ptr<AnswerReader> makeSwecoinAnswerReader();

}  // namespace printerslib::drivers
