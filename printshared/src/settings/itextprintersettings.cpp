#include "settings/itextprintersettings.h"

#include "settings/iprintdevicesettings.h"

ITextPrinterSettings::ITextPrinterSettings()
{
    ITextPrinterSettings::loadAvailablePrinters();
}

ITextPrinterSettings::~ITextPrinterSettings() = default;

QMap<QString, PrinterInfo> ITextPrinterSettings::availablePrinters() const
{
    return _availablePrinters;
}

void ITextPrinterSettings::setAvailablePrinters(const QMap<QString, PrinterInfo> &printers)
{
    _availablePrinters = printers;
}

PrinterInfo ITextPrinterSettings::printerInfo(const QString &name) const
{
    return _availablePrinters.value(name);
}

void ITextPrinterSettings::loadAvailablePrinters()
{
    _availablePrinters.clear();
    const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
    for (const PrinterInfo &info : catalogue)
        _availablePrinters.insert(info.id(), info);
}

QSharedPointer<ITextPrinterSettings> IPrintDeviceSettings::textPrinterSettings()
{
    return printDeviceSettings().dynamicCast<ITextPrinterSettings>();
}
