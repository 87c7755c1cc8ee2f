#pragma once

#include <QVector>

#include "hearth/rs232portsettings.h"

/// The line settings that a search tries, 8 data bits and 1 stop bit in all of them: baud rate in
/// the outer loop, parity in the middle, flow control inside. The port name is left unset.
namespace portsettingsmatrix {

/// The 63 entries that most probes walk.
QVector<hearth::Rs232PortSettings> common();
/// The 24 entries that Star printers can be set to.
QVector<hearth::Rs232PortSettings> star();

}  // namespace portsettingsmatrix
