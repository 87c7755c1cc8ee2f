#pragma once

#include <QStringList>

#include "printerslib/drivers/statusdialogue.h"

/// Dialogues of models, and their answers as short texts.
namespace answersof {

using namespace printerslib::drivers;

inline PrinterProfile model(const char *id)
{
    return PrinterProfile::forModel(QString::fromLatin1(id)).value();
}

inline QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// "DLE EOT 1: 12"; flags behind a blank and a plus: "+20".
inline QString told(const StatusAnswer &answer)
{
    static const char *const names[] = {
        "DLE EOT 1", "DLE EOT 2", "DLE EOT 3", "DLE EOT 4", "DLE EOT 5", "DLE EOT 6", "DLE EOT 20",
        "GS r",      "automatic", "GS ( H",    "text",      "ESC ENQ 1", "ESC ENQ 6"};
    QString text =
        QString("%1: %2").arg(names[int(answer.question)], QString(answer.bytes.toHex()));
    if (answer.flags)
        text += QString(" +%1").arg(int(answer.flags), 0, 16);
    if (answer.counter >= 0)
        text += QString(" counter %1").arg(answer.counter);
    if (!answer.id.isEmpty())
        text += QString(" id %1").arg(QString(answer.id));
    return text;
}

inline QStringList told(const QVector<StatusAnswer> &answers)
{
    QStringList texts;
    for (const StatusAnswer &answer : answers)
        texts.append(told(answer));
    return texts;
}

}  // namespace answersof
