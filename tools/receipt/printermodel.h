#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "printers/printerinfo.h"

class QTextCodec;

namespace tool {

/// The catalogue's record of a model. Complains and gives nothing for an unknown one.
std::optional<PrinterInfo> findModel(const QString &id);

/// The character set of a printer, which --code-page names. Complains and gives null if there is
/// none of that name.
const QTextCodec *findCodePage(const QString &name);

/// Characters per line of a model's font (from 0) on one of its papers, as the library works them
/// out.
int charactersPerLine(const PrinterInfo &model, int paper, int font);

}  // namespace tool
