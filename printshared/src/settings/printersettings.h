#pragma once

#include <QList>
#include <QMap>
#include <QMutex>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

#include "hearth/rs232settings.h"
#include "printerslib_export.h"
#include "settings/epaperloopflag.h"
#include "settings/iprintdevicesettings.h"

/// The settings that all kinds of printers have in common.
///
/// The values belong to the class: every object of it and of its derived classes is a view on the
/// one set of settings of the process, and destroying an object changes nothing. Nothing is stored
/// on disk; a client carries the item list to its configuration and back.
///
/// An item is a QVariant with a map of "group", "key" and "value". The group is either SECTION, for
/// the ten settings of this class, or the name of the printer in use, for its serial port and for
/// what the derived classes add. There is one stored value for each setting, not one per printer.
///
/// Any thread may use any operation. One mutex, which isn't recursive, guards the values: a derived
/// class that holds it must call nothing here but what takes no lock of that kind: the two forms of
/// port(), setPortSettings() and printerNameToSection(). The serial settings keep the printer's
/// name while an item list is read or written, whatever name another thread asks port() for.
///
/// Nothing is logged and no value of a client's own type is converted under the mutex: message
/// handlers and conversions may use all settings.
class PRINTERSLIB_EXPORT PrinterSettings : public IPrintDeviceSettings
{
public:
    /// Group of the settings that aren't bound to a printer's name: "PRINTER".
    static const QString SECTION;

    /// Keys of the items of SECTION.
    static const QString PRINTER_TYPE;
    static const QString PRINTER_ID;
    static const QString EMPTY_STRINGS_AT_END;
    static const QString SPACES_BEFORE_STRING;
    static const QString PAPER_LOOP_FLAG;
    static const QString MOVE_CHECK_TO;
    static const QString CHARACTER_MODE;
    static const QString ENABLE_PORT_LOGGING;
    static const QString BASE_FISCAL_FONT;
    static const QString DEFAULT_SYMBOLS_PER_LINE;

    /// Other names of five settings, for clients; the library doesn't read them.
    static const QString MAPPED_EMPTY_STRINGS_AT_END;
    static const QString MAPPED_SPACES_BEFORE_STRING;
    static const QString MAPPED_PAPER_LOOP_FLAG;
    static const QString MAPPED_MOVE_CHECK_TO;
    static const QString MAPPED_PRINTER_CHARACTER_MODE;

    /// A view; makes sure that the serial settings exist and bear the printer's name.
    PrinterSettings();
    ~PrinterSettings() override;

    QSharedPointer<hearth::RS232Settings> port(const QString &name) const override;
    QSharedPointer<hearth::RS232Settings> port() const override;
    unsigned int printerType() const override;
    void setPrinterType(unsigned int type) override;
    QString printerId() const override;
    void setPrinterId(const QString &name) override;
    bool portLoggingEnabled() const override;
    void setPortLoggingEnabled(bool enabled) override;
    int emptyStringsAtEnd() const override;
    void setEmptyStringsAtEnd(int count) override;
    int spacessBeforeString() const override;
    void setSpacesBeforeString(int count) override;
    ECharactersMode charactersMode() const override;
    void setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode) override;

    /// Whether the printer in use, or the named one, can form a paper loop; false in this class.
    virtual bool paperLoopSupported() const;
    virtual bool paperLoopSupported(const QString &name) const;

    /// The stored flag, or 0 when the printer in use can't form a loop.
    virtual EPaperLoopFlag paperLoopFlag() const;
    /// Stores the flag whether the printer supports it or not.
    virtual void setPaperLoopFlag(EPaperLoopFlag flag);
    /// The stored flag, or 0 when the named printer can't form a loop.
    virtual EPaperLoopFlag paperLoopFlag(const QString &name);
    /// Stores the flag, or 0 when the named printer can't form a loop.
    virtual void setPaperLoopFlag(EPaperLoopFlag flag, const QString &name);

    /// Whether the receipt movement of the printer can be set; false in this class.
    virtual bool checkMoveSettingsSupported() const;
    virtual bool checkMoveSettingsSupported(const QString &name) const;

    /// Number of the font of fiscal text; 1 is the printer's first font.
    virtual int baseFiscalFont();
    virtual void setBaseFiscalFont(const int &font);

    /// Characters per line of the printer that the stored type names, whatever class this object
    /// has; for a type without a class of its own it is defSymbolsPerLine() of this object.
    virtual int getDefSymbolsPerLine();
    /// Sets the characters per line; 0 leaves them to the kind of printer.
    virtual void setDefSymbolsPerLine(const int &count);

    /// All settings as items, first the ten of SECTION and then the serial port's. The stored
    /// values are exported as they are, also those that the printer in use doesn't support.
    virtual QList<QVariant> toList() const;
    /// Takes a list of items in its order; what isn't known is passed over. The item with the
    /// printer's name has to precede those of the printer's own group, as it does in toList().
    virtual void setList(const QList<QVariant> &list);
    /// Takes one item. Text that is no number counts as 0.
    /// @return whether the item was taken
    virtual bool setValue(const QMap<QString, QVariant> &item);

    /// The stored characters per line.
    virtual int defSymbolsPerLine();

    /// Copies the text and the port settings of `source` into the serial settings of the process,
    /// which keep their name; `name` is used when they have to be made.
    void setPortSettings(const QString &name, const hearth::RS232Settings &source);

    /// The name with "<", ">", "&" and the quotation mark as HTML entities, for clients that use it
    /// as a section of a configuration file.
    QString printerNameToSection(const QString &name) const;

    /// How far a finished receipt is moved, in the printer driver's unit: the stored value, or 0
    /// when the printer doesn't support the setting.
    signed char moveCheckTo() const;
    signed char moveCheckTo(const QString &name) const;
    /// Stores the value whether the printer supports the setting or not.
    void setCheckMovingTo(signed char value);
    /// Stores the value if the named printer supports the setting. Intended: otherwise the stored
    /// value stays, where setPaperLoopFlag stores 0; test `namedSettersDifferWhenNotSupported`.
    void setCheckMovingTo(const QString &name, signed char value);

protected:
    /// Guards all values of this class and of the classes below it.
    static QMutex _settingsMutex;

    /// What printerType() gives.
    static unsigned int _printerType;

    /// What printerId() gives. Written under both the settings mutex and the port's, so it may be
    /// read under either.
    static QString _printerId;

    /// What the operations of the same names give; nothing is checked here.
    static int _emptyStringsAtEnd;
    static int _spacessBeforeString;
    static EPaperLoopFlag _paperLoopFlag;
    static signed char _moveCheckTo;
    static ECharactersMode _charactersMode;
    static bool _enablePortLogging;
    static int _baseFiscalFont;
    static int _defSymbolsPerLine;

    /// The one record of serial settings, which both forms of port() give.
    static QSharedPointer<hearth::RS232Settings> _port;

private:
    struct Field;
    static const Field fields[];

    static bool setLocked(const QMap<QString, QVariant> &item);
    static bool setFieldLocked(const QString &key, const QString &value);
    static void storePrinterId(const QString &name);
    static QSharedPointer<hearth::RS232Settings> existingPortLocked(const QString &name);
    static QSharedPointer<hearth::RS232Settings> portNamedLocked(const QString &name);
};
