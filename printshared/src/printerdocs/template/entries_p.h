#pragma once

#include <QString>
#include <QStringList>

#include "printerdocs/template/textedits_p.h"

namespace templates {

/// A document's entries as lines of the template language, name and value at the two edges.
class Entries
{
public:
    /// @param text as PrinterDocument::entries() has it
    explicit Entries(const QString &text);

    /// Appends the lines that one line of the template becomes.
    /// @param edits those that make the appended lines, put together without anything in between,
    ///              of the line
    template <typename Edits = NoEdits>
    void appendUnpacked(QStringList &result, const QString &line, Edits edits = Edits()) const;

private:
    QStringList m_lines;
    bool m_once;  ///< whether only the first tag of a line is unpacked
};

}  // namespace templates
