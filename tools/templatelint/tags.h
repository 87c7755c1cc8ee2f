#pragma once

#include <QString>
#include <QVector>
#include <optional>

#include "text.h"

namespace templatelint {

const QLatin1String qrTag("<QR>");

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
/// Whether a line names a file of special symbols.
bool isSymbolsLine(const QString &line);
/// What it names.
QString symbolsFile(const QString &line);

extern const QLatin1String entriesTag;
extern const QLatin1String symbolsTag;

/// The text with Latin letters in place of the Cyrillic ones that look the same.
QString withLatinLetters(const QString &text);

}  // namespace templatelint
