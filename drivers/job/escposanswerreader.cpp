#include "job/answerreader_p.h"

namespace printerslib::drivers {

namespace {

constexpr quint8 fullStatusSecond = 0x0F;
constexpr char responseHeader = 0x37;
constexpr char responseIdentifier = 0x22;
constexpr char textHeader = 0x5F;
constexpr int automaticSize = 4;
constexpr int fullStatusSize = 6;
constexpr int responseSize = 7;  // header, identifier, four bytes, NUL
/// Texts of GS I have up to 80 bytes, lists of keys a few more.
constexpr int longestText = 96;

/// Bits that the manuals fix, and what they are.
struct FixedBits
{
    quint8 mask;
    quint8 value;

    constexpr bool match(quint8 byte) const { return (byte & mask) == value; }
};

constexpr FixedBits realTime = {0x93, 0x12};        // 0**1**10
constexpr FixedBits customRealTime = {0x13, 0x12};  // ***1**10: the uppermost is a key's
constexpr FixedBits automaticFirst = {0x93, 0x10};  // 0**1**00
constexpr FixedBits laterByte = {0x90, 0x00};       // 0**0****: the rest of it, GS r, GS I

bool isRealTime(StatusQuestion question)
{
    return question <= StatusQuestion::MoreErrorDetails;
}

bool isOfText(quint8 byte)
{
    return byte >= 0x20 && byte < 0x80;
}

/// ESC/POS. An answer of DLE EOT inside an automatic status is told by its bits, as XON and XOFF
/// are. Where an automatic status lacks a byte, the next byte of this form is taken for it: an
/// answer of GS r may be lost so, but none is made up. A broken text is thrown away whole for this
/// reason.
class EscPosAnswerReader : public AnswerReader
{
public:
    explicit EscPosAnswerReader(const PrinterProfile &profile)
        : m_realTime(profile.vendor() == Vendor::Custom ? customRealTime : realTime)
    {}

    void take(char byte, DueQuestions &due) override
    {
        switch (m_kind) {
            case Kind::FullStatus:
                takeOfFullStatus(byte, due);
                return;
            case Kind::Text:
                takeOfText(byte, due);
                return;
            case Kind::Automatic:
            case Kind::None:
                takeOther(byte, due);
        }
    }

    void drop() override
    {
        AnswerReader::drop();
        m_kind = Kind::None;
    }

private:
    enum class Kind : quint8 { None, Automatic, FullStatus, Text };

    void begin(Kind kind, char byte)
    {
        drop();
        m_kind = kind;
        m_held.append(byte);
    }

    void finish(StatusQuestion question, DueQuestions &due, const QByteArray &id = QByteArray())
    {
        answer(question, m_held, due, id);
        m_held.clear();
        m_kind = Kind::None;
    }

    void takeOfFullStatus(char byte, DueQuestions &due)
    {
        m_held.append(byte);
        if (m_held.size() == fullStatusSize)
            finish(StatusQuestion::FullStatus, due);
    }

    void takeOfText(char byte, DueQuestions &due)
    {
        const auto value = static_cast<quint8>(byte);
        if (isFlowControl(value))
            return;
        if (byte == '\0') {
            m_held.append(byte);
            finishText(due);
        } else if (isOfText(value) && m_held.size() < longestText) {
            m_held.append(byte);
        } else {
            drop();
            takeOther(byte, due);
        }
    }

    void finishText(DueQuestions &due)
    {
        if (m_held.size() == responseSize && m_held.at(0) == responseHeader &&
            m_held.at(1) == responseIdentifier)
            finish(StatusQuestion::Response, due, m_held.mid(2, 4));
        else
            finish(StatusQuestion::Text, due);
    }

    /// What is no part of a text or of a full status.
    void takeOther(char byte, DueQuestions &due)
    {
        const auto value = static_cast<quint8>(byte);
        if (isFlowControl(value))
            return;
        if (m_realTime.match(value))
            takeRealTime(byte, due);
        else if (automaticFirst.match(value))
            begin(Kind::Automatic, byte);
        else if (byte == responseHeader || byte == textHeader)
            begin(Kind::Text, byte);
        else if (laterByte.match(value))
            takeLater(byte, due);
        else
            stray();
    }

    void takeRealTime(char byte, DueQuestions &due)
    {
        const StatusQuestion *const question = due.oldest(isRealTime);
        if (question == nullptr)
            stray();
        else
            answer(*question, QByteArray(1, byte), due);
    }

    void takeLater(char byte, DueQuestions &due)
    {
        if (m_kind == Kind::Automatic) {
            m_held.append(byte);
            if (m_held.size() == automaticSize)
                finish(StatusQuestion::Automatic, due);
            else if (m_held == fullStatusBegin() && due.has(StatusQuestion::FullStatus))
                m_kind = Kind::FullStatus;
        } else if (due.has(StatusQuestion::BufferRead)) {
            answer(StatusQuestion::BufferRead, QByteArray(1, byte), due);
        } else {
            stray();
        }
    }

    static QByteArray fullStatusBegin()
    {
        return QByteArray(1, 0x10).append(char(fullStatusSecond));
    }

    const FixedBits m_realTime;
    Kind m_kind = Kind::None;
};

}  // namespace

std::unique_ptr<AnswerReader> makeEscPosAnswerReader(const PrinterProfile &profile)
{
    return std::make_unique<EscPosAnswerReader>(profile);
}

}  // namespace printerslib::drivers
