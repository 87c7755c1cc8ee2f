#pragma once

#include "printdevicefinder/printerdialogue_p.h"
#include "printdevicefinder/printershelper.h"

/// What the dialogue on one line setting led to.
enum class EntryOutcome {
    NextEntry,   ///< Not this setting. From a whole walk: the list ran out, or a stop ended it.
    Identified,  ///< A printer has answered.
    GiveUp,      ///< The probe makes no sense on this port any more.
};

namespace discovery {

using WaitForInput = bool (*)(QSerialPort &port, int milliseconds);

/// How all waits for input are done: by QSerialPort::waitForReadyRead(). Tests put a wait here that
/// ends as soon as their printer has decided to stay silent; nothing else changes it.
extern WaitForInput waitForInput;

}  // namespace discovery
