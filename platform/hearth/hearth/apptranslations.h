#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's choice of the language in which components print their own words. The
/// components are those that AppVersionManager::addLocalisation() was told of.
///
/// A translation is a file COMPONENT_LANGUAGE.qm, such as printerslib_ru.qm, in two folders: that
/// of the system's configuration (InitConfig::translationsPath()), and
/// share/printerslib/translations beside the folder of this library. Where both have it, what the
/// first one translates prevails, and the second one gives the rest.
///
/// Only who calls use() chooses a language. Neither the locale of the process nor its environment
/// nor the configuration's key "locale" does: what a receipt says mustn't depend on who started a
/// daemon.
class Q_DECL_EXPORT AppTranslations
{
public:
    AppTranslations() = delete;

    /// Installs the translations to a language in the application object, in place of those that an
    /// earlier call installed. Another thread that prints meanwhile gets the words of the one
    /// language or of the other, and no untranslated ones. The translations go with the application
    /// object; a file that is changed later counts from the next call on.
    ///
    /// A component without a translation to the language keeps the words that it has, and so do all
    /// when this gives false for one of the other reasons. Whatever fails is logged as a warning.
    /// @param language as in the files' names: Latin letters, digits, "_", "-" and "@", "ru" or
    ///                 "zh_TW" for example, and exactly so; empty: no translation
    /// @return whether all components have what was asked for; false also where there is no
    ///         component to translate, no application object, as during static construction, or
    ///         where the caller isn't the thread of that object
    static bool use(const QString &language);

    /// The languages to which each of the components has a translation, by the names of the files,
    /// in alphabetical order. Any thread may call it, also without an application object.
    static QStringList languages();
};

}  // namespace hearth
