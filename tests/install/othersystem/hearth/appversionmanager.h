#pragma once

#include <QStringList>

#include "hearth/appversion.h"

namespace hearth {

class Q_DECL_EXPORT AppVersionManager
{
public:
    /// Puts "other " in front of the version.
    static AppVersion addVersion(const QString &name, const AppVersion &version);
    static void addLocalisation(const QString &name);
    /// What has been entered, in order.
    static QStringList entered();
};

}  // namespace hearth
