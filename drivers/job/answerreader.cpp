#include "job/answerreader_p.h"

#include <utility>

namespace printerslib::drivers {

std::unique_ptr<AnswerReader> AnswerReader::make(const PrinterProfile &profile)
{
    switch (profile.dialect()) {
        case Dialect::StarLine:
            return makeStarAnswerReader();
        case Dialect::Swecoin:
            return makeSwecoinAnswerReader();
        case Dialect::EscPos:
            break;
    }
    return makeEscPosAnswerReader(profile);
}

void AnswerReader::drop()
{
    stray(m_held.size());
    m_held.clear();
}

QVector<StatusAnswer> AnswerReader::takeAnswers()
{
    return std::exchange(m_answers, {});
}

void AnswerReader::answer(StatusQuestion question, const QByteArray &bytes, DueQuestions &due,
                          const QByteArray &id)
{
    due.take(question, id);
    StatusAnswer found;
    found.question = question;
    found.bytes = bytes;
    found.id = id;
    m_answers.append(found);
}

}  // namespace printerslib::drivers
