#pragma once

#include <printerslib/drivers/printtarget.h>

#include <QByteArray>
#include <QString>

#include "printermodel.h"
#include "templatelint.h"

namespace tool {

/// The paper and the fonts of a model, as the checker of templates takes them.
templatelint::Paper lintPaperOf(const ChosenPaper &chosen);

/// Why a code can't be drawn at all; empty if it can.
QString drawingFaultOf(templatelint::CodeKind kind, const QByteArray &payload);
/// Why a model doesn't print a code; empty if it does.
QString codeFaultOf(templatelint::CodeKind kind, const QByteArray &payload,
                    const printerslib::drivers::PrintTarget &target);

}  // namespace tool
