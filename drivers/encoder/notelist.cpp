#include "encoder/notelist_p.h"

namespace printerslib::drivers {

void NoteList::setPlace(int block, int line)
{
    m_block = block;
    m_line = line;
    if (!m_noted.isEmpty())
        m_noted.clear();
}

void NoteList::add(const QString &text, bool isLoss)
{
    if (m_notes.size() == most) {
        ++m_more;
        m_isMoreLoss |= isLoss;
        return;
    }
    PrintNote note;
    note.block = m_block;
    note.line = m_line;
    note.text = text;
    note.isLoss = isLoss;
    m_notes.append(note);
}

QVector<PrintNote> NoteList::notes() const
{
    QVector<PrintNote> notes = m_notes;
    if (m_more > 0) {
        PrintNote more;
        more.text = QStringLiteral("and %1 more").arg(m_more);
        more.isLoss = m_isMoreLoss;
        notes.append(more);
    }
    return notes;
}

}  // namespace printerslib::drivers
