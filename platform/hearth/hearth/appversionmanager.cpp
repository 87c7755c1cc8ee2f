#include "hearth/appversionmanager.h"

#include <mutex>

namespace hearth {

namespace {

struct LocalisedComponents
{
    std::mutex mutex;
    QStringList names;
};

// Made on first use, as libraries enter themselves during static construction.
LocalisedComponents &localisedComponents()
{
    static LocalisedComponents components;
    return components;
}

}  // namespace

AppVersion AppVersionManager::addVersion(const QString &name, const AppVersion &version)
{
    Q_UNUSED(name)
    return version;
}

void AppVersionManager::addLocalisation(const QString &name)
{
    LocalisedComponents &components = localisedComponents();
    const std::lock_guard<std::mutex> lock(components.mutex);
    // A copy of the characters: a literal of a library goes when that is unloaded.
    if (!components.names.contains(name))
        components.names.append(QString(name.constData(), name.size()));
}

QStringList AppVersionManager::localisations()
{
    LocalisedComponents &components = localisedComponents();
    const std::lock_guard<std::mutex> lock(components.mutex);
    return components.names;
}

}  // namespace hearth
