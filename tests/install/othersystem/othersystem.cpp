#include <QFileInfo>
#include <cmath>

#include "hearth/appversionmanager.h"
#include "hearth/dircreator.h"
#include "hearth/fixnumber.h"
#include "hearth/initconfig.h"
#include "hearth/rs232settings.h"

namespace {

// The library enters itself while it is loaded.
QStringList &enteredNames()
{
    static QStringList names;
    return names;
}

QStringList askedPaths;

}  // namespace

namespace hearth {

AppVersion AppVersionManager::addVersion(const QString &name, const AppVersion &version)
{
    enteredNames().append(name);
    return AppVersion(QStringLiteral("other %1").arg(version.version()),
                      version.built().toString(Qt::ISODate));
}

void AppVersionManager::addLocalisation(const QString &name)
{
    enteredNames().append(QStringLiteral("texts of %1").arg(name));
}

QStringList AppVersionManager::entered()
{
    return enteredNames();
}

const QFileDevice::Permissions DirCreator::DEFAULT_ALL = QFileDevice::ReadOwner;

bool DirCreator::checkAndCreate(const QString &path, QFileDevice::Permissions permissions)
{
    askedPaths.append(permissions == DEFAULT_ALL ? path : QStringLiteral("wrong permissions"));
    return false;
}

QStringList DirCreator::asked()
{
    return askedPaths;
}

FixNumber::FixNumber(quint32 multiplier, double value)
    : m_parts(static_cast<qint64>(std::trunc(value * qMax(multiplier, 1U)))),
      m_multiplier(qMax(multiplier, 1U))
{}

QString FixNumber::toString(QChar decimalSeparator, QChar) const
{
    return QStringLiteral("%1%2%3")
        .arg(m_parts / m_multiplier)
        .arg(decimalSeparator)
        .arg(m_parts % m_multiplier);
}

InitConfig::InitConfig(const QString &fileName, bool) : m_fileName(fileName) {}

InitConfig::~InitConfig() = default;

QString InitConfig::workDir() const
{
    return QStringLiteral("/other/%1").arg(QFileInfo(m_fileName).fileName());
}

RS232Settings::RS232Settings(const QString &name) : m_name(name) {}

QList<QVariant> RS232Settings::toList() const
{
    return {QVariantMap{{QStringLiteral("group"), m_name},
                        {QStringLiteral("key"), QStringLiteral("line")},
                        {QStringLiteral("value"), m_portSettings.portName()}}};
}

bool RS232Settings::setValue(const QMap<QString, QVariant> &item)
{
    if (item.value(QStringLiteral("key")) != QStringLiteral("line"))
        return false;
    m_portSettings.setPortName(item.value(QStringLiteral("value")).toString());
    return true;
}

}  // namespace hearth
