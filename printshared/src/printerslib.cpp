#include "printerslib.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

#include "hearth/appversionmanager.h"
#include "latin1text_p.h"

namespace {

using printshared::latin1Text;

// Not literals of QString: the register may keep the texts beyond the unloading of this library.
constexpr QLatin1String libraryName = latin1Text("printerslib");
constexpr QLatin1String libraryVersion = latin1Text("5.0.28");

/// The compiler gives the date with the English name of the month and a one-digit day behind two
/// blanks.
QString buildDate()
{
    const QString compiled =
        QStringLiteral("%1 %2").arg(QLatin1String(__DATE__), QLatin1String(__TIME__)).simplified();
    return QLocale(QStringLiteral("en"))
        .toDateTime(compiled, QStringLiteral("MMM d yyyy hh:mm:ss"))
        .toString(Qt::ISODate);
}

}  // namespace

// Stands before the object below, whose constructor fills it.
hearth::AppVersion PrintersLib::_version;

PrintersLib::PrintersLib()
{
    if (!_version.isValid()) {
        _version = hearth::AppVersionManager::addVersion(
            libraryName, hearth::AppVersion(libraryVersion, buildDate()));
    }
    hearth::AppVersionManager::addLocalisation(libraryName);
}

hearth::AppVersion PrintersLib::version()
{
    return _version;
}

// Made when the library is loaded: that is what registers its version.
static const PrintersLib printersLib;  // clazy:exclude=non-pod-global-static
