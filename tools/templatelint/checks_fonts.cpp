#include <algorithm>

#include "analysis.h"
#include "checks.h"
#include "printerdocs/document/characterbytes_p.h"
#include "tags.h"
#include "words.h"

// Rules about fonts, and about tags whose effect goes another way than their author means.

namespace templatelint {

namespace {

constexpr unsigned char firstFont = 0;

/// The lines of a road that have text.
QVector<const Printed *> linesWithText(const Road &road)
{
    QVector<const Printed *> lines;
    for (const Printed &line : road.lines) {
        if (!line.text.isEmpty())
            lines.append(&line);
    }
    return lines;
}

unsigned char fontAtBegin(const Printed &line)
{
    return static_cast<unsigned char>(documents::CharacterBytes(line.fonts).at(0));
}

/// Whether the last font tag of a line has no character behind it, and would have changed the font.
bool losesItsSwitch(const Printed &line)
{
    return !line.fontSwitches.isEmpty() &&
           fontOf(line.fontSwitches.constLast().text) != line.fontBehind;
}

void checkSwitchesAtEnds(const Road &road, Report &report)
{
    const QVector<const Printed *> lines = linesWithText(road);
    for (int i = 0; i + 1 < lines.size(); ++i) {
        const Printed &line = *lines.at(i);
        if (!losesItsSwitch(line) || fontAtBegin(*lines.at(i + 1)) != line.fontBehind)
            continue;
        const TakenTag &tag = line.fontSwitches.constLast();
        if (tag.offset != Text::nowhere)
            report.add(tag.offset,
                       Words::tr("\"%1\" has no character behind it on the line and is lost: "
                                 "the next line stays in font %2")
                           .arg(tag.text)
                           .arg(line.fontBehind + 1));
    }
}

/// The tag that switched the font on in which a road ends, where that leaks out of its line.
const TakenTag *leakingSwitch(const Road &road)
{
    const QVector<const Printed *> lines = linesWithText(road);
    if (lines.isEmpty() || lines.constLast()->fontBehind == firstFont ||
        losesItsSwitch(*lines.constLast()))
        return nullptr;
    const auto switching = std::find_if(lines.crbegin(), lines.crend(), [](const Printed *line) {
        return !line->fontSwitches.isEmpty() && !losesItsSwitch(*line);
    });
    if (switching == lines.crend() || switching == lines.crbegin())
        return nullptr;
    const bool isForAll = std::all_of(lines.cbegin(), lines.cend(), [&](const Printed *line) {
        return fontAtBegin(*line) == lines.constLast()->fontBehind;
    });
    return isForAll ? nullptr : &(*switching)->fontSwitches.constLast();
}

/// Whether a font tag has a number of its own, and doesn't count round.
bool namesAFont(const QString &tag)
{
    return tag.midRef(templates::fontTag.size()).chopped(1).toInt() == fontOf(tag) + 1;
}

void checkFontsOf(const Road &road, Report &report)
{
    for (const Printed &line : road.lines) {
        for (const TakenTag &tag : line.fontSwitches) {
            if (!namesAFont(tag.text) && tag.offset != Text::nowhere)
                report.add(tag.offset,
                           Words::tr("there is no font of \"%1\": it counts as \"<F%2>\"")
                               .arg(tag.text)
                               .arg(fontOf(tag.text) + 1));
        }
    }
}

}  // namespace

void checkOpenFonts(const Analysis &analysis, Report &report)
{
    if (analysis.options().form == Form::Text)
        return;
    for (const Piece &piece : analysis.pieces()) {
        const QVector<const Road *> roads = analysis.decisiveRoads(piece);
        for (const Road *road : roads) {
            const TakenTag *tag = leakingSwitch(*road);
            if (tag != nullptr && tag->offset != Text::nowhere)
                report.add(tag->offset,
                           Words::tr("the font is switched here and never back: all lines "
                                     "below are printed in font %1")
                               .arg(fontOf(tag->text) + 1));
        }
    }
}

void checkLostFontSwitches(const Analysis &analysis, Report &report)
{
    if (analysis.options().form == Form::Text)
        return;
    for (const Piece &piece : analysis.pieces()) {
        const QVector<const Road *> roads = analysis.decisiveRoads(piece);
        for (const Road *road : roads)
            checkSwitchesAtEnds(*road, report);
    }
}

void checkUnknownFonts(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        checkFontsOf(piece.blank, report);
        if (piece.filled)
            checkFontsOf(*piece.filled, report);
    }
}

void checkLostMarkup(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        // With a value that is empty the line may well be meant to go.
        for (const Printed &line : piece.blank.lines) {
            if (!line.text.isEmpty() || line.hasCode || line.lineTags.isEmpty())
                continue;
            const TakenTag &tag = line.lineTags.constFirst();
            if (tag.offset != Text::nowhere)
                report.add(tag.offset,
                           Words::tr("the line has no text and isn't printed: \"%1\" is lost")
                               .arg(tag.text));
        }
    }
}

}  // namespace templatelint
