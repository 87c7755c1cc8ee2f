#pragma once

#include <QString>
#include <QStringList>

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printtarget.h"

namespace printerslib::drivers {

/// The same document with a line of its own above its first row, centered and in bold type where
/// the model has it, such as the word that says that a receipt is a repeat. What is done with the
/// ticket before it, and the drawer, stay in front of the line; marks move with their rows.
///
/// What the printer has no letters for are dots, as in documents; notes on that are of the whole
/// document. A line that is too long goes on in the next one. Any thread may call it.
/// @param document of DocumentEncoder for the same target; or bytes without marks, which have the
///                 line in front of all and have to set what they need. One with an error stays as
///                 it is
/// @param line     empty: nothing is added
PRINTERSLIB_DRIVERS_EXPORT EncodedDocument withLineInFront(const EncodedDocument &document,
                                                           const PrintTarget &target,
                                                           const QString &line);

/// The same with several lines, from top to bottom; empty ones are left out.
PRINTERSLIB_DRIVERS_EXPORT EncodedDocument withLinesInFront(const EncodedDocument &document,
                                                            const PrintTarget &target,
                                                            const QStringList &lines);

/// The word that says that a receipt is a repeat, in the language whose translation is installed,
/// else in English: for withLineInFront().
PRINTERSLIB_DRIVERS_EXPORT QString repeatMark();

}  // namespace printerslib::drivers
