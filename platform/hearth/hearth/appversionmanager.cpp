#include "hearth/appversionmanager.h"

namespace hearth {

AppVersion AppVersionManager::addVersion(const QString &name, const AppVersion &version)
{
    Q_UNUSED(name)
    return version;
}

void AppVersionManager::addLocalisation(const QString &name)
{
    Q_UNUSED(name)
}

}  // namespace hearth
