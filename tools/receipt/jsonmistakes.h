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

/// The keys that stand in one object a second time, of which QJsonDocument keeps one without a
/// word.
QVector<JsonMistake> repeatedKeysIn(const QByteArray &text);

}  // namespace tool
