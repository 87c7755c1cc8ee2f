#include "printerslib/drivers/statusdialogue.h"

#include <QMap>
#include <algorithm>

#include "encoder/commandbytes_p.h"
#include "job/answerreader_p.h"
#include "job/statusbits_p.h"

namespace printerslib::drivers {

namespace {

constexpr int idSize = 4;

/// The command of a question.
struct QuestionRow
{
    Dialect dialect;
    StatusQuestion question;
    CommandId command;
    int number;  ///< its n; -1: it has none
    Vendor vendor = Vendor::General;
};

/// What the printer tells by itself: that it goes off line, errors, paper; not the drawer.
constexpr int automaticOn = 0x0E;

constexpr QuestionRow questionRows[] = {
    {Dialect::EscPos, StatusQuestion::Printer, CommandId::RealTimeStatus, 1},
    {Dialect::EscPos, StatusQuestion::OffLineCause, CommandId::RealTimeStatus, 2},
    {Dialect::EscPos, StatusQuestion::Errors, CommandId::RealTimeStatus, 3},
    {Dialect::EscPos, StatusQuestion::Paper, CommandId::RealTimeStatus, 4},
    {Dialect::EscPos, StatusQuestion::ErrorDetails, CommandId::RealTimeStatus, 5, Vendor::Citizen},
    {Dialect::EscPos, StatusQuestion::MoreErrorDetails, CommandId::RealTimeStatus, 6,
     Vendor::Citizen},
    {Dialect::EscPos, StatusQuestion::FullStatus, CommandId::RealTimeStatus, 20, Vendor::Custom},
    {Dialect::EscPos, StatusQuestion::BufferRead, CommandId::TransmitStatus, 1},
    {Dialect::EscPos, StatusQuestion::Automatic, CommandId::AutomaticStatus, automaticOn},
    {Dialect::StarLine, StatusQuestion::Automatic, CommandId::RealTimeStatus, -1},
    {Dialect::Swecoin, StatusQuestion::StatusCode, CommandId::StatusRequest, 1},
    {Dialect::Swecoin, StatusQuestion::Sensors, CommandId::StatusRequest, 6},
};

const QuestionRow *rowOf(StatusQuestion question, const PrinterProfile &profile)
{
    const auto *const row =
        std::find_if(std::begin(questionRows), std::end(questionRows), [&](const QuestionRow &r) {
            return r.question == question && r.dialect == profile.dialect() &&
                   (r.vendor == Vendor::General || r.vendor == profile.vendor());
        });
    return row == std::end(questionRows) ? nullptr : row;
}

/// What makes up the whole status. That of Swecoin whose answer has a mark goes first.
QVector<StatusQuestion> wholeStatus(Dialect dialect)
{
    switch (dialect) {
        case Dialect::StarLine:
            return {StatusQuestion::Automatic};
        case Dialect::Swecoin:
            return {StatusQuestion::StatusCode, StatusQuestion::Sensors};
        case Dialect::EscPos:
            break;
    }
    return {StatusQuestion::Printer, StatusQuestion::OffLineCause, StatusQuestion::Errors,
            StatusQuestion::Paper};
}

bool isResponseId(const QByteArray &id)
{
    return id.size() == idSize && std::all_of(id.begin(), id.end(), [](char byte) {
               return byte >= 0x20 && byte <= 0x7E;
           });
}

/// The bytes of an answer that a native status has: without a header, the codes of Swecoin bare.
QByteArray nativeBytes(StatusQuestion question, const QByteArray &bytes, Dialect dialect)
{
    if (question == StatusQuestion::StatusCode)
        return bytes.size() < 2 ? QByteArray(1, '\0') : bytes.mid(1);
    return question == StatusQuestion::Automatic && dialect == Dialect::StarLine ? bytes.mid(2)
                                                                                 : bytes;
}

}  // namespace

class StatusDialogue::State
{
public:
    explicit State(const PrinterProfile &printer)
        : profile(printer),
          whole(wholeStatus(printer.dialect())),
          reader(AnswerReader::make(printer))
    {}

    void takeIn(StatusAnswer &answer);
    void forgetAnswer(StatusQuestion question);
    PrinterStatus combined() const;

    const PrinterProfile profile;
    const QVector<StatusQuestion> whole;
    std::unique_ptr<AnswerReader> reader;
    DueQuestions due;

private:
    struct Told
    {
        PrinterStatus::Flags flags;
        QByteArray native;
    };
    bool isWhole() const;
    void keep(const StatusAnswer &answer);

    QMap<StatusQuestion, Told> m_told;
};

void StatusDialogue::State::takeIn(StatusAnswer &answer)
{
    answer.flags = flagsOfAnswer(answer.question, answer.bytes, profile);
    if (profile.dialect() == Dialect::StarLine)
        answer.counter = etbCounterOf(answer.bytes);
    if (answer.question != StatusQuestion::Text && answer.question != StatusQuestion::Response &&
        answer.question != StatusQuestion::BufferRead)
        keep(answer);
}

/// An automatic status says all anew. Other answers make up the whole together; what they tell
/// counts no more where it was told by something else.
void StatusDialogue::State::keep(const StatusAnswer &answer)
{
    if (answer.question == StatusQuestion::Automatic)
        m_told.clear();
    const PrinterStatus::Flags told = flagsToldBy(answer.question, profile);
    for (auto other = m_told.begin(); other != m_told.end(); ++other) {
        if (!whole.contains(other.key()))
            other->flags &= ~told;
    }
    m_told.insert(answer.question,
                  {answer.flags, nativeBytes(answer.question, answer.bytes, profile.dialect())});
}

void StatusDialogue::State::forgetAnswer(StatusQuestion question)
{
    m_told.remove(question);
}

bool StatusDialogue::State::isWhole() const
{
    return m_told.contains(StatusQuestion::Automatic) ||
           std::all_of(whole.begin(), whole.end(),
                       [this](StatusQuestion question) { return m_told.contains(question); });
}

PrinterStatus StatusDialogue::State::combined() const
{
    PrinterStatus::Flags flags;
    QByteArray native;
    for (const Told &told : m_told)
        flags |= told.flags;
    for (const StatusQuestion question : whole)
        native += m_told.value(question).native;
    if (native.isEmpty())
        native = m_told.value(StatusQuestion::Automatic).native;
    return PrinterStatus(flags, native, isWhole());
}

StatusDialogue::StatusDialogue(const PrinterProfile &profile) : d(new State(profile)) {}

StatusDialogue::~StatusDialogue() = default;

bool StatusDialogue::has(StatusQuestion question) const
{
    return rowOf(question, d->profile) != nullptr ||
           (question == StatusQuestion::Response && d->profile.dialect() == Dialect::EscPos);
}

QByteArray StatusDialogue::ask(StatusQuestion question)
{
    const QuestionRow *const row = rowOf(question, d->profile);
    QByteArray bytes;
    if (row == nullptr)
        return bytes;
    CommandBytes commands(d->profile, bytes);
    if (row->number < 0)
        commands.put(row->command);
    else if (row->dialect == Dialect::EscPos && row->command == CommandId::RealTimeStatus)
        commands.putChosen(row->command, row->number);
    else
        commands.put(row->command, row->number);
    d->due.add(question);
    return bytes;
}

QByteArray StatusDialogue::askStatus()
{
    QByteArray bytes;
    for (const StatusQuestion question : d->whole) {
        if (!d->due.has(question))
            bytes += ask(question);
    }
    return bytes;
}

QByteArray StatusDialogue::askResponse(const QByteArray &id)
{
    QByteArray bytes;
    if (!has(StatusQuestion::Response) || !isResponseId(id))
        return bytes;
    constexpr int counted = 6;  // the function, its number, and the id
    CommandBytes(d->profile, bytes)
        .putChosen(CommandId::RequestResponse, '0', counted, 0, id.at(0), id.at(1), id.at(2),
                   id.at(3));
    d->due.add(StatusQuestion::Response, id);
    return bytes;
}

QByteArray StatusDialogue::automaticOff() const
{
    QByteArray bytes;
    if (d->profile.dialect() == Dialect::EscPos)
        CommandBytes(d->profile, bytes).put(CommandId::AutomaticStatus, 0);
    return bytes;
}

QVector<StatusAnswer> StatusDialogue::read(const QByteArray &bytes)
{
    for (const char byte : bytes)
        d->reader->take(byte, d->due);
    QVector<StatusAnswer> answers = d->reader->takeAnswers();
    for (StatusAnswer &answer : answers)
        d->takeIn(answer);
    return answers;
}

QVector<StatusQuestion> StatusDialogue::expected() const
{
    return d->due.all();
}

QVector<StatusQuestion> StatusDialogue::giveUp()
{
    const QVector<StatusQuestion> unanswered = d->due.all();
    d->due.clear();
    d->reader->drop();
    for (const StatusQuestion question : unanswered)
        d->forgetAnswer(question);
    return unanswered;
}

void StatusDialogue::reset()
{
    d.reset(new State(PrinterProfile(d->profile)));
}

PrinterStatus StatusDialogue::status() const
{
    return d->combined();
}

qint64 StatusDialogue::strayBytes() const
{
    return d->reader->strayBytes();
}

}  // namespace printerslib::drivers
