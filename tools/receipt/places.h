#pragma once

#include <QString>
#include <QVector>
#include <functional>
#include <memory>

#include "printerdocs/textprinterdocument.h"

namespace tool {

/// Where a document's blocks and lines are to be found by who reads messages about them: in the
/// template or text that they are made of, or else on the paper.
class Places
{
public:
    /// Of a document that nobody knows: "block 3, line 2".
    Places() = default;
    /// Of one that is made of no text: "printed line 7".
    explicit Places(const TextPrinterDocument &document);
    /// @param lines for each text line and each code of the document its line in the text, 0 where
    ///              it has none; called when a place is asked for first
    Places(const TextPrinterDocument &document, std::function<QVector<int>()> lines);

    /// The line of the text, from 1; 0: it has none.
    /// @param block, line from 1; line 0: the whole block
    int lineOf(int block, int line) const;
    /// "line 14" or "lines 3 to 9" of the text, or "printed line 7", "behind printed line 6", "at
    /// the beginning".
    QString textOf(int block, int line) const;
    /// The same with "in" where that is missing.
    QString standingOf(int block, int line) const;
    /// A message that begins with block and line, with the place in their stead.
    QString inMessage(const QString &message) const;

private:
    class Finder;

    std::shared_ptr<Finder> m_finder;
};

}  // namespace tool
