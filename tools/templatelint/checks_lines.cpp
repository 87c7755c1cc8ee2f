#include <QRegularExpression>
#include <algorithm>

#include "analysis.h"
#include "checks.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "tags.h"
#include "words.h"

// Rules about tags and groups that get in each other's way.

namespace templatelint {

namespace {

/// The tags that stay as text, on whatever roads there are.
template <typename Visitor>
void forEachLeftover(const QVector<const Road *> &roads, Visitor visit)
{
    for (const Road *road : roads) {
        const QVector<Leftover> leftovers = leftoversOf(*road);
        std::for_each(leftovers.cbegin(), leftovers.cend(), visit);
    }
}

QVector<const Road *> allRoads(const Piece &piece)
{
    QVector<const Road *> roads{&piece.blank};
    if (piece.filled)
        roads.append(&*piece.filled);
    return roads;
}

bool isAlignment(const QString &inner)
{
    return inner == innerOf(templates::centerTag) || inner == innerOf(templates::rightTag);
}

bool isSpacing(const QString &inner)
{
    constexpr auto tags = templates::plainTagsOf<templates::MarkupStep::SetSpacing>;
    return std::any_of(tags.begin(), tags.end(), [&inner](const templates::PlainTag &tag) {
        return inner == innerOf(tag.text);
    });
}

/// The brackets of a line outside of its tags, and those inside.
class BracketCheck
{
public:
    BracketCheck(const Piece &piece, const TemplateLine &line, Report &report)
        : m_piece(piece), m_line(line), m_report(report)
    {}

    void run()
    {
        int from = 0;
        for (const AttributeTag &tag : m_line.tags) {
            // Of a tag without its end only what the next one leaves is a tag.
            const int begin = tag.begin + 1 + tag.inner.lastIndexOf(QLatin1Char('<'));
            match(from, begin);
            reportInside(begin, tag.end);
            from = tag.end;
        }
        match(from, m_line.text.size());
        for (const int open : qAsConst(m_opens))
            add(open, Words::tr("the group is left open at the line's end: \"[\" has no \"]\" "
                                "on the line"));
    }

private:
    void match(int from, int end)
    {
        for (int i = from; i < end; ++i) {
            const QChar c = m_line.text.characters.at(i);
            if (c == QLatin1Char('['))
                m_opens.append(i);
            else if (c == QLatin1Char(']') && !m_opens.isEmpty())
                m_opens.removeLast();
            else if (c == QLatin1Char(']'))
                add(i, Words::tr("\"]\" has no \"[\" in front of it on the line"));
        }
    }
    void reportInside(int begin, int end)
    {
        for (int i = begin; i < end; ++i) {
            const QChar c = m_line.text.characters.at(i);
            if (c == QLatin1Char('[') || c == QLatin1Char(']'))
                add(i, Words::tr("\"%1\" stands inside the tag \"%2\"")
                           .arg(c)
                           .arg(clipped(m_line.text.characters.mid(begin, end - begin))));
        }
    }
    void add(int index, const QString &message)
    {
        const int offset = m_line.text.origins.at(index);
        if (m_piece.isText(offset))
            m_report.add(offset, message);
    }

    const Piece &m_piece;
    const TemplateLine &m_line;
    Report &m_report;
    QVector<int> m_opens;
};

/// Which tags of a line a group hides if it goes. What stands in it in front of its last value
/// counts, with values as long as those of the document; without one they have one character, which
/// is the least that doesn't make the group go for their own sake.
class HiddenTagCheck
{
public:
    HiddenTagCheck(const Piece &piece, const TemplateLine &line, Values *values, Report &report)
        : m_piece(piece), m_line(line), m_values(values), m_report(report)
    {}

    void run()
    {
        auto tag = m_line.tags.cbegin();
        for (int i = 0; i < m_line.text.size(); ++i) {
            if (tag != m_line.tags.cend() && tag->begin == i) {
                takeTag(*tag);
                i = tag->end - 1;
                ++tag;
                continue;
            }
            const QChar c = m_line.text.characters.at(i);
            ++m_length;
            if (c == QLatin1Char('['))
                m_groups.append({m_length - 1, 0, false, false});
            else if (c == QLatin1Char(']') && !m_groups.isEmpty())
                closeGroup(i + 1);
        }
    }

private:
    struct Group
    {
        int begin;   ///< how many characters stand in front of it
        int passed;  ///< how many characters behind it are passed over when it goes
        bool canGo;
        bool goes;  ///< with this document
    };

    void takeTag(const AttributeTag &tag)
    {
        if (tag.begin < m_passedUntil && m_piece.isText(m_line.offsetOf(tag)))
            m_report.add(
                m_line.offsetOf(tag),
                Words::tr("\"%1\" isn't filled when the group in front of it goes: from the "
                          "group's end to the tag there have to be %n characters",
                          nullptr, m_passed)
                    .arg(clipped(m_line.text.characters.mid(tag.begin, tag.end - tag.begin))));
        const QString value =
            m_values == nullptr ? QString() : m_values->ofTag(tag.inner).value_or(QString());
        if (!m_groups.isEmpty() && !isEntriesTag(tag.inner)) {
            Group &group = m_groups.last();
            group.passed = m_length - group.begin;
            group.canGo = true;
            group.goes = group.goes || templates::vanishesWithItsGroup(value);
        }
        m_length += std::max(1, value.size());
    }
    void closeGroup(int end)
    {
        const Group group = m_groups.takeLast();
        if (!group.canGo)
            return;
        if (group.goes)
            m_length = group.begin;
        if (end + group.passed <= m_passedUntil)
            return;
        m_passedUntil = end + group.passed;
        m_passed = group.passed;
    }

    const Piece &m_piece;
    const TemplateLine &m_line;
    Values *const m_values;
    Report &m_report;
    QVector<Group> m_groups;
    int m_length = 0;  ///< of what is printed so far
    int m_passedUntil = 0;
    int m_passed = 0;
};

void checkEntriesOf(const Piece &piece, const Text &line, Report &report)
{
    const QString &text = line.characters;
    const UpperCased upper(text);
    int hit = upper.copy().indexOf(templates::entriesTag);
    if (hit < 0 || QStringRef(&text).trimmed().size() == templates::entriesTag.size())
        return;
    for (; hit >= 0; hit = upper.copy().indexOf(templates::entriesTag, hit + 1)) {
        const int begin = upper.placeInLine(hit);
        if (piece.isPrinted(line.origins.at(begin)))
            report.add(line.origins.at(begin),
                       Words::tr("\"%1\" stands inside other text, which goes to the first and "
                                 "to the last entry only")
                           .arg(text.mid(begin, templates::entriesTag.size())));
    }
}

enum class Cuts { AtFirst, AtEach };

/// Where a keyword stands in the upper-cased copy of a line, the line itself is cut.
void checkCutAt(const QString &keyword, Cuts cuts, const Text &line, const UpperCased &upper,
                Report &report)
{
    const QString &copy = upper.copy();
    for (int hit = copy.indexOf(keyword); hit >= 0; hit = copy.indexOf(keyword, hit + 1)) {
        const int begin = upper.placeInLine(hit);
        const int end = upper.placeInLine(hit + keyword.size() - 1) + 1;
        const int shift = hit + keyword.size() - end;
        if (shift == 0 && cuts == Cuts::AtFirst)
            return;
        if (shift == 0)
            continue;
        report.add(line.origins.at(begin),
                   Words::tr("the line is cut %1 too far to the right for \"%2\": letters in "
                             "front of it or in it are more in upper case")
                       .arg(shift == 1 ? Words::tr("a character")
                                       : Words::tr("%n characters", nullptr, shift),
                            line.characters.mid(begin, end - begin)));
        return;
    }
}

void checkMarkersOf(const Piece &piece, const TemplateLine &line, Report &report)
{
    for (const AttributeTag &tag : line.tags) {
        if (isFiscalMarker(tag.inner) && piece.isPrinted(line.offsetOf(tag)))
            report.add(line.offsetOf(tag),
                       Words::tr("\"<%1>\" prints nothing unless the client cuts the template "
                                 "here (--fiscal)")
                           .arg(tag.inner));
    }
}

/// The tags of the markup in the data of a QR code.
void checkCode(const Text &code, Report &report)
{
    static const QRegularExpression number(QStringLiteral("^#?\\d+$"));
    const QString &text = code.characters;
    int begin = -1;
    for (int i = templates::qrTag.size(); i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('<'))
            begin = i;
        if (text.at(i) != QLatin1Char('>') || begin < 0)
            continue;
        const QString inner = text.mid(begin + 1, i - begin - 1);
        const int offset = Text::offsetOf(code.origins.at(begin));
        if ((isMarkup(inner) || number.match(inner).hasMatch()) && offset != Text::nowhere)
            report.add(offset, Words::tr("\"<%1>\" is no markup in the data of a QR code: it "
                                         "goes into the code")
                                   .arg(inner));
        begin = -1;
    }
}

/// The brackets of groups with a value. Others may well be meant as data.
void checkGroupsOfCode(const Piece &piece, const TemplateLine &line, Report &report)
{
    struct Open
    {
        int index;
        int tags;  ///< attribute tags in front of it
    };
    QVector<Open> opens;
    auto tag = line.tags.cbegin();
    const auto add = [&](int index) {
        const int offset = line.text.origins.at(index);
        if (piece.isPrinted(offset) && !piece.isText(offset))
            report.add(offset, Words::tr("\"%1\" of a group goes into the QR code")
                                   .arg(line.text.characters.at(index)));
    };
    for (int i = 0; i < line.text.size(); ++i) {
        if (tag != line.tags.cend() && tag->begin == i) {
            i = (tag++)->end - 1;
            continue;
        }
        const int tags = static_cast<int>(tag - line.tags.cbegin());
        const QChar c = line.text.characters.at(i);
        if (c == QLatin1Char('[')) {
            opens.append({i, tags});
        } else if (c == QLatin1Char(']') && !opens.isEmpty()) {
            const Open open = opens.takeLast();
            if (open.tags == tags)
                continue;
            add(open.index);
            add(i);
        }
    }
}

/// The end of a group around a value that is a QR code itself.
void checkGroupAroundCode(const Text &code, Report &report)
{
    if (Text::isTemplate(code.origins.constFirst()))
        return;
    int open = 0;
    for (int i = 0; i < code.size(); ++i) {
        const int origin = code.origins.at(i);
        if (code.characters.at(i) == QLatin1Char('['))
            ++open;
        else if (code.characters.at(i) == QLatin1Char(']') && --open < 0 &&
                 Text::isTemplate(origin))
            report.add(origin, Words::tr("\"]\" of the group goes into the QR code that the "
                                         "value begins"));
    }
}

}  // namespace

void checkBrackets(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines) {
            if (analysis.showsItsShape(line))
                BracketCheck(piece, line, report).run();
        }
    }
}

void checkHiddenTags(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines) {
            if (analysis.showsItsShape(line))
                HiddenTagCheck(piece, line, analysis.values(), report).run();
        }
        if (!piece.filled)
            continue;
        for (const int offset : piece.filled->hidden) {
            if (piece.isText(offset))
                report.add(offset, Words::tr("the tag isn't filled with this document, as the "
                                             "group in front of it goes"));
        }
    }
}

void checkAlignmentWithTab(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover(allRoads(piece), [&report](const Leftover &tag) {
            if (isAlignment(tag.inner) && tag.hasTab)
                report.add(tag.offset,
                           Words::tr("\"<%1>\" prints as it stands on a line with \"<S>\"")
                               .arg(tag.inner));
        });
    }
}

void checkRepeatedTabs(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const Printed &line : piece.blank.lines) {
            if (!line.repeatsTab())
                continue;
            const int count = line.tabs.size();
            report.add(line.tabs.at(1),
                       Words::tr("%1 <S> on the line: each takes all the room that the text "
                                 "leaves, and the line gets wider than the paper")
                           .arg(count == 2 ? Words::tr("two") : QString::number(count)));
        }
    }
}

void checkSecondAlignment(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover(allRoads(piece), [&report](const Leftover &tag) {
            if (isAlignment(tag.inner) && !tag.hasTab)
                report.add(tag.offset,
                           Words::tr("\"<%1>\" prints as it stands on a line with \"<C>\"")
                               .arg(tag.inner));
        });
    }
}

void checkLineSpacing(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover(allRoads(piece), [&report](const Leftover &tag) {
            if (isSpacing(tag.inner))
                report.add(tag.offset, Words::tr("\"<%1>\" prints as it stands: the line has "
                                                 "a smaller spacing")
                                           .arg(tag.inner));
        });
    }
}

void checkOpenFormats(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        const QVector<const Road *> roads = analysis.decisiveRoads(piece);
        for (const Road *road : roads) {
            for (const int offset : road->openFormats)
                report.add(offset, Words::tr("the format is switched on here and never off"));
        }
    }
}

void checkTagsBehindTheirPair(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover(analysis.decisiveRoads(piece), [&report](const Leftover &tag) {
            if (isFormatSwitch(tag.inner))
                report.add(tag.offset, Words::tr("\"<%1>\" prints as it stands: a tag of the "
                                                 "same pair stands directly in front")
                                           .arg(tag.inner));
        });
    }
}

void checkRemovals(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover(analysis.decisiveRoads(piece), [&report](const Leftover &tag) {
            if (tag.inner == innerOf(templates::removalBegin))
                report.add(tag.offset, Words::tr("\"<X:>\" prints as it stands: there is no "
                                                 "\"<:X>\" behind it"));
            else if (tag.inner == innerOf(templates::removalEnd))
                report.add(tag.offset, Words::tr("\"<:X>\" prints as it stands: there is no "
                                                 "\"<X:>\" in front of it"));
        });
    }
}

void checkEntries(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            checkEntriesOf(piece, line.text, report);
    }
}

void checkShiftedCuts(const Analysis &analysis, Report &report)
{
    const auto &parts = PrinterDocumentFormatter::PARTS;
    const QVector<Text> lines = analysis.source().lines();
    for (const Text &line : lines) {
        const UpperCased upper(line.characters);
        if (upper.copy().size() == line.size())
            continue;
        checkCutAt(templates::entriesTag, Cuts::AtEach, line, upper, report);
        for (const auto &part : parts)
            checkCutAt(part.second, Cuts::AtFirst, line, upper, report);
    }
}

void checkFiscalMarkers(const Analysis &analysis, Report &report)
{
    if (analysis.options().splitsFiscalParts)
        return;
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            checkMarkersOf(piece, line, report);
    }
}

void checkQrMarkup(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        const QVector<const Road *> roads = allRoads(piece);
        for (const Road *road : roads) {
            for (const Text &code : road->codes)
                checkCode(code, report);
        }
        for (const TemplateLine &line : piece.lines)
            checkGroupsOfCode(piece, line, report);
        if (!piece.filled)
            continue;
        for (const Text &code : piece.filled->codes)
            checkGroupAroundCode(code, report);
    }
}

void checkQrInText(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        forEachLeftover({&piece.blank}, [&](const Leftover &tag) {
            if (tag.inner == innerOf(templates::qrTag))
                report.add(tag.offset, Words::tr("\"<QR>\" and its data print as they stand "
                                                 "in text and HTML"));
        });
    }
}

}  // namespace templatelint
