#include "markup.h"

#include <algorithm>
#include <iterator>

#include "tags.h"
#include "tracing.h"

namespace templatelint {

namespace {

/// Whether a numeric tag makes place for its character.
bool isCode(const Text &removed, QStringView inserted)
{
    return !inserted.isEmpty() && removed.size() > 1 &&
           (removed.characters.at(1) == templates::plainCodeSign ||
            removed.characters.at(1).isDigit());
}

bool isNumber(const QString &code)
{
    bool isNumber = false;
    code.midRef(code.startsWith(templates::plainCodeSign) ? 1 : 0).toInt(&isNumber);
    return isNumber;
}

bool isFontSwitch(const QString &tag)
{
    return tag.startsWith(templates::fontTag) && tag.endsWith(QLatin1Char('>'));
}

bool isForWholeLine(const QString &tag)
{
    using namespace templates;
    return std::any_of(std::begin(wholeLineOrder), std::end(wholeLineOrder),
                       [&tag](const FormatTag &format) { return tag == format.wholeLine; }) ||
           std::any_of(std::begin(plainTags), std::end(plainTags), [&tag](const PlainTag &plain) {
               return tag == plain.text &&
                      (plain.step == MarkupStep::Align || plain.step == MarkupStep::SetSpacing);
           });
}

}  // namespace

unsigned char fontOf(const QString &tag)
{
    templates::CarriedStyle carried;
    templates::printedLine(tag + QLatin1Char(' '), carried, 0, 0);
    return carried.font;
}

bool Printed::repeatsTab() const
{
    return std::any_of(tabs.cbegin(), tabs.cend(),
                       [this](int offset) { return offset != tabs.constFirst(); });
}

Markup::Markup()
{
    m_openTags.fill(Text::nowhere);
}

Printed Markup::print(const Text &line)
{
    Printed printed;
    printed.text = traced(
        line,
        [&](const QString &characters, templates::HeardEdits edits) {
            const auto read = templates::printedLine(characters, m_carried, 0, 0,
                                                     templates::LineDetail::WithBytes, edits);
            printed.formats = read.formats;
            printed.fonts = read.fonts;
            printed.fontBehind = m_carried.font;
        },
        [&](const Text &removed, QStringView inserted) { hear(removed, inserted, printed); });
    return printed;
}

QVector<int> Markup::openFormats() const
{
    QVector<int> offsets;
    std::copy_if(m_openTags.cbegin(), m_openTags.cend(), std::back_inserter(offsets),
                 [](int offset) { return offset != Text::nowhere; });
    return offsets;
}

void Markup::hearOfLine(const TakenTag &tag, Printed &printed)
{
    if (tag.text == templates::tabTag)
        printed.tabs.append(tag.offset);
    if (tag.text == QLatin1String("["))
        printed.hasBrackets = true;
    if (isFontSwitch(tag.text))
        printed.fontSwitches.append(tag);
    if (isFontSwitch(tag.text) || isForWholeLine(tag.text))
        printed.lineTags.append(tag);
}

/// What goes tells which step of the markup takes it.
void Markup::hear(const Text &removed, QStringView inserted, Printed &printed)
{
    const QString &tag = removed.characters;
    const int offset = removed.isEmpty() ? Text::nowhere : Text::offsetOf(removed.origins.at(0));
    hearOfLine({offset, tag}, printed);
    if (isCode(removed, inserted) && removed.isOnePiece(0, removed.size()) &&
        !isNumber(tag.mid(1, tag.size() - 2)))
        m_badCodes.append({offset, tag.mid(1, tag.size() - 2)});
    for (std::size_t i = 0; i < m_openTags.size(); ++i) {
        const templates::FormatTag &format = templates::rangeOrder[i];
        int &openTag = m_openTags.at(i);
        if (tag == format.close)
            openTag = Text::nowhere;
        else if (tag == format.open && openTag == Text::nowhere)
            openTag = offset;
        else if (tag == format.wholeLine &&
                 !printed.wholeLineTags.contains(innerOf(format.wholeLine)))
            printed.wholeLineTags.insert(innerOf(format.wholeLine), offset);
    }
}

}  // namespace templatelint
