#pragma once

#include <QString>
#include <optional>

#include "printerdocs/monochromeimage.h"

/// Pictures for BbCodeParser.
namespace bbcodeimage {

/// Reads the first picture, by name, whose file name matches `name` followed by "*". The image has
/// rows of 32 bits' alignment and the file's absolute path as its name.
///
/// A picture of more than 128 Mi pixels, as stored or as scaled, counts as unreadable: it could
/// never be printed, and its file may be a few bytes long.
/// @param directory empty: the current directory
/// @return nothing if there is no such file or if it can't be read
std::optional<MonochromeImage> load(const QString &directory, const QString &name);

}  // namespace bbcodeimage
