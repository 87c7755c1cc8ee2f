#pragma once

#include <QFont>
#include <QList>
#include <QMap>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"
#include "settings/isystemprintersettings.h"
#include "settings/printersettings.h"

/// The settings of a printer of the operating system: those of PrinterSettings, and page, margins,
/// quality, font and justification.
///
/// As in PrinterSettings there is one set of values in the process; the printer's name that the
/// operations take is ignored. Any thread may use any operation; defaultFont() and
/// prepareDefaultFont() need a QGuiApplication.
class PRINTERSLIB_EXPORT SystemPrinterSettings : public PrinterSettings,
                                                 public ISystemPrinterSettings
{
public:
    /// Keys of the items of this class, whose group is the printer's name.
    static const QString DEFAULT_FONT;
    static const QString UNIT;
    static const QString PAGE_SIZE_KEY;
    static const QString PAGE_WIDTH;
    static const QString PAGE_HEIGHT;
    static const QString AUTO_PAGE_HEIGHT;
    static const QString LEFT_MARGIN;
    static const QString RIGHT_MARGIN;
    static const QString TOP_MARGIN;
    static const QString BOTTOM_MARGIN;
    static const QString ORIENTATION;
    static const QString PRINTER_MODE;
    static const QString FULL_JUSTIFY_ALIGN;

    SystemPrinterSettings();
    ~SystemPrinterSettings() override;

    /// The items of PrinterSettings and then all of this class, in the group of the printer's name.
    /// The font is exported as it was set, so empty while none is.
    QList<QVariant> toList() const override;
    /// Takes a list of items: first all that PrinterSettings takes, in the list's order, and then,
    /// under the name that the printer has by that time, the items of this class.
    void setList(const QList<QVariant> &list) override;
    /// Takes one item. Numbers are stored with no range test.
    /// @return whether the item was taken
    bool setValue(const QMap<QString, QVariant> &item) override;
    /// The stored characters per line, or 40 while none are stored.
    int defSymbolsPerLine() override;

    QFont defaultFont(const QString &name) const override;
    void setDefaultFont(const QString &name, const QFont &font) override;
    Unit unit(const QString &name) const override;
    void setUnit(const QString &name, ISystemPrinterSettings::Unit unit) override;
    QString pageSizeKey(const QString &name) const override;
    void setPageSizeKey(const QString &name, const QString &key) override;
    double pageWidgth(const QString &name) const override;
    void setPageWidth(const QString &name, double width) override;
    double pageHeight(const QString &name) const override;
    void setPageHeight(const QString &name, double height) override;
    bool autoPageHeight(const QString &name) const override;
    void setAutoPageHeight(const QString &name, bool automatic) override;
    double leftMargin(const QString &name) const override;
    void setLeftMargin(const QString &name, double margin) override;
    double rightMargin(const QString &name) const override;
    void setRightMargin(const QString &name, double margin) override;
    double topMargin(const QString &name) const override;
    void setTopMargin(const QString &name, double margin) override;
    double bottomMargin(const QString &name) const override;
    void setBottomMargin(const QString &name, double margin) override;
    Orientation orientation(const QString &name) const override;
    void setOrientation(const QString &name,
                        ISystemPrinterSettings::Orientation orientation) override;
    /// Print quality.
    /// Intended: an item may have stored a number that no mode has. It comes back as that number,
    /// so a client compares with the modes it knows; test `unknownModeIsGivenAsItsNumber`.
    QPrinter::PrinterMode printerMode(const QString &name) const override;
    void setPrinterMode(const QString &name, QPrinter::PrinterMode mode) override;
    bool fullJustifyAlign(const QString &name) const override;
    void setFullJustifyAlign(const QString &name, bool justify) override;

    /// unit() for QPageLayout; a stored number that is no unit counts as millimetres.
    QPageLayout::Unit pageLayoutUnit(const QString &name) const;
    /// Ignores a number that is no unit.
    void setPageLayoutUnit(const QString &name, QPageLayout::Unit unit);
    /// unit() for QPageSize; a stored number that is no unit counts as millimetres.
    QPageSize::Unit pageSizeUnit(const QString &name) const;
    /// orientation() for QPageLayout; a stored number other than 1 counts as portrait.
    QPageLayout::Orientation pageLayoutOrientation(const QString &name) const;
    /// Ignores a number that is no orientation.
    void setPageLayoutOrientation(const QString &name, QPageLayout::Orientation orientation);

    /// The font that is used while none is set: "Monospace" or else the first fixed-pitch family
    /// with Cyrillic letters, or else the default family; upright, of normal weight, 14 points.
    /// Takes no lock: a derived class that holds the settings mutex may call it.
    static QFont prepareDefaultFont();

private:
    struct Field;
    static const Field fields[];

    static QString _defaultFont;
    static Unit _unit;
    static QString _pageSizeKey;
    static double _pageWidgth;
    static double _pageHeight;
    static bool _autoPageHeight;
    static double _leftMargin;
    static double _rightMargin;
    static double _topMargin;
    static double _bottomMargin;
    static Orientation _orientation;
    /// A QPrinter::PrinterMode. An int, because items may bring numbers that no mode has, and such
    /// a number must not lie in an object of the enumeration.
    static int _printerMode;
    static bool _fullJustifyAlign;

    static bool setOwnValueLocked(const QMap<QString, QVariant> &item);
};
