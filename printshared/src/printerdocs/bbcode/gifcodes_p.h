#pragma once

#include <QFile>

/// The compressed pixels of GIF files.
namespace gifcodes {

/// Whether the codes of a GIF's first picture stand for more pixels than a limit. Qt's reader goes
/// over all of them, also behind the picture's end: three bytes are up to 8192 pixels.
bool areLongerThan(QFile &file, qint64 limit);

}  // namespace gifcodes
