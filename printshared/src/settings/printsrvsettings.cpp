#include "settings/printsrvsettings.h"

#include "hearth/dircreator.h"

PrintSrvSettings::PrintSrvSettings()
    : hearth::InitConfig(QStringLiteral("/opt/tarnwick/etc/tarn.conf"), false)
{
    using hearth::DirCreator;
    DirCreator::checkAndCreate(PrintSrvSettings::serviceDataPath(), DirCreator::DEFAULT_ALL);
    DirCreator::checkAndCreate(QStringLiteral("%1/png").arg(InitConfig::workDir()),
                               DirCreator::DEFAULT_ALL);
}

PrintSrvSettings::~PrintSrvSettings() = default;

int PrintSrvSettings::stateInterval() const
{
    return 30000;
}

QString PrintSrvSettings::serviceDataPath() const
{
    return QStringLiteral("%1/printsrv").arg(workDir());
}

QString PrintSrvSettings::kpkGenConfig() const
{
    return QStringLiteral("%1/kpk.gen").arg(serviceDataPath());
}

QString PrintSrvSettings::pngOutputFile(int number)
{
    return QStringLiteral("%1/png/doc_%2.png").arg(workDir(), QString::number(number));
}
