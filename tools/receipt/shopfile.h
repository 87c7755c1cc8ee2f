#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <optional>

namespace tool {

/// The option --config.
QCommandLineOption shopFileOption();

/// The file that says which printer a shop has: that of --config, else the user's, else the
/// machine's; empty if there is none.
QString shopFileOf(const QCommandLineParser &parser);

/// What the file says, as options of the command line, of which a command may lack some. What the
/// command line says of the same, or of what it belongs to, prevails, and isn't among them.
/// Complains, naming file and key, and gives nothing if something in the file is wrong.
std::optional<QStringList> shopFileOptions(const QCommandLineParser &parser);

}  // namespace tool
