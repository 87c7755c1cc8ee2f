#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>
#include <limits>

namespace templatelint {

bool holdsAnyOf(const QString &text, const QString &characters);

/// A place in the template: an offset in its lines, joined by line feeds.
struct Place
{
    int line;
    int column;
};

/// A text on its way from the template to the paper, which knows where its characters come from.
struct Text
{
    QString characters;
    /// For each character its offset in the template, or, of one that something else was put in
    /// for, such as a value, standIn() of the origin of what it was put in for.
    QVector<int> origins;

    static constexpr int nowhere = std::numeric_limits<int>::min();
    static int standIn(int origin)
    {
        const int offset = offsetOf(origin);
        return offset == nowhere ? nowhere : -1 - offset;
    }
    static bool isTemplate(int origin) { return origin >= 0; }
    /// The offset in the template that an origin means, `nowhere` for what comes from nowhere.
    static int offsetOf(int origin)
    {
        return origin >= 0 || origin == nowhere ? origin : -1 - origin;
    }

    int size() const { return characters.size(); }
    bool isEmpty() const { return characters.isEmpty(); }
    void append(QChar character, int origin);
    void append(const QString &text, int origin);
    /// Appends a part of another text, or all of it.
    void append(const Text &text, int from = 0, int count = -1);
    Text mid(int from, int count = -1) const;
    Text trimmed() const;
    void truncate(int size);
    /// Whether these characters stand side by side in the template.
    bool isOnePiece(int from, int end) const;
    /// Offset of the first character that comes from anywhere; `nowhere` if there is none.
    int firstOffset() const;
};

inline QSet<int> originsOf(const Text &text)
{
    return QSet<int>(text.origins.cbegin(), text.origins.cend());
}

inline const QString &charactersOf(const Text &line)
{
    return line.characters;
}

/// For each place of a line whether a group encloses it, as the search for its brackets finds out.
QVector<bool> placesInGroups(const QString &line);

/// A line as it is searched for keywords: in upper case, where one letter can become two or three.
/// Where a keyword stands in the copy, the engine cuts the line itself.
class UpperCased
{
public:
    explicit UpperCased(const QString &line);

    const QString &copy() const { return m_copy; }
    /// Where the copy of a character of the line begins; also of the place behind the last.
    int placeInCopy(int placeInLine) const;
    /// The character of the line that one of the copy was made of.
    int placeInLine(int placeInCopy) const;

private:
    QString m_copy;
    QVector<int> m_begins;  ///< for each character of the line; empty if all places are the same
};

/// The template as it was read.
class Source
{
public:
    explicit Source(const QStringList &lines);
    /// Each line with its origins.
    QVector<Text> lines() const;
    Place place(int offset) const;
    int lineBegin(int offset) const;

private:
    QStringList m_lines;
    QVector<int> m_begins;
};

}  // namespace templatelint
