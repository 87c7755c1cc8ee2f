#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"
#include "settings/itextprintersettings.h"
#include "settings/printersettings.h"

/// The settings of a text printer: those of PrinterSettings, and paper, codec, code page, font and
/// whether documents are sent as images.
///
/// As in PrinterSettings there is one set of values in the process. An operation with a printer's
/// name looks the model up in the catalogue by that name; the stored values are the same for all
/// names. The forms without a name act for printerId(). Any thread may use any operation; setList,
/// setValue and toList are not atomic as a whole.
class PRINTERSLIB_EXPORT TextPrinterSettings : public PrinterSettings, public ITextPrinterSettings
{
public:
    /// Key of the paper type. Intended: the constant's spelling is what clients use.
    static const QString PAPER_TYPR_ID;

    /// Keys of the other items of this class, whose group is the printer's name.
    static const QString PRINTER_CODEC;
    static const QString DEFAULT_FONT;
    static const QString PRINT_AS_IMAGE;
    static const QString CODEPAGE;

    /// A view; fills availablePrinters() from the compiled-in catalogue.
    TextPrinterSettings();
    ~TextPrinterSettings() override;

    bool paperLoopSupported() const override;
    bool paperLoopSupported(const QString &name) const override;
    bool checkMoveSettingsSupported() const override;
    bool checkMoveSettingsSupported(const QString &name) const override;

    /// The items of PrinterSettings, and then the paper type, the codec if it can be set, whether
    /// documents are sent as images if the printer can print any, the font if they are, and the
    /// code page, all in the group of the printer's name.
    QList<QVariant> toList() const override;
    /// Takes a list of items: first all that PrinterSettings takes, in the list's order, and then,
    /// under the name that the printer has by that time, the printer's own items. So those may
    /// stand in front of the item with the printer's name, while the serial port's must not.
    /// Intended: on a printer that prints no images the serial port's items of the list, which are
    /// taken, also clear the font and switch printing as images off, unlike those given to
    /// setValue(); the order of two walks is what clients rely on; test
    /// `portItemOfAListSwitchesImagesOffWithoutImages`.
    void setList(const QList<QVariant> &list) override;
    /// Takes one item.
    /// Intended: on a printer that prints no images every key of the printer's group but the paper
    /// type's, the codec's and those of the serial port's items that the port takes clears the font
    /// and switches printing as images off, and counts as taken: also the code page that toList()
    /// exports, and a value that the port refuses; tests
    /// `anyOtherKeySwitchesImagesOffWithoutImages`, `portItemThatThePortRefusesCountsAsTaken`.
    /// @return whether the item was taken; true for any key of the printer's group
    bool setValue(const QMap<QString, QVariant> &item) override;

    /// Characters per line: the stored number if it is above 23, else what the paper holds in the
    /// font that baseFiscalFont() names, 1 being the first. A font number beyond the printer's
    /// fonts means the last one. 0 for an unknown printer, and for a font without a width.
    int defSymbolsPerLine() override;

    PrinterInfo printerInfo(const QString &name) const override;
    PrinterInfo printerInfo() const override;
    /// The chosen paper type of the printer.
    PaperInfo paper(const QString &name) const override;
    PaperInfo paper() const override;
    int paperTypeId(const QString &name) const override;
    int paperTypeId() const override;
    /// Whether the printer can print images.
    virtual bool imageAvailable(const QString &name) const;
    virtual bool imageAvailable() const;
    void setPaperTypeId(const QString &name, int id) override;
    void setPaperTypeId(int id) override;
    /// Whether the codec of the printer can be set: only for MODEL_GENERAL_EPSON.
    bool needCodecSettings() const override;
    /// Name of the text codec.
    QString codec() const override;
    void setCodec(const QString &codec) override;
    bool needCodecSettings(const QString &name) const override;
    QString codec(const QString &name) const override;
    void setCodec(const QString &name, const QString &codec) override;

    /// Whether documents are sent as images: stored, and possible on the printer.
    bool printAsImage() const;
    bool printAsImage(const QString &name) const;
    /// A printer that prints no images switches the setting off, for all names.
    void setPrintAsImage(bool value);
    void setPrintAsImage(bool value, const QString &name);

    /// The font of documents sent as images, as QFont::toString() writes it.
    QString defaultFont() const;
    QString defaultFont(const QString &name) const;
    void setDefaultFont(const QString &font);
    void setDefaultFont(const QString &name, const QString &font);

    /// Number of the printer's code page.
    unsigned char codePage();
    void setCodePage(const unsigned char &codePage);

private:
    static int _paperTypeId;
    static QString _codec;
    static QString _defaultFont;
    static bool _printAsImage;
    static unsigned char _codePage;

    void setOwnValue(const QMap<QString, QVariant> &item);
    void setImageValue(const QString &key, const QString &value);
};
