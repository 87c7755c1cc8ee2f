#pragma once

#include "printers/textprintermodels.h"
#include "settings/checktemplatessettings.h"
#include "settings/printsrvsettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"

/// Every operation of the settings classes, with what it writes, or by what it is told whether what
/// it read was written.
namespace settingsoperations {

/// What is written follows the round, so that a reader can tell whether it got a whole one.
/// @{
inline constexpr int kinds = 3;

inline int kindOf(int round)
{
    return round % kinds;
}

template <typename T>
bool isOneOf(const T &value, T (*written)(int round))
{
    return value == written(0) || value == written(1) || value == written(2);
}

/// Texts whose length belongs to their letter.
inline QString word(int round)
{
    const int kind = kindOf(round);
    return QString(100 * (kind + 1), QChar(u'a' + kind));
}

inline bool isWord(const QString &text)
{
    return isOneOf(text, word);
}

inline int number(int round)
{
    return 11 * (kindOf(round) + 1);
}

inline bool isNumber(double value)
{
    return value == number(0) || value == number(1) || value == number(2);
}

/// A printer with images and all that can be set, one without, and the one whose codec can be set.
inline QString printerId(int round)
{
    const QString *const ids[kinds] = {&TextPrinterModels::MODEL_CUSTOM_VKP_80,
                                       &TextPrinterModels::MODEL_AV_268,
                                       &TextPrinterModels::MODEL_GENERAL_EPSON};
    return *ids[kindOf(round)];
}

inline bool isPrinterId(const QString &id)
{
    return isOneOf(id, printerId);
}

/// Empty in one of the rounds, which means the default.
inline QString templatesPath(int round)
{
    return kindOf(round) == 0 ? QString("") : word(round);
}

inline QFont font(int round)
{
    return QFont("Arial", number(round));
}
/// @}

inline QMap<QString, QVariant> generalItem(const QString &key, const QVariant &value)
{
    return item(PrinterSettings::SECTION, key, value);
}

/// All numbers of the section, the printer's name, and the port's text.
inline QList<QVariant> generalItems(int round)
{
    QList<QVariant> items{
        generalItem("printerName", printerId(round)), generalItem("printerType", kindOf(round)),
        generalItem("paperLoopFlag", kindOf(round)), generalItem("characterMode", kindOf(round)),
        generalItem("enablePortLogging", kindOf(round) % 2)};
    for (const char *key : {"emptyStringsAtEnd", "spacesBeforeString", "moveCheckTo",
                            "baseFiscFont", "defSymPerLine"})
        items.append(generalItem(key, number(round)));
    items.append(item(printerId(round), "portText", word(round)));
    return items;
}

inline QList<QVariant> textItems(int round)
{
    const QString group = printerId(round);
    return generalItems(round) + QList<QVariant>{item(group, "paperTypeId", kindOf(round)),
                                                 item(group, "codec", word(round)),
                                                 item(group, "printAsImage", 1),
                                                 item(group, "defaultFont", word(round)),
                                                 item(group, "cpage", number(round))};
}

inline QList<QVariant> systemItems(const QString &group, int round)
{
    QList<QVariant> items;
    for (const char *key :
         {"pageWidth", "pageHeight", "leftMargin", "rightMargin", "topMargin", "bottomMargin"})
        items.append(item(group, key, number(round)));
    for (const char *key : {"unit", "printerMode"})
        items.append(item(group, key, kindOf(round)));
    for (const char *key : {"orientation", "autoPageHeight", "fullJustifyAlignment"})
        items.append(item(group, key, kindOf(round) % 2));
    return items + QList<QVariant>{item(group, "pageSizeKey", word(round)),
                                   item(group, "defaultFont", font(round).toString())};
}

inline QList<QVariant> templatesItems(int round)
{
    return {item("CHECK_TEMPLATES", "checkTemplatesPath", templatesPath(round)),
            item("CHECK_TEMPLATES", "defaultCheckTemplate", templatesPath(round))};
}

inline bool isGeneralList(const QList<QVariant> &list)
{
    return isPrinterId(valueOf(list, "printerName").toString()) &&
           isNumber(valueOf(list, "emptyStringsAtEnd").toInt()) &&
           isWord(valueOf(list, "portText").toString());
}

/// Printer settings of a printer that can do everything.
class AblePrinterSettings : public PrinterSettings
{
public:
    bool paperLoopSupported() const override { return true; }
    bool paperLoopSupported(const QString &) const override { return true; }
    bool checkMoveSettingsSupported() const override { return true; }
    bool checkMoveSettingsSupported(const QString &) const override { return true; }
};

/// One object of each class, for all threads.
struct Objects
{
    PrinterSettings plain;
    AblePrinterSettings printer;
    TextPrinterSettings text;
    SystemPrinterSettings system;
    CheckTemplatesSettings templates;
    PrintSrvSettings service;
};

inline void installSettings(int round)
{
    QSharedPointer<IPrintDeviceSettings> settings;
    if (kindOf(round) == 1)
        settings.reset(new TextPrinterSettings);
    else if (kindOf(round) == 2)
        settings.reset(new SystemPrinterSettings);
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

inline hearth::RS232Settings &portOf(hearth::RS232Settings &&settings, int round)
{
    settings.setText(word(round));
    return settings;
}

struct Writer
{
    const char *signature;
    void (*write)(Objects &o, int round);
};

/// Tells whether it got what a writer wrote.
struct Reader
{
    const char *signature;
    bool (*read)(Objects &o, int round);
};

inline const Writer writers[] = {
    {"IPrintDeviceSettings::setPrintDeviceSettings(QSharedPointer<IPrintDeviceSettings> const&)",
     [](Objects &, int round) { installSettings(round); }},
    {"PrinterSettings::setPrinterType(unsigned int)",
     [](Objects &o, int round) { o.printer.setPrinterType(uint(kindOf(round))); }},
    {"PrinterSettings::setPrinterId(QString const&)",
     [](Objects &o, int round) { o.printer.setPrinterId(printerId(round)); }},
    {"PrinterSettings::setPortLoggingEnabled(bool)",
     [](Objects &o, int round) { o.printer.setPortLoggingEnabled(round % 2 == 0); }},
    {"PrinterSettings::setEmptyStringsAtEnd(int)",
     [](Objects &o, int round) { o.printer.setEmptyStringsAtEnd(number(round)); }},
    {"PrinterSettings::setSpacesBeforeString(int)",
     [](Objects &o, int round) { o.printer.setSpacesBeforeString(number(round)); }},
    {"PrinterSettings::setCharactersMode(IPrintDeviceSettings::ECharactersMode const&)",
     [](Objects &o, int round) {
         o.printer.setCharactersMode(IPrintDeviceSettings::ECharactersMode(kindOf(round)));
     }},
    {"PrinterSettings::setPaperLoopFlag(EPaperLoopFlag)",
     [](Objects &o, int round) { o.printer.setPaperLoopFlag(EPaperLoopFlag(kindOf(round))); }},
    {"PrinterSettings::setPaperLoopFlag(EPaperLoopFlag, QString const&)",
     [](Objects &o, int round) {
         o.printer.setPaperLoopFlag(EPaperLoopFlag(kindOf(round)), printerId(round));
     }},
    {"PrinterSettings::setBaseFiscalFont(int const&)",
     [](Objects &o, int round) { o.printer.setBaseFiscalFont(number(round)); }},
    {"PrinterSettings::setDefSymbolsPerLine(int const&)",
     [](Objects &o, int round) { o.printer.setDefSymbolsPerLine(number(round)); }},
    {"PrinterSettings::setList(QList<QVariant> const&)",
     [](Objects &o, int round) { o.printer.setList(generalItems(round)); }},
    {"PrinterSettings::setValue(QMap<QString, QVariant> const&)",
     [](Objects &o, int round) {
         o.printer.setValue(item(printerId(round), "portText", word(round)));
     }},
    {"PrinterSettings::setPortSettings(QString const&, hearth::RS232Settings const&)",
     [](Objects &o, int round) {
         o.printer.setPortSettings(printerId(round),
                                   portOf(hearth::RS232Settings(QString()), round));
     }},
    {"PrinterSettings::setCheckMovingTo(signed char)",
     [](Objects &o, int round) {
         o.printer.setCheckMovingTo(static_cast<signed char>(number(round)));
     }},
    {"PrinterSettings::setCheckMovingTo(QString const&, signed char)",
     [](Objects &o, int round) {
         o.printer.setCheckMovingTo(printerId(round), static_cast<signed char>(number(round)));
     }},
    {"ITextPrinterSettings::setAvailablePrinters(QMap<QString, PrinterInfo> const&)",
     [](Objects &o, int) {
         TextPrinterSettings().setAvailablePrinters(o.text.availablePrinters());
     }},
    {"ITextPrinterSettings::loadAvailablePrinters()",
     [](Objects &, int) { TextPrinterSettings().loadAvailablePrinters(); }},
    {"TextPrinterSettings::setPaperTypeId(QString const&, int)",
     [](Objects &o, int round) { o.text.setPaperTypeId(printerId(round), kindOf(round)); }},
    {"TextPrinterSettings::setPaperTypeId(int)",
     [](Objects &o, int round) { o.text.setPaperTypeId(kindOf(round)); }},
    {"TextPrinterSettings::setCodec(QString const&)",
     [](Objects &o, int round) { o.text.setCodec(word(round)); }},
    {"TextPrinterSettings::setCodec(QString const&, QString const&)",
     [](Objects &o, int round) { o.text.setCodec(printerId(round), word(round)); }},
    {"TextPrinterSettings::setPrintAsImage(bool)",
     [](Objects &o, int round) { o.text.setPrintAsImage(round % 2 == 0); }},
    {"TextPrinterSettings::setPrintAsImage(bool, QString const&)",
     [](Objects &o, int round) { o.text.setPrintAsImage(round % 2 == 0, printerId(round)); }},
    {"TextPrinterSettings::setDefaultFont(QString const&)",
     [](Objects &o, int round) { o.text.setDefaultFont(word(round)); }},
    {"TextPrinterSettings::setDefaultFont(QString const&, QString const&)",
     [](Objects &o, int round) { o.text.setDefaultFont(printerId(round), word(round)); }},
    {"TextPrinterSettings::setCodePage(unsigned char const&)",
     [](Objects &o, int round) { o.text.setCodePage(static_cast<unsigned char>(number(round))); }},
    {"TextPrinterSettings::setList(QList<QVariant> const&)",
     [](Objects &o, int round) { o.text.setList(textItems(round)); }},
    {"TextPrinterSettings::setValue(QMap<QString, QVariant> const&)",
     [](Objects &o, int round) { o.text.setValue(item(printerId(round), "codec", word(round))); }},
    {"SystemPrinterSettings::setDefaultFont(QString const&, QFont const&)",
     [](Objects &o, int round) { o.system.setDefaultFont(printerId(round), font(round)); }},
    {"SystemPrinterSettings::setUnit(QString const&, ISystemPrinterSettings::Unit)",
     [](Objects &o, int round) {
         o.system.setUnit(printerId(round), ISystemPrinterSettings::Unit(kindOf(round)));
     }},
    {"SystemPrinterSettings::setPageSizeKey(QString const&, QString const&)",
     [](Objects &o, int round) { o.system.setPageSizeKey(printerId(round), word(round)); }},
    {"SystemPrinterSettings::setPageWidth(QString const&, double)",
     [](Objects &o, int round) { o.system.setPageWidth(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setPageHeight(QString const&, double)",
     [](Objects &o, int round) { o.system.setPageHeight(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setAutoPageHeight(QString const&, bool)",
     [](Objects &o, int round) { o.system.setAutoPageHeight(printerId(round), round % 2 == 0); }},
    {"SystemPrinterSettings::setLeftMargin(QString const&, double)",
     [](Objects &o, int round) { o.system.setLeftMargin(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setRightMargin(QString const&, double)",
     [](Objects &o, int round) { o.system.setRightMargin(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setTopMargin(QString const&, double)",
     [](Objects &o, int round) { o.system.setTopMargin(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setBottomMargin(QString const&, double)",
     [](Objects &o, int round) { o.system.setBottomMargin(printerId(round), number(round)); }},
    {"SystemPrinterSettings::setOrientation(QString const&, ISystemPrinterSettings::Orientation)",
     [](Objects &o, int round) {
         o.system.setOrientation(printerId(round), ISystemPrinterSettings::Orientation(round % 2));
     }},
    {"SystemPrinterSettings::setPrinterMode(QString const&, QPrinter::PrinterMode)",
     [](Objects &o, int round) {
         o.system.setPrinterMode(printerId(round), QPrinter::PrinterMode(kindOf(round)));
     }},
    {"SystemPrinterSettings::setFullJustifyAlign(QString const&, bool)",
     [](Objects &o, int round) { o.system.setFullJustifyAlign(printerId(round), round % 2 == 0); }},
    {"SystemPrinterSettings::setPageLayoutUnit(QString const&, QPageLayout::Unit)",
     [](Objects &o, int round) {
         o.system.setPageLayoutUnit(printerId(round), QPageLayout::Unit(kindOf(round)));
     }},
    {"SystemPrinterSettings::setPageLayoutOrientation(QString const&, QPageLayout::Orientation)",
     [](Objects &o, int round) {
         o.system.setPageLayoutOrientation(printerId(round), QPageLayout::Orientation(round % 2));
     }},
    {"SystemPrinterSettings::setList(QList<QVariant> const&)",
     [](Objects &o, int round) {
         o.system.setList(generalItems(round) + systemItems(printerId(round), round));
     }},
    {"SystemPrinterSettings::setValue(QMap<QString, QVariant> const&)",
     [](Objects &o, int round) {
         o.system.setValue(item(printerId(round), "pageSizeKey", word(round)));
     }},
    {"CheckTemplatesSettings::setCheckTemplatesPath(QString const&)",
     [](Objects &o, int round) { o.templates.setCheckTemplatesPath(templatesPath(round)); }},
    {"CheckTemplatesSettings::setDefaultCheckTemplate(QString const&)",
     [](Objects &o, int round) { o.templates.setDefaultCheckTemplate(templatesPath(round)); }},
    {"CheckTemplatesSettings::setList(QList<QVariant> const&)",
     [](Objects &o, int round) { o.templates.setList(templatesItems(round)); }},
    {"CheckTemplatesSettings::setValue(QMap<QString, QVariant> const&)",
     [](Objects &o, int round) { o.templates.setValue(templatesItems(round).first().toMap()); }},
};

inline const Reader readers[] = {
{"IPrintDeviceSettings::printDeviceSettings()", [](Objects &, int) { const auto settings = IPrintDeviceSettings::printDeviceSettings(); return settings.isNull() || isPrinterId(settings->printerId()); }},
{"IPrintDeviceSettings::textPrinterSettings()", [](Objects &, int) { const auto settings = IPrintDeviceSettings::textPrinterSettings(); return settings.isNull() || isWord(settings->codec()); }},
{"IPrintDeviceSettings::systemPrinterSettings()", [](Objects &, int) { const auto settings = IPrintDeviceSettings::systemPrinterSettings(); return settings.isNull() || isWord(settings->pageSizeKey(QString())); }},
{"PrinterSettings::PrinterSettings()", [](Objects &, int) { return isPrinterId(PrinterSettings().printerId()); }},
{"PrinterSettings::port() const", [](Objects &o, int) { return isWord(o.printer.port()->text()); }},
{"PrinterSettings::port(QString const&) const", [](Objects &o, int round) { return isPrinterId(o.printer.port(printerId(round))->name()); }},
{"PrinterSettings::printerType() const", [](Objects &o, int) { return o.printer.printerType() < kinds; }},
{"PrinterSettings::printerId() const", [](Objects &o, int) { return isPrinterId(o.printer.printerId()); }},
{"PrinterSettings::portLoggingEnabled() const", [](Objects &o, int) { o.printer.portLoggingEnabled(); return true; }},
{"PrinterSettings::emptyStringsAtEnd() const", [](Objects &o, int) { return isNumber(o.printer.emptyStringsAtEnd()); }},
{"PrinterSettings::spacessBeforeString() const", [](Objects &o, int) { return isNumber(o.printer.spacessBeforeString()); }},
{"PrinterSettings::charactersMode() const", [](Objects &o, int) { return o.printer.charactersMode() < kinds; }},
{"PrinterSettings::paperLoopSupported() const", [](Objects &o, int) { return !o.plain.paperLoopSupported(); }},
{"PrinterSettings::paperLoopSupported(QString const&) const", [](Objects &o, int round) { return !o.plain.paperLoopSupported(printerId(round)); }},
{"PrinterSettings::paperLoopFlag() const", [](Objects &o, int) { return o.printer.paperLoopFlag() < kinds; }},
{"PrinterSettings::paperLoopFlag(QString const&)", [](Objects &o, int round) { return o.printer.paperLoopFlag(printerId(round)) < kinds; }},
{"PrinterSettings::checkMoveSettingsSupported() const", [](Objects &o, int) { return !o.plain.checkMoveSettingsSupported(); }},
{"PrinterSettings::checkMoveSettingsSupported(QString const&) const", [](Objects &o, int round) { return !o.plain.checkMoveSettingsSupported(printerId(round)); }},
{"PrinterSettings::baseFiscalFont()", [](Objects &o, int) { return isNumber(o.printer.baseFiscalFont()); }},
{"PrinterSettings::getDefSymbolsPerLine()", [](Objects &o, int) { return o.printer.getDefSymbolsPerLine() > 0; }},
{"PrinterSettings::defSymbolsPerLine()", [](Objects &o, int) { return isNumber(o.printer.defSymbolsPerLine()); }},
{"PrinterSettings::toList() const", [](Objects &o, int) { return isGeneralList(o.printer.toList()); }},
{"PrinterSettings::printerNameToSection(QString const&) const", [](Objects &o, int round) { return isPrinterId(o.printer.printerNameToSection(printerId(round))); }},
{"PrinterSettings::moveCheckTo() const", [](Objects &o, int) { return isNumber(o.printer.moveCheckTo()); }},
{"PrinterSettings::moveCheckTo(QString const&) const", [](Objects &o, int round) { return isNumber(o.printer.moveCheckTo(printerId(round))); }},
{"ITextPrinterSettings::ITextPrinterSettings()", [](Objects &, int round) { return TextPrinterSettings().availablePrinters().contains(printerId(round)); }},
{"ITextPrinterSettings::availablePrinters() const", [](Objects &o, int round) { return o.text.availablePrinters().contains(printerId(round)); }},
{"ITextPrinterSettings::printerInfo(QString const&) const", [](Objects &o, int round) { return o.text.ITextPrinterSettings::printerInfo(printerId(round)).id() == printerId(round); }},
{"TextPrinterSettings::TextPrinterSettings()", [](Objects &, int) { return isWord(TextPrinterSettings().codec()); }},
{"TextPrinterSettings::paperLoopSupported() const", [](Objects &o, int) { o.text.paperLoopSupported(); return true; }},
{"TextPrinterSettings::paperLoopSupported(QString const&) const", [](Objects &o, int round) { return o.text.paperLoopSupported(printerId(round)) == (kindOf(round) == 0); }},
{"TextPrinterSettings::checkMoveSettingsSupported() const", [](Objects &o, int) { o.text.checkMoveSettingsSupported(); return true; }},
{"TextPrinterSettings::checkMoveSettingsSupported(QString const&) const", [](Objects &o, int round) { return o.text.checkMoveSettingsSupported(printerId(round)) == (kindOf(round) == 0); }},
{"TextPrinterSettings::toList() const", [](Objects &o, int) { return isGeneralList(o.text.toList()); }},
{"TextPrinterSettings::defSymbolsPerLine()", [](Objects &o, int) { return o.text.defSymbolsPerLine() > 0; }},
{"TextPrinterSettings::printerInfo(QString const&) const", [](Objects &o, int round) { return o.text.printerInfo(printerId(round)).id() == printerId(round); }},
{"TextPrinterSettings::printerInfo() const", [](Objects &o, int) { return isPrinterId(o.text.printerInfo().id()); }},
{"TextPrinterSettings::paper(QString const&) const", [](Objects &o, int round) { return o.text.paper(printerId(round)).pointsToLine() > 0; }},
{"TextPrinterSettings::paper() const", [](Objects &o, int) { return o.text.paper().pointsToLine() > 0; }},
{"TextPrinterSettings::paperTypeId(QString const&) const", [](Objects &o, int round) { return o.text.paperTypeId(printerId(round)) < kinds; }},
{"TextPrinterSettings::paperTypeId() const", [](Objects &o, int) { return o.text.paperTypeId() < kinds; }},
{"TextPrinterSettings::imageAvailable(QString const&) const", [](Objects &o, int round) { return o.text.imageAvailable(printerId(round)) == (kindOf(round) == 0); }},
{"TextPrinterSettings::imageAvailable() const", [](Objects &o, int) { o.text.imageAvailable(); return true; }},
{"TextPrinterSettings::needCodecSettings() const", [](Objects &o, int) { o.text.needCodecSettings(); return true; }},
{"TextPrinterSettings::needCodecSettings(QString const&) const", [](Objects &o, int round) { return o.text.needCodecSettings(printerId(round)) == (kindOf(round) == 2); }},
{"TextPrinterSettings::codec() const", [](Objects &o, int) { return isWord(o.text.codec()); }},
{"TextPrinterSettings::codec(QString const&) const", [](Objects &o, int round) { return isWord(o.text.codec(printerId(round))); }},
{"TextPrinterSettings::printAsImage() const", [](Objects &o, int) { o.text.printAsImage(); return true; }},
{"TextPrinterSettings::printAsImage(QString const&) const", [](Objects &o, int round) { const bool is = o.text.printAsImage(printerId(round)); return kindOf(round) == 0 || !is; }},
{"TextPrinterSettings::defaultFont() const", [](Objects &o, int) { const QString text = o.text.defaultFont(); return text.isEmpty() || isWord(text); }},
{"TextPrinterSettings::defaultFont(QString const&) const", [](Objects &o, int round) { const QString text = o.text.defaultFont(printerId(round)); return text.isEmpty() || isWord(text); }},
{"TextPrinterSettings::codePage()", [](Objects &o, int) { return isNumber(o.text.codePage()); }},
{"SystemPrinterSettings::SystemPrinterSettings()", [](Objects &, int) { return isPrinterId(SystemPrinterSettings().printerId()); }},
{"SystemPrinterSettings::toList() const", [](Objects &o, int) { const QList<QVariant> list = o.system.toList(); return isGeneralList(list) && isWord(valueOf(list, "pageSizeKey").toString()); }},
{"SystemPrinterSettings::defSymbolsPerLine()", [](Objects &o, int) { return isNumber(o.system.defSymbolsPerLine()); }},
{"SystemPrinterSettings::defaultFont(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.defaultFont(printerId(round)).pointSize()); }},
{"SystemPrinterSettings::unit(QString const&) const", [](Objects &o, int round) { return o.system.unit(printerId(round)) < kinds; }},
{"SystemPrinterSettings::pageSizeKey(QString const&) const", [](Objects &o, int round) { return isWord(o.system.pageSizeKey(printerId(round))); }},
{"SystemPrinterSettings::pageWidgth(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.pageWidgth(printerId(round))); }},
{"SystemPrinterSettings::pageHeight(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.pageHeight(printerId(round))); }},
{"SystemPrinterSettings::autoPageHeight(QString const&) const", [](Objects &o, int round) { o.system.autoPageHeight(printerId(round)); return true; }},
{"SystemPrinterSettings::leftMargin(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.leftMargin(printerId(round))); }},
{"SystemPrinterSettings::rightMargin(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.rightMargin(printerId(round))); }},
{"SystemPrinterSettings::topMargin(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.topMargin(printerId(round))); }},
{"SystemPrinterSettings::bottomMargin(QString const&) const", [](Objects &o, int round) { return isNumber(o.system.bottomMargin(printerId(round))); }},
{"SystemPrinterSettings::orientation(QString const&) const", [](Objects &o, int round) { return o.system.orientation(printerId(round)) <= ISystemPrinterSettings::Landscape; }},
{"SystemPrinterSettings::printerMode(QString const&) const", [](Objects &o, int round) { return o.system.printerMode(printerId(round)) < kinds; }},
{"SystemPrinterSettings::fullJustifyAlign(QString const&) const", [](Objects &o, int round) { o.system.fullJustifyAlign(printerId(round)); return true; }},
{"SystemPrinterSettings::pageLayoutUnit(QString const&) const", [](Objects &o, int round) { return o.system.pageLayoutUnit(printerId(round)) < kinds; }},
{"SystemPrinterSettings::pageSizeUnit(QString const&) const", [](Objects &o, int round) { return o.system.pageSizeUnit(printerId(round)) < kinds; }},
{"SystemPrinterSettings::pageLayoutOrientation(QString const&) const", [](Objects &o, int round) { return o.system.pageLayoutOrientation(printerId(round)) <= QPageLayout::Landscape; }},
{"SystemPrinterSettings::prepareDefaultFont()", [](Objects &, int) { return SystemPrinterSettings::prepareDefaultFont().pointSize() == 14; }},
{"CheckTemplatesSettings::checkTemplatesPath() const", [](Objects &o, int) { const QString path = o.templates.checkTemplatesPath(); return isWord(path) || path.endsWith("/templates"); }},
{"CheckTemplatesSettings::defaultCheckTemplate() const", [](Objects &o, int) { return isOneOf(o.templates.defaultCheckTemplate(), templatesPath); }},
{"CheckTemplatesSettings::toList() const", [](Objects &o, int) { return isOneOf(valueOf(o.templates.toList(), "checkTemplatesPath").toString(), templatesPath); }},
{"PrintSrvSettings::PrintSrvSettings()", [](Objects &, int) { return PrintSrvSettings().stateInterval() == 30000; }},
{"PrintSrvSettings::stateInterval() const", [](Objects &o, int) { return o.service.stateInterval() == 30000; }},
{"PrintSrvSettings::serviceDataPath() const", [](Objects &o, int) { return o.service.serviceDataPath().endsWith("/printsrv"); }},
{"PrintSrvSettings::kpkGenConfig() const", [](Objects &o, int) { return o.service.kpkGenConfig().endsWith("/kpk.gen"); }},
{"PrintSrvSettings::pngOutputFile(int)", [](Objects &o, int round) { return o.service.pngOutputFile(round).endsWith(QString("/png/doc_%1.png").arg(round)); }},
};

}  // namespace settingsoperations
