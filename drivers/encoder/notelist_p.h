#pragma once

#include <QSet>
#include <QString>
#include <QVector>

#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// Notes on a document, each of them once for a line, and no more than a reader may want.
class NoteList
{
public:
    static constexpr int most = 100;

    /// What the next notes are on. 0: the whole document, or block.
    void setPlace(int block, int line = 0);
    void add(const QString &text, bool isLoss = true);
    /// The same for many characters: no text is made for one that was noted already.
    /// @param kind of the caller's own
    template <typename Text>
    void addOnce(int kind, uint character, const Text &text)
    {
        const quint32 key = static_cast<quint32>(kind) << 24 | character;
        if (m_noted.contains(key))
            return;
        m_noted.insert(key);
        add(text());
    }
    /// All of them, and at the end how many there are besides.
    QVector<PrintNote> notes() const;

private:
    QVector<PrintNote> m_notes;
    QSet<quint32> m_noted;  ///< on this line
    int m_block = 0;
    int m_line = 0;
    int m_more = 0;
    bool m_isMoreLoss = false;
};

}  // namespace printerslib::drivers
