#pragma once

#include <QVector>

#include "printerslib/drivers/statusanswer.h"

namespace printerslib::drivers {

/// The questions that have no answer yet, the oldest first.
class DueQuestions
{
public:
    void add(StatusQuestion question, const QByteArray &id = QByteArray());
    bool has(StatusQuestion question) const;
    /// The oldest of those for which `isIt` is true; null if there is none.
    template <typename IsIt>
    const StatusQuestion *oldest(IsIt isIt) const
    {
        for (const Entry &entry : m_entries) {
            if (isIt(entry.question))
                return &entry.question;
        }
        return nullptr;
    }
    /// Takes the oldest of these off, if there is one; of a response the one with the id.
    void take(StatusQuestion question, const QByteArray &id = QByteArray());
    QVector<StatusQuestion> all() const;
    void clear() { m_entries.clear(); }

private:
    struct Entry
    {
        StatusQuestion question = StatusQuestion::Text;
        QByteArray id;
    };
    QVector<Entry> m_entries;
};

}  // namespace printerslib::drivers
