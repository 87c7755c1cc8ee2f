#pragma once

#include <QString>
#include <QVector>
#include <optional>

#include "text.h"

namespace templatelint {

/// What stands between the brackets of a tag.
QLatin1String innerOf(QLatin1String tag);

/// Whether a tag of this length, both of its brackets counted, is an attribute's.
bool isAttributeTag(int length);

/// An attribute tag as it stands in a line of the template.
struct AttributeTag
{
    int begin;      ///< index of "<" in the line
    int end;        ///< index behind ">"
    QString inner;  ///< what stands between
    QString name;   ///< in front of the last comma
    QString format;
};

/// The attribute tags of a line, as the search for them goes over it.
QVector<AttributeTag> attributeTags(const QString &line);

/// The inner text of the tag that a mistaken one was meant to be, such as "B" for "b".
std::optional<QString> intendedMarkup(const QString &inner);

/// Whether the inner text is that of a tag of the markup or of a keyword, spelt exactly.
bool isMarkup(const QString &inner);
/// Whether it is that of a tag which switches a format on or off.
bool isFormatSwitch(const QString &inner);

bool isEntriesTag(const QString &inner);
bool isFiscalMarker(const QString &inner);
/// Whether it begins like that of a line which names a file of special symbols.
bool isSymbolsTag(const QString &inner);

/// The text with Latin letters in place of the Cyrillic ones that look the same.
QString withLatinLetters(const QString &text);

}  // namespace templatelint
