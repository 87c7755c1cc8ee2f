#include "job/answerreader_p.h"

namespace printerslib::drivers {

namespace {

constexpr unsigned int leastSize = 7;

bool isHeader(quint8 byte)
{
    return (byte & 0x91U) == 0x01;  // 0**0***1
}

/// The bytes of a status, the two of the header among them: bits 0 to 2 of the number stand in bits
/// 1 to 3, bits 3 and 4 in bits 5 and 6.
unsigned int sizeIn(quint8 header)
{
    return (header >> 1U & 0x07U) | (header >> 2U & 0x18U);
}

/// Star's automatic status. The first byte alone has the lowest bit, so the next one of these is
/// found behind anything. Of the second the uppermost says that there is more of it.
class StarAnswerReader : public AnswerReader
{
public:
    void take(char byte, DueQuestions &due) override
    {
        const auto value = static_cast<quint8>(byte);
        if (isFlowControl(value))
            return;
        if (isHeader(value) && sizeIn(value) >= leastSize) {
            drop();
            m_held.append(byte);
        } else if (!m_held.isEmpty() && canFollow(value)) {
            m_held.append(byte);
            finishWhole(due);
        } else {
            drop();
            stray();
        }
    }

private:
    bool canFollow(quint8 byte) const
    {
        const unsigned int fixed = m_held.size() == 1 ? 0x11U : 0x91U;
        return (byte & fixed) == 0;
    }

    void finishWhole(DueQuestions &due)
    {
        if (static_cast<unsigned int>(m_held.size()) < sizeIn(static_cast<quint8>(m_held.at(0))))
            return;
        answer(StatusQuestion::Automatic, m_held, due);
        m_held.clear();
    }
};

}  // namespace

std::unique_ptr<AnswerReader> makeStarAnswerReader()
{
    return std::make_unique<StarAnswerReader>();
}

}  // namespace printerslib::drivers
