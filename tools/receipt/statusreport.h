#pragma once

#include <printerslib/drivers/printerstatus.h>

#include <QJsonObject>

namespace tool {

/// Prints what a printer tells of itself, a line for each thing, and sentences for people below.
void printStatus(const printerslib::drivers::PrinterStatus &status);
/// The same as JSON. What wasn't told is null; "state" is the record that a print service that
/// works would publish.
QJsonObject statusJson(const printerslib::drivers::PrinterStatus &status);

}  // namespace tool
