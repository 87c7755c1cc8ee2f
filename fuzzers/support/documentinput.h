#pragma once

#include <QVariant>

#include "fuzzing.h"

namespace fuzzing {

/// The map form of a document, mostly with the keys and values that it should have.
QVariantMap takeDocument(FuzzedDataProvider &input);

}  // namespace fuzzing
