#pragma once

#include <QDateTime>
#include <QString>

namespace hearth {

class AppVersion
{
public:
    AppVersion() = default;
    AppVersion(const QString &version, const QString &buildDate)
        : m_version(version), m_built(QDateTime::fromString(buildDate, Qt::ISODate))
    {}
    bool isValid() const { return !m_version.isEmpty() && m_built.isValid(); }
    QString version() const { return m_version; }
    QDateTime built() const { return m_built; }

private:
    QString m_version;
    QDateTime m_built;
};

}  // namespace hearth
