#pragma once

#include <QIODevice>
#include <QImage>
#include <QString>
#include <functional>

#include "layout.h"
#include "typeface.h"

namespace receiptpreview {

/// A picture of the whole paper, in its real size at scale 1. The same layout gives the same bytes.
/// @{

/// Whole numbers: a dot of the print head is so many pixels wide and high in a PNG.
constexpr int greatestScale = 8;
/// What readers of PNG accept.
constexpr int tallestPng = 1'000'000;
/// Pages of a PDF end at a row before this; readers accept 5 m at most.
constexpr int tallestPageMillimetres = 2000;

/// Called with the dots that are painted, and with all.
using Progress = std::function<void(int done, int all)>;

/// A PNG of 8 bits per pixel with a palette, written in bands: memory doesn't grow with its height.
bool writePng(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error);
/// Pages as wide as the paper. Text can be searched and copied.
bool writePdf(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error);
bool writeSvg(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error);

/// @}

/// The part of the paper from its top to a height, a pixel per dot.
QImage topOf(const Layout &layout, const Typeface &typeface, int height);

}  // namespace receiptpreview
