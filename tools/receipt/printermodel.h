#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "printers/printerinfo.h"

namespace tool {

/// The catalogue's record of a model. Complains and gives nothing for an unknown one.
std::optional<PrinterInfo> findModel(const QString &id);

/// Characters per line of a model's font (from 0) on one of its papers, as the library works them
/// out.
int charactersPerLine(const PrinterInfo &model, int paper, int font);

}  // namespace tool
