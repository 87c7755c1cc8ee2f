#pragma once

#include <QByteArray>
#include <QString>

#include "printerdocs/echarformat.h"
#include "printerdocs/etextalignment.h"
#include "printerdocs/template/templatetags_p.h"
#include "printerdocs/template/textedits_p.h"

namespace templates {

/// The kinds of tags in a line. Steps take tags out, and what is left can come together to another
/// tag; that can't happen as long as every "<" and every ">" is part of a whole tag. Otherwise all
/// kinds are given.
quint32 tagKindsOf(const QString &line);

/// One line on its way from markup to text. The steps are called in the order in which they are
/// declared; each is linear in the length of the line.
template <typename Edits>
class LineMarkup
{
public:
    /// @param format byte that every character has to begin with
    LineMarkup(const QString &line, unsigned char format, Edits edits);

    /// Takes the alignment tags out; the line's alignment is that of the first kind that hits.
    ETextAlignment takeAlignment();
    /// Takes the tags out that have no effect any more.
    void takeObsolete();
    /// Turns the tags that format a whole line into an open tag in front and a close tag behind.
    void wrapWholeLine();
    /// Takes the spacing tag out. @return its number, or `otherwise` if there is none
    int takeSpacing(int otherwise);
    /// Takes the group brackets and the empty tag out.
    void takeBrackets();
    /// Whether tags may be left that act on single characters; the steps that follow have no other.
    bool mayHoldCharacterTags() const;
    /// Replaces the numeric tags by the characters of these codes.
    void placeCodes();
    /// Applies the open and close tags, also to `format`, which lasts beyond the line.
    void applyFormats(unsigned char &format);
    /// Applies the font tags, also to `font`, which lasts beyond the line.
    void applyFonts(unsigned char &font);
    /// Brings the format bytes closer to the text where several hits of one tag left too many.
    void trimFormats();
    void addMargin(int blanks);

    const QString &text() const { return m_text; }
    const QByteArray &formats() const { return m_formats; }
    const QByteArray &fonts() const { return m_fonts; }

private:
    /// Whether a tag of these kinds may stand in the text: a step without its tags has no work.
    bool mayHold(quint32 kinds) const { return (m_tags & kinds) != 0; }
    template <MarkupStep step>
    const PlainTag *takeFirst();
    template <MarkupStep step>
    void takeEach();
    bool replaceTag(QLatin1String tag, QLatin1String replacement);
    void replaceFrom(int hit, QLatin1String tag, QLatin1String replacement);
    void wrapLine(QLatin1String open, QLatin1String close);
    void applyFormatRange(QLatin1String open, QLatin1String close, ECharFormat flag,
                          unsigned char &format);

    const Edits m_edits;
    QString m_text;
    quint32 m_tags;  ///< kinds of tags that may stand in the text
    unsigned char m_firstFormat;
    /// Up to placeCodes() all bytes of a line are alike, and only their number is kept: it differs
    /// from the text's length once several hits of one tag have pushed the two out of step.
    int m_byteCount;
    QByteArray m_formats;
    QByteArray m_fonts;
};

}  // namespace templates
