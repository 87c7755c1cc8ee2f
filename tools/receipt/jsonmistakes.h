#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <optional>

namespace tool {

/// Something in a JSON text that its writer has to change.
struct JsonMistake
{
    int offset = 0;  ///< of the byte where it is
    QString what;    ///< "a comma is missing behind line 3"
};

/// The first mistake in a text that QJsonDocument doesn't take, in words of whoever wrote it by
/// hand; nothing where QJsonDocument's own words say it as well.
std::optional<JsonMistake> jsonMistakeIn(const QByteArray &text);

/// What QJsonDocument drops without a word: of keys that stand in one object a second time all but
/// one, and backslashes that begin no escape.
QVector<JsonMistake> lossesIn(const QByteArray &text);

}  // namespace tool
