#include "hearth/initconfig.h"

#include <QDir>
#include <QFileInfo>

namespace hearth {

namespace {

QString fileOrOverride(const QString &fileName)
{
    const QString override = qEnvironmentVariable("TARN_CONF");
    return override.isEmpty() ? fileName : override;
}

}  // namespace

InitConfig::InitConfig(const QString &fileName, bool writable)
    : FileConfigHelper(fileOrOverride(fileName), writable)
{}

InitConfig::~InitConfig() = default;

QString InitConfig::workDir() const
{
    const QString folder = QFileInfo(settingsFileName()).absolutePath();
    // An unquoted comma in an INI file makes a list of the value.
    const QStringList parts = value(QStringLiteral("workDir"), QString()).toStringList();
    const QString named = parts.join(QLatin1Char(','));
    if (named.isEmpty())
        return QFileInfo(folder).absolutePath();
    return QDir::cleanPath(QDir(folder).absoluteFilePath(named));
}

QString InitConfig::loggerPath() const
{
    return workDir() + QLatin1String("/log");
}

QString InitConfig::runPath() const
{
    return workDir() + QLatin1String("/run");
}

int InitConfig::keepLogs() const
{
    return value(QStringLiteral("keepLogs"), 30).toInt();
}

bool InitConfig::rotateLogs() const
{
    return value(QStringLiteral("rotateLogs"), true).toBool();
}

QStringList InitConfig::keepLogsHandlers() const
{
    return value(QStringLiteral("keepLogsHandlers"), QStringList()).toStringList();
}

bool InitConfig::cleanAnyOldLogs() const
{
    return value(QStringLiteral("cleanAnyOldLogs"), false).toBool();
}

QString InitConfig::versionsPath() const
{
    return workDir() + QLatin1String("/versions");
}

QString InitConfig::translationsPath() const
{
    return workDir() + QLatin1String("/translations");
}

QString InitConfig::locale() const
{
    return value(QStringLiteral("locale"), QString()).toString();
}

bool InitConfig::setlocale(const QString &locale)
{
    return setValue(QStringLiteral("locale"), locale);
}

}  // namespace hearth
