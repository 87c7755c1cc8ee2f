#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <optional>

#include "picture.h"

namespace tool {

/// A form of pictures: what files of it are called, and what writes them.
struct PictureForm
{
    const char *suffix;
    bool (*write)(const receiptpreview::Layout &layout, const receiptpreview::Typeface &typeface,
                  int scale, QIODevice &device, const receiptpreview::Progress &progress,
                  QString *error);
};

/// The form of this name, "png", "pdf" or "svg"; null if it is none.
const PictureForm *pictureForm(const QString &name);
/// The form that a file name ends in; null if it ends in none.
const PictureForm *pictureFormOf(const QString &fileName);

/// Draws a picture into a file, whole or not at all, with a line of progress. Complains and gives
/// false on failure.
bool writePicture(const PictureForm &form, const receiptpreview::Layout &layout,
                  const receiptpreview::Typeface &typeface, int scale, const QString &fileName);

/// The letters of pictures. Complains and gives nothing if their files can't be read.
std::optional<receiptpreview::Typeface> loadedTypeface();

/// The option --scale.
QCommandLineOption scaleOption();
/// What that option says. Complains and gives nothing outside the range.
std::optional<int> scaleOf(const QCommandLineParser &parser);

}  // namespace tool
