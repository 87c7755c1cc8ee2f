#pragma once

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// Pictures out of the ways in which printers take them. Data that is too short gives white dots.

/// Bytes that stand below each other, column by column, the highest bit on top.
Paper::Picture pictureOfColumns(const QByteArray &data, int columns, int bytesPerColumn);
/// Rows of whole bytes.
Paper::Picture pictureOfRows(const QByteArray &data, int width, int height);
/// The left and upper part of a picture.
Paper::Picture croppedPicture(const Paper::Picture &picture, QSize size);
/// Turned clockwise by quarters.
Paper::Picture turnedPicture(const Paper::Picture &picture, int quarters);
/// Turns a code's modules clockwise by quarters; its place is the caller's.
void turnCode(Paper::Code &code, int quarters);
/// The size on paper.
QSize dotsOf(const Paper::Picture &picture);

}  // namespace printerslib::drivers
