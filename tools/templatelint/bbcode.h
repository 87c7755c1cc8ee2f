#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QVector>

#include "markup.h"
#include "printerdocs/documentblock.h"
#include "templatelint.h"
#include "text.h"

namespace templatelint {

/// What stands at one place of a BBCode text.
struct BbEvent
{
    enum Kind { Words, Malformed, Open, Close };

    Kind kind;
    int begin;     ///< index in the text; of what closes itself that of its tag
    int end;       ///< behind it
    QString name;  ///< of a tag, in small letters; of what is malformed the one that begins it
    QMap<QString, QString> parameters;  ///< in small letters; of an opening tag
};

/// An opening tag and the one that closes it, as indexes of events.
struct BbPair
{
    int open;
    int close;
};

/// Words in a field that is filled up with zeros.
struct BbNumber
{
    int event;
    int digits;  ///< as many as it is filled up to
};

/// A BBCode text as the library's own reader takes it, with its places.
class BbCode
{
public:
    BbCode(const QStringList &lines, const Options &options);

    const Options &options() const { return m_options; }
    const Source &source() const { return m_source; }
    /// With the values of the document; without one a sign stands for each value.
    const Text &text() const { return m_text; }
    const QVector<BbEvent> &events() const { return m_events; }
    /// By the tags that close them.
    const QVector<BbPair> &pairs() const { return m_pairs; }
    /// Events that open or close something without the other.
    const QVector<int> &lonely() const { return m_lonely; }
    QVector<BbNumber> numbers() const;
    /// For each tag of a value in such words its offset, and the digits.
    QHash<int, int> digitsOfValues() const;

    int offsetOf(const BbEvent &event) const;
    /// Whether it begins in a value of the document.
    bool isOfValue(const BbEvent &event) const;
    QString partOf(int begin, int end) const;
    /// The lines that are printed, each with a place in the text.
    QVector<Printed> lines() const;
    /// For each text line and each code of the text's blocks its line in the text, from 1; 0 where
    /// that can't be told.
    QVector<int> linesOf(const QList<DocumentBlock> &blocks) const;
    /// What is printed of the words in it, at their own places.
    QVector<Printed> words() const;

private:
    void readEvents();
    void pairUp();

    const Options m_options;
    const Source m_source;
    Text m_text;
    QVector<BbEvent> m_events;
    QVector<BbPair> m_pairs;
    QVector<int> m_lonely;
};

/// A tag of BBCode in a template: a group without a value.
struct BbTag
{
    int begin;     ///< index in the line
    QString text;  ///< as it stands
    QString name;  ///< in small letters
};
QVector<BbTag> bbTagsOf(const QString &line);

/// A tag of the markup of templates.
struct MarkupTag
{
    int begin;     ///< index in the line
    QString text;  ///< as it stands
};
/// All that a text in BBCode doesn't have; tags for values are none.
QVector<MarkupTag> markupOf(const QString &line);

/// What stands inside a tag for a value that isn't known.
QString bbValueSign();

const QStringList &bbTagNames();
const QStringList &bbKeys();

}  // namespace templatelint
