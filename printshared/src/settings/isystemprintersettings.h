#pragma once

#include <QFont>
#include <QPrinter>
#include <QString>

#include "printerslib_export.h"

/// What is particular to printers that are reached through the operating system's print service.
/// IPrintDeviceSettings::systemPrinterSettings() finds it. Each operation takes the printer's name.
///
/// Any thread may use any operation; defaultFont() needs a QGuiApplication.
class PRINTERSLIB_EXPORT ISystemPrinterSettings
{
public:
    /// Units, with the numbers of QPageLayout::Unit.
    enum Unit : int {
        Millimeter = 0,
        Point = 1,
        Inch = 2,
        Pica = 3,
        Didot = 4,
        Cicero = 5,
    };

    /// Orientations, with the numbers of QPageLayout::Orientation.
    enum Orientation : int {
        Portrait = 0,
        Landscape = 1,
    };

    virtual ~ISystemPrinterSettings();

    /// Font of the documents; a fixed-pitch one while none is set.
    virtual QFont defaultFont(const QString &name) const = 0;
    virtual void setDefaultFont(const QString &name, const QFont &font) = 0;
    /// Unit of the page size and the margins.
    virtual Unit unit(const QString &name) const = 0;
    virtual void setUnit(const QString &name, ISystemPrinterSettings::Unit unit) = 0;
    /// Key of the page size, as QPageSize::key() gives it.
    virtual QString pageSizeKey(const QString &name) const = 0;
    virtual void setPageSizeKey(const QString &name, const QString &key) = 0;
    /// Page width in unit(). Intended: the getter's spelling is what clients call.
    virtual double pageWidgth(const QString &name) const = 0;
    virtual void setPageWidth(const QString &name, double width) = 0;
    /// Page height in unit().
    virtual double pageHeight(const QString &name) const = 0;
    virtual void setPageHeight(const QString &name, double height) = 0;
    /// Whether the page is as long as the document.
    virtual bool autoPageHeight(const QString &name) const = 0;
    virtual void setAutoPageHeight(const QString &name, bool automatic) = 0;
    /// Left margin in unit().
    virtual double leftMargin(const QString &name) const = 0;
    virtual void setLeftMargin(const QString &name, double margin) = 0;
    /// Right margin in unit().
    virtual double rightMargin(const QString &name) const = 0;
    virtual void setRightMargin(const QString &name, double margin) = 0;
    /// Top margin in unit().
    virtual double topMargin(const QString &name) const = 0;
    virtual void setTopMargin(const QString &name, double margin) = 0;
    /// Bottom margin in unit().
    virtual double bottomMargin(const QString &name) const = 0;
    virtual void setBottomMargin(const QString &name, double margin) = 0;
    /// How the page lies.
    virtual Orientation orientation(const QString &name) const = 0;
    virtual void setOrientation(const QString &name,
                                ISystemPrinterSettings::Orientation orientation) = 0;
    /// Print quality.
    virtual QPrinter::PrinterMode printerMode(const QString &name) const = 0;
    virtual void setPrinterMode(const QString &name, QPrinter::PrinterMode mode) = 0;
    /// Whether lines are stretched to the full width.
    virtual bool fullJustifyAlign(const QString &name) const = 0;
    virtual void setFullJustifyAlign(const QString &name, bool justify) = 0;
};
