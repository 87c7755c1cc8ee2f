#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

namespace tool {

/// The option that names the language of the words that the library itself prints.
QCommandLineOption languageOption();

/// Has the library use that language, if the option names one; without it no translation is used,
/// whatever the locale is. Complains and gives false if there is no such translation.
bool useLanguage(const QCommandLineParser &parser);

/// Has the checker of templates use the language that a command line names, also in a help, if it
/// has its words in it.
void useLanguageOfRules(const QStringList &arguments);

}  // namespace tool
