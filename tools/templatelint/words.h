#pragma once

#include <QCoreApplication>

namespace templatelint {

/// What findings say, in the language of the translations that the program has installed; without
/// any in English. Parts of a sentence keep the blanks and signs at their ends.
struct Words
{
    Q_DECLARE_TR_FUNCTIONS(LintFinding)

public:
    /// Of a text in a table, marked there with QT_TRANSLATE_NOOP("LintFinding", ...).
    static QString marked(const char *text)
    {
        return QCoreApplication::translate("LintFinding", text);
    }
};

}  // namespace templatelint
