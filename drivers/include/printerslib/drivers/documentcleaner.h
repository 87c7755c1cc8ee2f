#pragma once

#include <QFlags>
#include <QList>
#include <QPair>
#include <QString>
#include <QVariant>

#include "printerdocs/printerdocument.h"
#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// Takes out of texts what acts on a receipt instead of printing on it.
///
/// The template engine prints a document's values as they are: a "<" in them begins a tag, a line
/// feed begins a line, and a printer obeys an ESC. A client whose customers or other systems choose
/// texts cleans the document, or those texts alone, before it fills a template.
///
/// All operations are free of state, any thread may call them, and none fails. A text without any
/// of the characters comes back as it is.
///
/// What a text may be in length stays with the client: a printer goes on below where a line is
/// full, so a text with blanks up to there begins a line of its own. So does what a text means:
/// where it reads as a number it prints as one, "0" and "nan" remove their group, and in an
/// expression it is part of it.
class PRINTERSLIB_DRIVERS_EXPORT DocumentCleaner
{
public:
    /// What is cleaned away, and what stands in its place.
    enum Rule : unsigned int {
        /// "<" becomes a blank: it begins a tag, and values are read for tags again.
        CleanTags = 0x01,
        /// "[" and "]" become "(" and ")": they form groups, which vanish, and BBCode tags.
        CleanBrackets = 0x02,
        /// Each becomes a blank: U+0000 to U+001F (line feed, tab and ESC among them, and the codes
        /// of special symbols), U+007F to U+009F, and the line and paragraph separators U+2028 and
        /// U+2029.
        CleanControls = 0x04,
        /// Taken out: marks that turn the direction of writing, U+061C, U+200E, U+200F, U+202A to
        /// U+202E and U+2066 to U+2069.
        CleanBidirectional = 0x08,
        /// Taken out: other characters that show nothing but count in the width of a line, U+00AD,
        /// U+180E, U+200B to U+200D, U+2060 to U+2064, U+206A to U+206F, U+FEFF and U+FFF9 to
        /// U+FFFB.
        CleanInvisible = 0x10,
        /// In entries, each "=" behind the first of an entry becomes a blank: it begins a further
        /// column. No other text is concerned.
        CleanEqualsSigns = 0x20,
        CleanAll = 0x3F,
    };
    Q_DECLARE_FLAGS(Rules, Rule)

    /// A rule as people write it.
    struct NamedRule
    {
        Rule rule;       ///< one of the above
        QString name;    ///< one lower-case word
        QString effect;  ///< in English, such as "< becomes a blank"
    };

    /// The rules without CleanAll, in the order of their numbers.
    static QList<NamedRule> namedRules();

    /// One text. Tabs are controls here.
    static QString cleanedText(const QString &text, Rules rules = CleanAll);

    /// One attribute's value, of the type that it had: texts, byte arrays (read as UTF-8) and
    /// single characters are cleaned. Any other type whose text needs it becomes a cleaned text;
    /// numbers, dates and times never do. A character that is taken out becomes a blank.
    static QVariant cleanedValue(const QVariant &value, Rules rules = CleanAll);

    /// The entries of a document: names and values are cleaned, and the tabs between entries and
    /// the first "=" of each stay. Where a customer's text may hold a tab itself, no rule can tell
    /// that from the end of an entry: such entries are built by joinedEntries().
    static QString cleanedEntries(const QString &entries, Rules rules = CleanAll);

    /// Entries out of pairs of name and value, each one line of the receipt whatever characters
    /// they hold: the rules act on both, and tabs and "=" become blanks whatever the rules.
    static QString joinedEntries(const QList<QPair<QString, QString>> &entries,
                                 Rules rules = CleanAll);

    /// The whole document: all attributes' values and the entries. The names of attributes stay, as
    /// they print nowhere and templates and expressions ask for them by the letter; so does the
    /// mark of a copy.
    static PrinterDocument cleanedDocument(const PrinterDocument &document, Rules rules = CleanAll);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(DocumentCleaner::Rules)

}  // namespace printerslib::drivers
