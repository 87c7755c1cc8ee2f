#pragma once

#include <QVector>

#include "text.h"

namespace templatelint {

/// The pieces of text that are left of a template when a client cuts it at its fiscal markers, as
/// PrinterDocumentFormatter::splitByFiscalParts() does.
QVector<QVector<Text>> fiscalPieces(const QVector<Text> &lines);

}  // namespace templatelint
