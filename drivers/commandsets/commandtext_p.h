#pragma once

#include <QPair>
#include <QString>
#include <QVector>

#include "commandsets/commandrow_p.h"
#include "printerslib/drivers/streamcommand.h"

namespace printerslib::drivers {

/// A byte as manuals write it: "ESC", "k", "0xFA".
QString nameOfByte(char byte);
/// The command as manuals write it, "GS v 0". Of what nobody knows all its bytes, of what carries
/// its length the ones before that.
QString mnemonicOf(const StreamCommand &command);
/// The operands that are there, by their names. Those that belong together are one: of "m xL xH"
/// these are "m" and "x".
QVector<QPair<QString, qint64>> operandsOf(const CommandRow &row, const QByteArray &operands);
QVector<QPair<QString, qint64>> operandsOf(const StreamCommand &command);
/// The data behind the operands, without the mark that ends it.
QByteArray dataOf(const StreamCommand &command);
/// Of an incomplete command: "ends inside GS v 0, 1,204 of 9,216 bytes". Bytes of its data are
/// counted, or if it has none its own; without a count if it isn't known how many there would be.
QString endsInside(const StreamCommand &command);
/// "1 byte", "5,760 bytes"
QString countedBytes(qint64 count);

}  // namespace printerslib::drivers
