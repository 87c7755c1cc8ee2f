#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace tool {

/// The option that names the language of the words that the library itself prints.
QCommandLineOption languageOption();

/// Has the library use that language, if the option names one; without it no translation is used,
/// whatever the locale is. Complains and gives false if there is no such translation.
bool useLanguage(const QCommandLineParser &parser);

}  // namespace tool
