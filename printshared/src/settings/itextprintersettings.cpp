#include "settings/itextprintersettings.h"

#include <mutex>

#include "settings/iprintdevicesettings.h"

namespace {

/// The compiled-in models by their identifiers. Each settings object asks for them, and shares this
/// one map until it is given another. A catalogue that can't be read is asked for again.
QMap<QString, PrinterInfo> modelsById()
{
    static std::mutex mutex;
    static QMap<QString, PrinterInfo> models;
    const std::lock_guard<std::mutex> lock(mutex);
    if (models.isEmpty()) {
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        for (const PrinterInfo &info : catalogue)
            models.insert(info.id(), info);
    }
    return models;
}

}  // namespace

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
    _availablePrinters = modelsById();
}

QSharedPointer<ITextPrinterSettings> IPrintDeviceSettings::textPrinterSettings()
{
    return printDeviceSettings().dynamicCast<ITextPrinterSettings>();
}
