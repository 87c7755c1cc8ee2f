#pragma once

#include <QString>
#include <QtGlobal>

#include "hearth/appversion.h"

namespace hearth {

/// Stand-in for the system-wide register of component versions and translations. Libraries enter
/// themselves while they are loaded; this stand-in hands a version back and loads no translation.
class Q_DECL_EXPORT AppVersionManager
{
public:
    AppVersionManager() = delete;

    /// Enters the version of the component. Gives the version as registered.
    static AppVersion addVersion(const QString &name, const AppVersion &version);
    /// Makes the component's translations known.
    static void addLocalisation(const QString &name);
};

}  // namespace hearth
