#include "job/duequestions_p.h"

#include <algorithm>

namespace printerslib::drivers {

void DueQuestions::add(StatusQuestion question, const QByteArray &id)
{
    m_entries.append({question, id});
}

bool DueQuestions::has(StatusQuestion question) const
{
    return oldest([question](StatusQuestion due) { return due == question; }) != nullptr;
}

void DueQuestions::take(StatusQuestion question, const QByteArray &id)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry &entry) {
        return entry.question == question && entry.id == id;
    });
    if (found != m_entries.end())
        m_entries.erase(found);
}

QVector<StatusQuestion> DueQuestions::all() const
{
    QVector<StatusQuestion> questions;
    for (const Entry &entry : m_entries)
        questions.append(entry.question);
    return questions;
}

}  // namespace printerslib::drivers
