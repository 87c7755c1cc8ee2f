#pragma once

#include <QMap>
#include <QString>

#include "printers/paperinfo.h"
#include "printers/printerinfo.h"
#include "printerslib_export.h"

/// What is particular to printers that are driven by text commands over a serial line: the known
/// models, the paper and the codec. IPrintDeviceSettings::textPrinterSettings() finds it.
///
/// The known models belong to the object, which is filled once and then read: setting or loading
/// them while another thread uses the same object isn't allowed. The implementation tells what
/// holds for the values.
class PRINTERSLIB_EXPORT ITextPrinterSettings
{
public:
    /// Loads the known models.
    ITextPrinterSettings();
    virtual ~ITextPrinterSettings();

    /// The known models under their ids.
    virtual QMap<QString, PrinterInfo> availablePrinters() const;
    virtual void setAvailablePrinters(const QMap<QString, PrinterInfo> &printers);

    /// The record of that id, or a default record when it isn't known; without an id, of the
    /// printer in use.
    virtual PrinterInfo printerInfo(const QString &name) const;
    virtual PrinterInfo printerInfo() const = 0;
    /// The chosen paper of the named printer, or of the one in use.
    virtual PaperInfo paper(const QString &name) const = 0;
    virtual PaperInfo paper() const = 0;
    /// Id of the chosen paper type.
    virtual int paperTypeId(const QString &name) const = 0;
    virtual int paperTypeId() const = 0;
    virtual void setPaperTypeId(const QString &name, int id) = 0;
    virtual void setPaperTypeId(int id) = 0;
    /// Whether the codec can be set.
    virtual bool needCodecSettings() const = 0;
    virtual bool needCodecSettings(const QString &name) const = 0;
    /// Name of the text codec, as QTextCodec knows it.
    virtual QString codec() const = 0;
    virtual QString codec(const QString &name) const = 0;
    virtual void setCodec(const QString &codec) = 0;
    virtual void setCodec(const QString &name, const QString &codec) = 0;

    /// Puts the models of the compiled-in catalogue into the map; a model of the same identifier is
    /// replaced, others stay.
    virtual void loadAvailablePrinters();

protected:
    /// What availablePrinters() gives.
    QMap<QString, PrinterInfo> _availablePrinters;
};
