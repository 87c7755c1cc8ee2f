#pragma once

#include <QFile>
#include <QImage>

/// Picture files of others: their formats, and what reading one may cost.
namespace picturefile {

/// The most pixels of a picture that is read or made, 4096 by 4096: ten metres of paper.
constexpr qint64 mostPixels = qint64(16) << 20;

/// Reads the first picture of an open, regular file. Its content says which format it has: PNG,
/// BMP, GIF, JPEG, PBM, PGM, PPM, XBM, XPM or one of those that the library was built with beside
/// them (PRINTERSLIB_MORE_PICTURE_FORMATS).
///
/// What a cut-off file lacks is white, and so are colours that its table lacks. A JPEG of more than
/// 4 Mi pixels may be scaled while it is read.
/// @param scaledSize the size that the caller is going to scale a picture of the given size to
/// @return a null image for any other file, one of more than mostPixels before or after scaling,
/// one that doesn't tell its size in front of its pixels, and one that can't be read
QImage read(QFile &file, QSize (*scaledSize)(const QSize &size));

}  // namespace picturefile
