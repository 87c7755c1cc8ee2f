#pragma once

#include <QFont>
#include <QList>
#include <QVariant>

#include "printers/textprintermodels.h"
#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"

/// Settings unlike those that item lists usually ask for, set by their setters: a list that leads
/// from them to others has to set each of them.
namespace othersettings {

inline void setPrinter()
{
    PrinterSettings printer;
    printer.setPrinterId("another printer");
    printer.setPrinterType(1);
    printer.setEmptyStringsAtEnd(-71);
    printer.setSpacesBeforeString(-72);
    printer.setPaperLoopFlag(static_cast<EPaperLoopFlag>(2));
    printer.setCheckMovingTo(-73);
    printer.setCharactersMode(IPrintDeviceSettings::CharactersUpperCase);
    printer.setPortLoggingEnabled(true);
    printer.setBaseFiscalFont(-74);
    printer.setDefSymbolsPerLine(-75);
    hearth::Rs232PortSettings port;
    port.setPortName("another port");
    port.setBaudRate(110);
    port.setDataBits(QSerialPort::Data5);
    port.setParity(QSerialPort::MarkParity);
    port.setStopBits(QSerialPort::TwoStop);
    port.setFlowControl(QSerialPort::SoftwareControl);
    printer.port()->setPortSettings(port);
    printer.port()->setText("another text");
}

inline void setTextPrinter()
{
    TextPrinterSettings text;
    text.setPaperTypeId(-76);
    text.setCodec("another codec");
    text.setPrintAsImage(true, TextPrinterModels::MODEL_CUSTOM_VKP_80);
    text.setDefaultFont("another font");
    text.setCodePage(77);
}

inline void setSystemPrinter()
{
    const QString name;
    SystemPrinterSettings system;
    system.setDefaultFont(name, QFont("another font"));
    system.setUnit(name, ISystemPrinterSettings::Cicero);
    system.setPageSizeKey(name, "another size");
    system.setPageWidth(name, -7.125);
    system.setPageHeight(name, -7.25);
    system.setAutoPageHeight(name, true);
    system.setLeftMargin(name, -7.375);
    system.setRightMargin(name, -7.5);
    system.setTopMargin(name, -7.625);
    system.setBottomMargin(name, -7.75);
    system.setOrientation(name, ISystemPrinterSettings::Landscape);
    system.setPrinterMode(name, QPrinter::HighResolution);
    system.setFullJustifyAlign(name, false);
}

inline void set()
{
    setPrinter();
    setTextPrinter();
    setSystemPrinter();
    CheckTemplatesSettings().setCheckTemplatesPath("another/path");
    CheckTemplatesSettings().setDefaultCheckTemplate("another.cpt");
}

/// What an exported list becomes once it was set on the present settings: itself but for what no
/// list sets. A printer without images takes no code page, and one that is named like the section
/// of the common items takes no settings of its port.
inline QList<QVariant> afterTheirReturn(const QList<QVariant> &list)
{
    const TextPrinterSettings settings;
    const QList<QVariant> port = settings.port()->toList();
    QList<QVariant> result;
    for (const QVariant &each : list) {
        const QString group = groupOf(each);
        const QString key = keyOf(each);
        QVariant value = each.toMap().value("value");
        if (key == TextPrinterSettings::CODEPAGE && !settings.imageAvailable(group))
            value = uint(TextPrinterSettings().codePage());
        else if (group == PrinterSettings::SECTION && keysOf(port).contains(key))
            value = valueOf(port, key);
        result.append(item(group, key, value));
    }
    return result;
}

}  // namespace othersettings
