#pragma once

#include <QByteArray>
#include <vector>

#include "encoder/printdots_p.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// Printers of ESC/POS obey DLE EOT, DLE ENQ and DLE DC4 at once, even where the bytes are dots of
/// a picture, and Star's obey ESC ACK SOH. So these bytes must not stand side by side.
namespace hazards {

/// What a model obeys inside data.
struct Rules
{
    Dialect dialect = Dialect::EscPos;
    bool switchesRealTime = false;  ///< pulse and power-off of DLE DC4 can be switched off
};

Rules rulesOf(const PrinterProfile &profile);

/// Whether any bytes side by side are obeyed, with nothing switched off.
bool hasAny(const QByteArray &bytes, Rules rules);
/// Whether those that can't be switched off are among them.
bool hasLasting(const QByteArray &bytes, Rules rules);
/// Whether a character may be defined by these dots, without anything that lasts.
bool isDefinable(const Paper::Picture &drawing, const PrinterProfile &profile);

/// Two parts which, one printed over the other, are the dots of `data`, and which are obeyed
/// nowhere. The second is empty if the first is all.
struct Parts
{
    QByteArray first;
    QByteArray second;
};
Parts partsOf(const QByteArray &data, Rules rules);

/// Columns of three bytes as so many side by side in each command that nothing is obeyed; none if
/// something stands inside of a column.
std::vector<int> columnsApart(const QByteArray &columns, Rules rules);

/// Rows of a picture that can't go as they are, as lasting hazards stand in them.
std::vector<bool> rowsWithin(const PrintDots &dots, Rules rules);
/// Whether such stand at the end of a row and the beginning of the next one.
bool standsBetween(const PrintDots &dots, int upperRow, Rules rules);

/// Where bands begin that hold all such rows, from top to bottom, none beyond `height` if that can
/// be; rows of dots below the picture are free as far as `height`.
std::vector<int> bandsFor(const std::vector<bool> &rows, int height);

}  // namespace hazards

}  // namespace printerslib::drivers
