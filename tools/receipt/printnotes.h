#pragma once

#include <printerslib/drivers/printlayout.h>

#include <QStringList>
#include <QVector>

#include "places.h"
#include "printerdocs/textprinterdocument.h"

namespace tool {

/// What is told of a layout besides its own notes, all in the order of the document: lines that are
/// too long for the paper.
QVector<printerslib::drivers::PrintNote> notesOf(const printerslib::drivers::PrintLayout &layout,
                                                 const TextPrinterDocument &document);
/// Notes as they are told, each with its place.
QStringList textsOf(const QVector<printerslib::drivers::PrintNote> &notes, const Places &places);

}  // namespace tool
