#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "printerdocs/document/lastofeachsize_p.h"
#include "printerdocs/documentblock.h"

namespace documents {

/// Texts of arrays in Base64.
using Base64Texts = LastOfEachSize<QString>;

/// The map form of a block. Texts are those of all blocks of a document.
QMap<QString, QVariant> mapOf(const DocumentBlock &block, Base64Texts &texts);

}  // namespace documents
