#include "job/answerreader_p.h"

namespace printerslib::drivers {

namespace {

constexpr char acknowledged = 0x06;
constexpr char refused = 0x15;
constexpr int sensorBytes = 2;

/// Swecoin's answers have no fixed bits, so they are taken in the order of the questions. That of
/// ESC ENQ 1 begins by ACK or NAK, behind which the two bytes of ESC ENQ 6 are found.
class SwecoinAnswerReader : public AnswerReader
{
public:
    void take(char byte, DueQuestions &due) override
    {
        const StatusQuestion *const question = due.oldest([](StatusQuestion) { return true; });
        if (question == nullptr) {
            drop();
            stray();
        } else if (*question == StatusQuestion::StatusCode) {
            takeOfCode(byte, due);
        } else {
            takeOfSensors(byte, due);
        }
    }

private:
    void takeOfCode(char byte, DueQuestions &due)
    {
        if (m_held.isEmpty() && byte != acknowledged && byte != refused) {
            stray();
            return;
        }
        m_held.append(byte);
        if (m_held.size() == 2 || byte == acknowledged)
            finish(StatusQuestion::StatusCode, due);
    }

    void takeOfSensors(char byte, DueQuestions &due)
    {
        m_held.append(byte);
        if (m_held.size() == sensorBytes)
            finish(StatusQuestion::Sensors, due);
    }

    void finish(StatusQuestion question, DueQuestions &due)
    {
        answer(question, m_held, due);
        m_held.clear();
    }
};

}  // namespace

std::unique_ptr<AnswerReader> makeSwecoinAnswerReader()
{
    return std::make_unique<SwecoinAnswerReader>();
}

}  // namespace printerslib::drivers
