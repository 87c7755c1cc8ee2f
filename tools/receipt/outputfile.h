#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QIODevice;

namespace tool {

/// Writes a file, whole or not at all, with the mode of the file that it replaces or else the usual
/// one. A symbolic link is followed if it is the user's own or root's; that of another user, who
/// may have put it in a shared folder, is refused, and so is what is neither file nor link. What
/// somebody puts there during the writing is replaced and not followed. Complains and gives false
/// on failure.
/// @param write gives whether it could write, and sets the text if it has a better one than the
///              device's
bool writeFile(const QString &fileName,
               const std::function<bool(QIODevice &device, QString *error)> &write);

/// The same with this content.
bool writeFile(const QString &fileName, const QByteArray &content);

/// Why a file that is there isn't written by a command that has --force.
QString isThereText(const QString &fileName);

/// Complains and gives false if one of the files that are to be written is there and is one of
/// those that they are made of.
bool keepsSources(const QStringList &outputs, const QStringList &sources);

}  // namespace tool
