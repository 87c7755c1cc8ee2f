#include "hearth/appversion.h"

namespace hearth {

AppVersion::AppVersion(const QString &version, const QString &buildDate)
    : m_version(version), m_buildDate(buildDate)
{}

bool AppVersion::isValid() const
{
    return !m_version.isEmpty();
}

QString AppVersion::version() const
{
    return m_version;
}

QString AppVersion::buildDate() const
{
    return m_buildDate;
}

}  // namespace hearth
