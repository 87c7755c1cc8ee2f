#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include "hearth/appversion.h"

namespace hearth {

/// Stand-in for the system-wide register of component versions and translations. Libraries enter
/// themselves while they are loaded; this stand-in hands a version back, and keeps the names of
/// those that have translations for AppTranslations. Any thread may call it.
class Q_DECL_EXPORT AppVersionManager
{
public:
    AppVersionManager() = delete;

    /// Enters the version of the component. Gives the version as registered.
    static AppVersion addVersion(const QString &name, const AppVersion &version);
    /// Makes known that the component has translations. Nothing is installed: a library calls this
    /// while it is loaded, before there is an application object to install a translation in.
    static void addLocalisation(const QString &name);
    /// The names of the components that have translations, each once, in the order of their entry.
    static QStringList localisations();
};

}  // namespace hearth
