#pragma once

#include <QString>
#include <optional>

#include "printerdocs/monochromeimage.h"

/// Pictures for BbCodeParser.
namespace bbcodeimage {

/// Reads the first picture, by name, whose file name matches `name` followed by "*". The image has
/// rows of 32 bits' alignment and the file's absolute path as its name.
///
/// What picturefile::read() doesn't read, and a picture that would have more pixels than it allows
/// when it is scaled, count as unreadable. The last pictures, of 8 MiB in all, are kept for the
/// whole process, and taken again while path, size and times of the file stay; one that was written
/// within the last two seconds is read each time. Any thread may call this.
/// @param name lower-cased; "?" and "*" are wildcards
/// @param directory empty: the current directory
/// @return nothing if there is no such file or if it can't be read
std::optional<MonochromeImage> load(const QString &directory, const QString &name);

}  // namespace bbcodeimage
