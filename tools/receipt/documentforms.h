#pragma once

#include <QString>
#include <QStringList>

#include "printerdocs/textprinterdocument.h"

namespace tool {

/// The lines of a document's forms.
/// @param width characters of a line
QStringList textLines(const TextPrinterDocument &document, int width);
QStringList htmlLines(const TextPrinterDocument &document);
/// With the receipt's text as it is.
QStringList unescapedHtmlLines(const TextPrinterDocument &document);
/// The map form.
QStringList jsonLines(const TextPrinterDocument &document, bool indented);

}  // namespace tool
