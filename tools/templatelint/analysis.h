#pragma once

#include <QHash>
#include <QSet>
#include <QVector>
#include <memory>
#include <optional>

#include "attributes.h"
#include "printerdocs/specialcharacters.h"
#include "road.h"
#include "tags.h"
#include "templatelint.h"
#include "text.h"
#include "values.h"

namespace templatelint {

/// A mistake in an attribute tag, at its place in the template.
struct TagFault
{
    int offset;
    TagVerdict verdict;
};

/// A line of the template with its attribute tags.
struct TemplateLine
{
    Text text;
    QVector<AttributeTag> tags;

    /// Offset of a tag in the template.
    int offsetOf(const AttributeTag &tag) const { return text.origins.at(tag.begin); }
};

/// What the special symbols of a piece are drawn with.
struct SymbolFile
{
    QVector<int> offsets;  ///< of the tags that name one
    QString path;          ///< of the file that counts
    bool exists = false;
    QString fault;  ///< why it can't be used, for a message; empty if it can
    SpecialCharacters drawings;

    bool isUsable() const { return fault.isEmpty(); }
};

/// Takes the lines out that name files of symbols; the lowest counts. The file isn't opened.
SymbolFile namedSymbolFile(QVector<Text> &lines, const QString &folder);
/// The same, and reads the file.
SymbolFile takeSymbolFile(QVector<Text> &lines, const QString &folder);

/// A template, or what a fiscal split leaves of it: it is printed by itself.
struct Piece
{
    QVector<TemplateLine> lines;  ///< without those that name files of symbols
    QVector<TagFault> tagFaults;
    SymbolFile symbols;
    Road blank;                  ///< with a character of no meaning for every value
    std::optional<Road> filled;  ///< with the document's values
    QVector<int> shown;          ///< offsets of tags of which the values can be seen on it
    bool isSilent = false;       ///< a road is missing, as the library prepares other lines

    /// Whether something at this place can be seen on paper.
    bool isPrinted(int offset) const;
    /// Whether the value of a tag at this place can be seen on paper with this document.
    bool isShown(int offset) const;
    /// Whether it is read as text, and not as the data of a QR code.
    bool isText(int offset) const;
};

/// All that the rules look at, worked out once.
class Analysis
{
public:
    /// @param progress gets stepsPerLine steps for each line
    Analysis(const QStringList &lines, const Options &options, Progress &progress);
    static constexpr int stepsPerLine = 5;

    const Source &source() const { return m_source; }
    const Options &options() const { return m_options; }
    const QVector<Piece> &pieces() const { return m_pieces; }
    /// Null without a document.
    Values *values() const { return m_values.get(); }
    /// Of tags in a BBCode text, by their offsets: the digits that the field around fills up to.
    const QHash<int, int> &digitsOfFields() const { return m_digitsOfFields; }
    /// Makes it one of a BBCode text.
    void setBbCode(const QHash<int, int> &digitsOfFields)
    {
        m_isBbCode = true;
        m_digitsOfFields = digitsOfFields;
    }
    bool isOfBbCode() const { return m_isBbCode; }
    /// Whether the values of a line are mere text, so that its tags and groups are those that the
    /// template shows.
    bool showsItsShape(const TemplateLine &line) const;
    /// The roads on which a finding counts that values with tags in them could undo.
    QVector<const Road *> decisiveRoads(const Piece &piece) const;

private:
    Piece pieceOf(const QVector<Text> &lines, TagJudge &judge, Progress &progress) const;

    const Options m_options;
    const Source m_source;
    std::unique_ptr<Values> m_values;
    QVector<Piece> m_pieces;
    QHash<int, int> m_digitsOfFields;
    bool m_isBbCode = false;
};

/// Takes the findings of one rule.
class Report
{
public:
    Report(const Rule &rule, const Source &source, QVector<Finding> &findings)
        : m_rule(rule), m_source(source), m_findings(findings)
    {}
    Severity severity() const { return m_rule.severity; }
    /// Of several messages for one place the first counts.
    void add(int offset, const QString &message);
    /// One that isn't as bad as the rule's worst.
    void addAs(Severity severity, int offset, const QString &message);
    /// All of them count: what stands at one place of the template, such as the tag for the
    /// entries, can become many lines.
    void addEach(int offset, const QString &message);
    void addEachAs(Severity severity, int offset, const QString &message);
    /// The same at the beginning of the line.
    void addEachToLine(int offset, const QString &message);

private:
    void addEachAt(const Place &place, Severity severity, const QString &message);

    const Rule &m_rule;
    const Source &m_source;
    QVector<Finding> &m_findings;
    QSet<QPair<int, int>> m_places;
    QSet<QString> m_messages;  ///< each with its place
};

}  // namespace templatelint
