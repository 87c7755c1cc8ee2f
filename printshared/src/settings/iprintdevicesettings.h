#pragma once

#include <QSharedPointer>
#include <QString>

#include "printerslib_export.h"

namespace hearth {
class RS232Settings;
}  // namespace hearth

class ISystemPrinterSettings;
class ITextPrinterSettings;

/// How the rest of the system reads the settings of the printer in use, whatever kind of printer
/// that is. PrinterSettings implements it.
///
/// Any thread may use any operation.
class PRINTERSLIB_EXPORT IPrintDeviceSettings
{
public:
    /// Case of the printed text.
    enum ECharactersMode : int {
        CharactersAsWritten = 0,
        CharactersUpperCase = 1,
        CharactersLowerCase = 2,
    };

    virtual ~IPrintDeviceSettings();

    /// The serial settings of the process, renamed to `name`. There is one object for all names;
    /// it is never null.
    virtual QSharedPointer<hearth::RS232Settings> port(const QString &name) const = 0;
    /// The serial settings under the name of the printer in use.
    virtual QSharedPointer<hearth::RS232Settings> port() const = 0;

    /// Kind of the printer: 0 none, 1 text printer, 2 system printer.
    virtual unsigned int printerType() const = 0;
    /// Sets the kind; a number above 2 counts as 0.
    virtual void setPrinterType(unsigned int type) = 0;

    /// Name of the printer in use: a model of the catalogue or a printer of the operating system.
    virtual QString printerId() const = 0;
    /// Sets the name and gives it to the serial settings too.
    virtual void setPrinterId(const QString &name) = 0;

    /// Whether the traffic with the printer is to be logged.
    virtual bool portLoggingEnabled() const = 0;
    virtual void setPortLoggingEnabled(bool enabled) = 0;

    /// Empty lines that the printer feeds behind a document.
    virtual int emptyStringsAtEnd() const = 0;
    virtual void setEmptyStringsAtEnd(int count) = 0;

    /// Blanks in front of every line. Intended: the getter's spelling is what clients call.
    virtual int spacessBeforeString() const = 0;
    virtual void setSpacesBeforeString(int count) = 0;

    /// Case of the printed text.
    virtual ECharactersMode charactersMode() const = 0;
    virtual void setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode) = 0;

    /// The settings object of the process; null until a client installs one.
    static QSharedPointer<IPrintDeviceSettings> printDeviceSettings();
    /// Installs the settings object of the process; null removes it.
    static void setPrintDeviceSettings(const QSharedPointer<IPrintDeviceSettings> &settings);
    /// The settings object of the process as that of a system printer; null when there is none, or
    /// it is of another kind.
    static QSharedPointer<ISystemPrinterSettings> systemPrinterSettings();
    /// The settings object of the process as that of a text printer; null when there is none, or it
    /// is of another kind.
    static QSharedPointer<ITextPrinterSettings> textPrinterSettings();

protected:
    /// What printDeviceSettings() gives.
    static QSharedPointer<IPrintDeviceSettings> _printDeviceSettings;
};
