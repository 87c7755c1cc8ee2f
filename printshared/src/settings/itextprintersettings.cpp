#include "settings/itextprintersettings.h"

#include <mutex>

#include "settings/iprintdevicesettings.h"

namespace {

// At file scope, so that they outlive the static objects of clients.
std::mutex modelsMutex;
QMap<QString, PrinterInfo> models;  // clazy:exclude=non-pod-global-static

void insertModels(QMap<QString, PrinterInfo> &map)
{
    const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
    for (const PrinterInfo &info : catalogue)
        map.insert(info.id(), info);
}

/// The compiled-in models by their identifiers. Each settings object asks for them, and shares this
/// one map until it is given another. A catalogue that can't be read is asked for again.
QMap<QString, PrinterInfo> sharedModels()
{
    {
        const std::lock_guard<std::mutex> lock(modelsMutex);
        if (!models.isEmpty())
            return models;
    }
    // Not under the lock: a failure is logged, and a client's message handler may use the settings.
    QMap<QString, PrinterInfo> read;
    insertModels(read);
    const std::lock_guard<std::mutex> lock(modelsMutex);
    if (models.isEmpty())
        models = read;
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
    if (_availablePrinters.isEmpty())
        _availablePrinters = sharedModels();
    else
        insertModels(_availablePrinters);
}

QSharedPointer<ITextPrinterSettings> IPrintDeviceSettings::textPrinterSettings()
{
    return printDeviceSettings().dynamicCast<ITextPrinterSettings>();
}
