#include "settings/systemprintersettings.h"

#include <QFontDatabase>
#include <utility>

#include "settings/settingsitem_p.h"

namespace {

constexpr int defaultSymbolsPerLine = 40;
constexpr int defaultPointSize = 14;

static_assert(int(ISystemPrinterSettings::Cicero) == int(QPageLayout::Cicero) &&
                  int(ISystemPrinterSettings::Cicero) == int(QPageSize::Cicero),
              "the units are converted by number");

bool isUnit(int number)
{
    return number >= ISystemPrinterSettings::Millimeter && number <= ISystemPrinterSettings::Cicero;
}

/// The item with its value converted to the type of the setting that its key names. The lock is
/// taken for the look at that type alone.
template <typename Fields>
settingsitem::Item typedItem(const settingsitem::Item &item, const Fields &fields, QMutex &mutex)
{
    const QString key = settingsitem::key(item);
    QVariant value = settingsitem::value(item);
    for (const auto &field : fields) {
        if (key != field.key)
            continue;
        QMutexLocker lock(&mutex);
        const int type = field.read().userType();
        lock.unlock();
        value.convert(type);
    }
    return settingsitem::plain(item, value);
}

}  // namespace

const QString SystemPrinterSettings::DEFAULT_FONT = QStringLiteral("defaultFont");
const QString SystemPrinterSettings::UNIT = QStringLiteral("unit");
const QString SystemPrinterSettings::PAGE_SIZE_KEY = QStringLiteral("pageSizeKey");
const QString SystemPrinterSettings::PAGE_WIDTH = QStringLiteral("pageWidth");
const QString SystemPrinterSettings::PAGE_HEIGHT = QStringLiteral("pageHeight");
const QString SystemPrinterSettings::AUTO_PAGE_HEIGHT = QStringLiteral("autoPageHeight");
const QString SystemPrinterSettings::LEFT_MARGIN = QStringLiteral("leftMargin");
const QString SystemPrinterSettings::RIGHT_MARGIN = QStringLiteral("rightMargin");
const QString SystemPrinterSettings::TOP_MARGIN = QStringLiteral("topMargin");
const QString SystemPrinterSettings::BOTTOM_MARGIN = QStringLiteral("bottomMargin");
const QString SystemPrinterSettings::ORIENTATION = QStringLiteral("orientation");
const QString SystemPrinterSettings::PRINTER_MODE = QStringLiteral("printerMode");
const QString SystemPrinterSettings::FULL_JUSTIFY_ALIGN = QStringLiteral("fullJustifyAlignment");

QString SystemPrinterSettings::_defaultFont;
ISystemPrinterSettings::Unit SystemPrinterSettings::_unit = Millimeter;
QString SystemPrinterSettings::_pageSizeKey;
double SystemPrinterSettings::_pageWidgth = 0.0;
double SystemPrinterSettings::_pageHeight = 0.0;
bool SystemPrinterSettings::_autoPageHeight = false;
double SystemPrinterSettings::_leftMargin = 0.0;
double SystemPrinterSettings::_rightMargin = 0.0;
double SystemPrinterSettings::_topMargin = 0.0;
double SystemPrinterSettings::_bottomMargin = 0.0;
ISystemPrinterSettings::Orientation SystemPrinterSettings::_orientation = Portrait;
int SystemPrinterSettings::_printerMode = QPrinter::PrinterResolution;
bool SystemPrinterSettings::_fullJustifyAlign = true;

/// One setting, in the order of the item list. Both functions run under the settings mutex.
struct SystemPrinterSettings::Field
{
    const QString &key;
    QVariant (*read)();
    void (*write)(const QVariant &value);
};

const SystemPrinterSettings::Field SystemPrinterSettings::fields[] = {
    {DEFAULT_FONT, [] { return QVariant(_defaultFont); },
     [](const QVariant &value) { _defaultFont = value.toString(); }},
    {UNIT, [] { return QVariant(int(_unit)); },
     [](const QVariant &value) { _unit = static_cast<Unit>(value.toInt()); }},
    {PAGE_SIZE_KEY, [] { return QVariant(_pageSizeKey); },
     [](const QVariant &value) { _pageSizeKey = value.toString(); }},
    {PAGE_WIDTH, [] { return QVariant(_pageWidgth); },
     [](const QVariant &value) { _pageWidgth = value.toDouble(); }},
    {PAGE_HEIGHT, [] { return QVariant(_pageHeight); },
     [](const QVariant &value) { _pageHeight = value.toDouble(); }},
    {AUTO_PAGE_HEIGHT, [] { return QVariant(_autoPageHeight); },
     [](const QVariant &value) { _autoPageHeight = value.toBool(); }},
    {LEFT_MARGIN, [] { return QVariant(_leftMargin); },
     [](const QVariant &value) { _leftMargin = value.toDouble(); }},
    {RIGHT_MARGIN, [] { return QVariant(_rightMargin); },
     [](const QVariant &value) { _rightMargin = value.toDouble(); }},
    {TOP_MARGIN, [] { return QVariant(_topMargin); },
     [](const QVariant &value) { _topMargin = value.toDouble(); }},
    {BOTTOM_MARGIN, [] { return QVariant(_bottomMargin); },
     [](const QVariant &value) { _bottomMargin = value.toDouble(); }},
    {ORIENTATION, [] { return QVariant(int(_orientation)); },
     [](const QVariant &value) { _orientation = static_cast<Orientation>(value.toInt()); }},
    {PRINTER_MODE, [] { return QVariant(_printerMode); },
     [](const QVariant &value) { _printerMode = value.toInt(); }},
    {FULL_JUSTIFY_ALIGN, [] { return QVariant(int(_fullJustifyAlign)); },
     [](const QVariant &value) { _fullJustifyAlign = value.toInt() != 0; }},
};

SystemPrinterSettings::SystemPrinterSettings() = default;

SystemPrinterSettings::~SystemPrinterSettings() = default;

QList<QVariant> SystemPrinterSettings::toList() const
{
    QList<QVariant> list = PrinterSettings::toList();
    const QMutexLocker lock(&_settingsMutex);
    for (const Field &field : fields)
        settingsitem::append(list, _printerId, field.key, field.read());
    return list;
}

void SystemPrinterSettings::setList(const QList<QVariant> &list)
{
    PrinterSettings::setList(list);
    QVector<settingsitem::Item> items = settingsitem::itemsOf(list);
    for (settingsitem::Item &item : items)
        item = typedItem(item, fields, _settingsMutex);
    const QMutexLocker lock(&_settingsMutex);
    for (const settingsitem::Item &item : std::as_const(items))
        setOwnValueLocked(item);
}

bool SystemPrinterSettings::setValue(const QMap<QString, QVariant> &item)
{
    if (PrinterSettings::setValue(item))
        return true;
    const settingsitem::Item plain = typedItem(item, fields, _settingsMutex);
    const QMutexLocker lock(&_settingsMutex);
    return setOwnValueLocked(plain);
}

int SystemPrinterSettings::defSymbolsPerLine()
{
    const int stored = PrinterSettings::defSymbolsPerLine();
    return stored < 1 ? defaultSymbolsPerLine : stored;
}

QFont SystemPrinterSettings::defaultFont(const QString &name) const
{
    Q_UNUSED(name)
    QString text;
    {
        const QMutexLocker lock(&_settingsMutex);
        text = _defaultFont;
    }
    // Not under the lock: a text that is no font is logged, and a client's message handler may use
    // the settings.
    QFont font;
    return !text.isEmpty() && font.fromString(text) ? font : prepareDefaultFont();
}

void SystemPrinterSettings::setDefaultFont(const QString &name, const QFont &font)
{
    Q_UNUSED(name)
    const QString text = font.toString();
    const QMutexLocker lock(&_settingsMutex);
    _defaultFont = text;
}

ISystemPrinterSettings::Unit SystemPrinterSettings::unit(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _unit;
}

void SystemPrinterSettings::setUnit(const QString &name, ISystemPrinterSettings::Unit unit)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _unit = unit;
}

QString SystemPrinterSettings::pageSizeKey(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _pageSizeKey;
}

void SystemPrinterSettings::setPageSizeKey(const QString &name, const QString &key)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _pageSizeKey = key;
}

double SystemPrinterSettings::pageWidgth(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _pageWidgth;
}

void SystemPrinterSettings::setPageWidth(const QString &name, double width)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _pageWidgth = width;
}

double SystemPrinterSettings::pageHeight(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _pageHeight;
}

void SystemPrinterSettings::setPageHeight(const QString &name, double height)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _pageHeight = height;
}

bool SystemPrinterSettings::autoPageHeight(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _autoPageHeight;
}

void SystemPrinterSettings::setAutoPageHeight(const QString &name, bool automatic)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _autoPageHeight = automatic;
}

double SystemPrinterSettings::leftMargin(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _leftMargin;
}

void SystemPrinterSettings::setLeftMargin(const QString &name, double margin)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _leftMargin = margin;
}

double SystemPrinterSettings::rightMargin(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _rightMargin;
}

void SystemPrinterSettings::setRightMargin(const QString &name, double margin)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _rightMargin = margin;
}

double SystemPrinterSettings::topMargin(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _topMargin;
}

void SystemPrinterSettings::setTopMargin(const QString &name, double margin)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _topMargin = margin;
}

double SystemPrinterSettings::bottomMargin(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _bottomMargin;
}

void SystemPrinterSettings::setBottomMargin(const QString &name, double margin)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _bottomMargin = margin;
}

ISystemPrinterSettings::Orientation SystemPrinterSettings::orientation(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _orientation;
}

void SystemPrinterSettings::setOrientation(const QString &name,
                                           ISystemPrinterSettings::Orientation orientation)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _orientation = orientation;
}

QPrinter::PrinterMode SystemPrinterSettings::printerMode(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return static_cast<QPrinter::PrinterMode>(_printerMode);
}

void SystemPrinterSettings::setPrinterMode(const QString &name, QPrinter::PrinterMode mode)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _printerMode = mode;
}

bool SystemPrinterSettings::fullJustifyAlign(const QString &name) const
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    return _fullJustifyAlign;
}

void SystemPrinterSettings::setFullJustifyAlign(const QString &name, bool justify)
{
    Q_UNUSED(name)
    const QMutexLocker lock(&_settingsMutex);
    _fullJustifyAlign = justify;
}

QPageLayout::Unit SystemPrinterSettings::pageLayoutUnit(const QString &name) const
{
    const int number = unit(name);
    return isUnit(number) ? static_cast<QPageLayout::Unit>(number) : QPageLayout::Millimeter;
}

void SystemPrinterSettings::setPageLayoutUnit(const QString &name, QPageLayout::Unit unit)
{
    if (isUnit(unit))
        setUnit(name, static_cast<ISystemPrinterSettings::Unit>(unit));
}

QPageSize::Unit SystemPrinterSettings::pageSizeUnit(const QString &name) const
{
    return static_cast<QPageSize::Unit>(pageLayoutUnit(name));
}

QPageLayout::Orientation SystemPrinterSettings::pageLayoutOrientation(const QString &name) const
{
    return orientation(name) == Landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void SystemPrinterSettings::setPageLayoutOrientation(const QString &name,
                                                     QPageLayout::Orientation orientation)
{
    if (orientation == QPageLayout::Portrait)
        setOrientation(name, Portrait);
    else if (orientation == QPageLayout::Landscape)
        setOrientation(name, Landscape);
}

QFont SystemPrinterSettings::prepareDefaultFont()
{
    QFont font;
    const QFontDatabase database;
    const QStringList families = database.families(QFontDatabase::Cyrillic);
    if (families.contains(QLatin1String("Monospace"))) {
        font = QFont(QStringLiteral("Monospace"));
    } else {
        for (const QString &family : families) {
            if (database.isFixedPitch(family)) {
                font = QFont(family);
                break;
            }
        }
    }
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    font.setPointSize(defaultPointSize);
    return font;
}

bool SystemPrinterSettings::setOwnValueLocked(const QMap<QString, QVariant> &item)
{
    if (!settingsitem::hasGroup(item) || settingsitem::group(item) != _printerId ||
        !settingsitem::hasKey(item))
        return false;
    const QString key = settingsitem::key(item);
    for (const Field &field : fields) {
        if (key == field.key) {
            field.write(settingsitem::value(item));
            return true;
        }
    }
    return false;
}
