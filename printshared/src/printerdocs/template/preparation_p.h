#pragma once

#include <QStringList>

#include "printerdocs/printerdocumentformatter.h"

namespace templates {

/// PrinterDocumentFormatter::prepareDocument() of a template's lines.
/// @param silentLines so many of the lines, counted where they are filled, have been to the log
///                    already: they write nothing to it, nor are special symbols loaded again
QStringList preparedLines(const PrinterDocumentFormatter &formatter, QStringList lines,
                          const PrinterDocument &document, int silentLines = 0);

}  // namespace templates
