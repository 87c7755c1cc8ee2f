#include "settings/isystemprintersettings.h"

#include "settings/iprintdevicesettings.h"

ISystemPrinterSettings::~ISystemPrinterSettings() = default;

QSharedPointer<ISystemPrinterSettings> IPrintDeviceSettings::systemPrinterSettings()
{
    return printDeviceSettings().dynamicCast<ISystemPrinterSettings>();
}
