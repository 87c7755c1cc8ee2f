#pragma once

#include <QByteArray>

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// What a barcode holds, of what a stream sends for it: without marks of code sets, with the check
/// digit that printers put behind the numbers of articles.
QByteArray barcodePayload(Paper::Symbology symbology, const QByteArray &sent, bool hasMarks);

}  // namespace printerslib::drivers
