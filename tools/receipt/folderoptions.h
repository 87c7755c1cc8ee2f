#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

namespace tool {

/// The option --symbols, the folder of the special symbol files.
QCommandLineOption symbolsOption();
/// The option --images, the folder of a BBCode text's pictures.
/// @param byDefault the folder without it, as the help calls it
QCommandLineOption imagesOption(const QString &byDefault);

/// The folder that such an option names, or else that of the file that is read.
QString folderOf(const QCommandLineParser &parser, const QCommandLineOption &option,
                 const QString &fileName);
/// Complains and gives false if such an option names no folder.
bool isFolder(const QCommandLineParser &parser, const QCommandLineOption &option);

}  // namespace tool
