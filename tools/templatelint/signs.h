#pragma once

#include "analysis.h"
#include "text.h"
#include "values.h"

namespace templatelint {

/// Tells of each sign in a text in front of a value with a sign of its own.
/// @param text   with the values of the document
/// @param source that the text is made of
void reportDoubleSigns(const Text &text, const Source &source, Values &values, Report &report);

}  // namespace templatelint
