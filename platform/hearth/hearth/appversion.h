#pragma once

#include <QString>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's version of a component: a version and a build date, both texts that
/// are kept as they are given. Plain value; any thread may use its own object.
class Q_DECL_EXPORT AppVersion
{
public:
    /// Invalid until something is assigned.
    AppVersion() = default;
    /// @param version   for example "5.0.28"
    /// @param buildDate ISO date form; empty: not known
    AppVersion(const QString &version, const QString &buildDate);

    /// Whether there is a version.
    bool isValid() const;
    QString version() const;
    QString buildDate() const;

private:
    QString m_version;
    QString m_buildDate;
};

}  // namespace hearth
