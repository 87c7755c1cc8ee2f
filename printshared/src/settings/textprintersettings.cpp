#include "settings/textprintersettings.h"

#include <algorithm>

#include "printers/textprintermodels.h"
#include "settings/settingsitem_p.h"

namespace {

// A stored number of characters per line up to this one isn't used, but worked out.
constexpr int greatestUnusedSymbolsPerLine = 23;

}  // namespace

const QString TextPrinterSettings::PAPER_TYPR_ID = QStringLiteral("paperTypeId");
const QString TextPrinterSettings::PRINTER_CODEC = QStringLiteral("codec");
const QString TextPrinterSettings::DEFAULT_FONT = QStringLiteral("defaultFont");
const QString TextPrinterSettings::PRINT_AS_IMAGE = QStringLiteral("printAsImage");
const QString TextPrinterSettings::CODEPAGE = QStringLiteral("cpage");

int TextPrinterSettings::_paperTypeId = 0;
QString TextPrinterSettings::_codec = QStringLiteral("cp866");
QString TextPrinterSettings::_defaultFont;
bool TextPrinterSettings::_printAsImage = false;
unsigned char TextPrinterSettings::_codePage = 0;

TextPrinterSettings::TextPrinterSettings()
{
    ITextPrinterSettings::loadAvailablePrinters();
}

TextPrinterSettings::~TextPrinterSettings() = default;

bool TextPrinterSettings::paperLoopSupported() const
{
    return paperLoopSupported(printerId());
}

bool TextPrinterSettings::paperLoopSupported(const QString &name) const
{
    return printerInfo(name).paperLoopSupported();
}

bool TextPrinterSettings::checkMoveSettingsSupported() const
{
    return checkMoveSettingsSupported(printerId());
}

bool TextPrinterSettings::checkMoveSettingsSupported(const QString &name) const
{
    return printerInfo(name).checkMoveSettingsSupported();
}

QList<QVariant> TextPrinterSettings::toList() const
{
    QList<QVariant> list = PrinterSettings::toList();
    const QString group = printerId();
    settingsitem::append(list, group, PAPER_TYPR_ID, paperTypeId());
    if (needCodecSettings())
        settingsitem::append(list, group, PRINTER_CODEC, codec());
    if (imageAvailable()) {
        const bool asImage = printAsImage();
        settingsitem::append(list, group, PRINT_AS_IMAGE, int(asImage));
        if (asImage)
            settingsitem::append(list, group, DEFAULT_FONT, defaultFont());
    }
    const QMutexLocker lock(&_settingsMutex);
    settingsitem::append(list, group, CODEPAGE, uint(_codePage));
    return list;
}

void TextPrinterSettings::setList(const QList<QVariant> &list)
{
    PrinterSettings::setList(list);
    const QString name = printerId();
    for (const QVariant &element : list) {
        const QMap<QString, QVariant> item = element.toMap();
        if (settingsitem::hasGroup(item) && settingsitem::group(item) == name)
            setOwnValue(item);
    }
}

bool TextPrinterSettings::setValue(const QMap<QString, QVariant> &item)
{
    if (PrinterSettings::setValue(item))
        return true;
    if (!settingsitem::hasGroup(item) || settingsitem::group(item) != printerId())
        return false;
    setOwnValue(item);
    return true;
}

int TextPrinterSettings::defSymbolsPerLine()
{
    const int stored = PrinterSettings::defSymbolsPerLine();
    if (stored > greatestUnusedSymbolsPerLine)
        return stored;
    const QList<FontInfo> fonts = printerInfo().fontTypes();
    if (fonts.isEmpty())
        return 0;
    const int number = std::clamp(baseFiscalFont(), 1, fonts.size());
    const int width = fonts.at(number - 1).width();
    return width == 0 ? 0 : paper().pointsToLine() / width;
}

PrinterInfo TextPrinterSettings::printerInfo(const QString &name) const
{
    return ITextPrinterSettings::printerInfo(name);
}

PrinterInfo TextPrinterSettings::printerInfo() const
{
    return printerInfo(printerId());
}

PaperInfo TextPrinterSettings::paper(const QString &name) const
{
    return printerInfo(name).paperType(paperTypeId(name));
}

PaperInfo TextPrinterSettings::paper() const
{
    return paper(printerId());
}

int TextPrinterSettings::paperTypeId(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _paperTypeId;
}

int TextPrinterSettings::paperTypeId() const
{
    return paperTypeId(printerId());
}

bool TextPrinterSettings::imageAvailable(const QString &name) const
{
    return printerInfo(name).customImages();
}

bool TextPrinterSettings::imageAvailable() const
{
    return imageAvailable(printerId());
}

void TextPrinterSettings::setPaperTypeId(const QString &name, int id)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _paperTypeId = id;
}

void TextPrinterSettings::setPaperTypeId(int id)
{
    setPaperTypeId(printerId(), id);
}

bool TextPrinterSettings::needCodecSettings() const
{
    return needCodecSettings(printerId());
}

QString TextPrinterSettings::codec() const
{
    return codec(printerId());
}

void TextPrinterSettings::setCodec(const QString &codec)
{
    setCodec(printerId(), codec);
}

bool TextPrinterSettings::needCodecSettings(const QString &name) const
{
    return name == TextPrinterModels::MODEL_GENERAL_EPSON;
}

QString TextPrinterSettings::codec(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _codec;
}

void TextPrinterSettings::setCodec(const QString &name, const QString &codec)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _codec = codec;
}

bool TextPrinterSettings::printAsImage() const
{
    return printAsImage(printerId());
}

bool TextPrinterSettings::printAsImage(const QString &name) const
{
    const bool available = imageAvailable(name);
    const QMutexLocker lock(&_settingsMutex);
    return available && _printAsImage;
}

void TextPrinterSettings::setPrintAsImage(bool value)
{
    setPrintAsImage(value, printerId());
}

void TextPrinterSettings::setPrintAsImage(bool value, const QString &name)
{
    const bool available = imageAvailable(name);
    const QMutexLocker lock(&_settingsMutex);
    _printAsImage = value && available;
}

QString TextPrinterSettings::defaultFont() const
{
    return defaultFont(printerId());
}

QString TextPrinterSettings::defaultFont(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _defaultFont;
}

void TextPrinterSettings::setDefaultFont(const QString &font)
{
    setDefaultFont(printerId(), font);
}

void TextPrinterSettings::setDefaultFont(const QString &name, const QString &font)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _defaultFont = font;
}

unsigned char TextPrinterSettings::codePage()
{
    const QMutexLocker lock(&_settingsMutex);
    return _codePage;
}

void TextPrinterSettings::setCodePage(const unsigned char &codePage)
{
    const QMutexLocker lock(&_settingsMutex);
    _codePage = codePage;
}

void TextPrinterSettings::setOwnValue(const QMap<QString, QVariant> &item)
{
    const QString key = settingsitem::key(item);
    const QString value = settingsitem::value(item).toString();
    if (key == PAPER_TYPR_ID) {
        setPaperTypeId(value.toInt());
    } else if (key == PRINTER_CODEC) {
        if (needCodecSettings())
            setCodec(value);
    } else {
        setImageValue(key, value);
    }
}

void TextPrinterSettings::setImageValue(const QString &key, const QString &value)
{
    if (!imageAvailable()) {
        setDefaultFont(QLatin1String(""));
        setPrintAsImage(false);
    } else if (key == PRINT_AS_IMAGE) {
        setPrintAsImage(value.toUInt() != 0);
    } else if (key == DEFAULT_FONT) {
        setDefaultFont(value);
    } else if (key == CODEPAGE) {
        setCodePage(static_cast<unsigned char>(value.toUInt()));
    }
}
