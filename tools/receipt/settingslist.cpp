#include "settingslist.h"

#include <QJsonDocument>
#include <algorithm>
#include <initializer_list>

#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "support.h"

namespace tool {

QString text(const SettingsItem &item, const char *field)
{
    return item.value(QLatin1String(field)).toString();
}

namespace {

bool isSame(const SettingsItem &one, const SettingsItem &other)
{
    return text(one, "group") == text(other, "group") && text(one, "key") == text(other, "key");
}

bool isKey(const SettingsItem &item, std::initializer_list<QString> keys)
{
    return std::find(keys.begin(), keys.end(), text(item, "key")) != keys.end();
}

/// Whether a value means yes; any number but 0 does.
bool truth(const QVariant &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? number != 0.0 : value.toBool();
}

/// The number that the settings keep for an item's whole number: some have fewer bits, and some
/// know a few numbers only.
int keptNumber(const SettingsItem &item, int number)
{
    if (isKey(item, {PrinterSettings::PAPER_LOOP_FLAG, PrinterSettings::CHARACTER_MODE}))
        return number == 1 || number == 2 ? number : 0;
    if (isKey(item, {PrinterSettings::MOVE_CHECK_TO}))
        return static_cast<signed char>(number);
    if (isKey(item, {TextPrinterSettings::CODEPAGE}))
        return static_cast<unsigned char>(number);
    return number;
}

/// Whether a held value is what the settings keep for the item, told by its meaning: "12.50" is
/// kept as 12.5, and a switch that is set to 5 is on.
bool isKept(const SettingsItem &item, const QVariant &held)
{
    const QVariant value = item.value(QStringLiteral("value"));
    if (held.userType() == QMetaType::QString)
        return held.toString() == value.toString();
    if (held.userType() == QMetaType::Bool ||
        isKey(item, {PrinterSettings::ENABLE_PORT_LOGGING, TextPrinterSettings::PRINT_AS_IMAGE,
                     SystemPrinterSettings::FULL_JUSTIFY_ALIGN}))
        return truth(held) == truth(value);
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (isNumber && held.toDouble() == number)
        return true;
    const int whole = value.toString().toInt(&isNumber);
    return isNumber && held.toInt() == keptNumber(item, whole);
}

/// All that the settings hold. A text printer's list has no font while documents are not sent as
/// images, although the font is kept.
QList<QVariant> holdings(const PrinterSettings &settings)
{
    QList<QVariant> items = itemsOf(settings);
    const auto *const textSettings = dynamic_cast<const TextPrinterSettings *>(&settings);
    if (textSettings != nullptr && textSettings->imageAvailable())
        items.append(SettingsItem{{QStringLiteral("group"), settings.printerId()},
                                  {QStringLiteral("key"), TextPrinterSettings::DEFAULT_FONT},
                                  {QStringLiteral("value"), textSettings->defaultFont()}});
    return items;
}

/// Why an item isn't what the settings hold now, or nothing. The settings count some items as taken
/// that they don't keep, so what they hold is looked at as well.
QString fault(const SettingsItem &item, const QList<QVariant> &held)
{
    for (const QVariant &element : held) {
        const SettingsItem candidate = element.toMap();
        if (!isSame(candidate, item))
            continue;
        if (isKept(item, candidate.value(QStringLiteral("value"))))
            return QString();
        return QStringLiteral("the value \"%1\" became \"%2\"")
            .arg(text(item, "value"), text(candidate, "value"));
    }
    return QStringLiteral("this printer has no such setting");
}

/// Gives an item to the settings. Why it was not taken, or nothing.
QString give(const SettingsItem &item, PrinterSettings &settings)
{
    if (!settings.setValue(item) && !CheckTemplatesSettings().setValue(item))
        return QStringLiteral("unknown group, unknown key or bad value");
    return fault(item, holdings(settings));
}

}  // namespace

SettingsObject settingsOfType(int type)
{
    if (type == textPrinter)
        return SettingsObject(new TextPrinterSettings);
    if (type == systemPrinter)
        return SettingsObject(new SystemPrinterSettings);
    return SettingsObject(new PrinterSettings);
}

SettingsObject settingsFor(const QList<SettingsItem> &items)
{
    int type = 0;
    for (const SettingsItem &item : items) {
        if (text(item, "group") == PrinterSettings::SECTION &&
            text(item, "key") == PrinterSettings::PRINTER_TYPE)
            type = text(item, "value").toInt();
    }
    return settingsOfType(type);
}

QList<QVariant> itemsOf(const PrinterSettings &settings)
{
    return settings.toList() + CheckTemplatesSettings().toList();
}

std::optional<QList<SettingsItem>> readSettingsItems(const QString &fileName)
{
    const auto json = readJson(fileName);
    if (!json)
        return std::nullopt;
    if (!json->isArray()) {
        complain(QStringLiteral("%1: an item list is a JSON array").arg(fileName));
        return std::nullopt;
    }
    QList<SettingsItem> items;
    const QVariantList elements = json->toVariant().toList();
    for (const QVariant &element : elements) {
        const SettingsItem item = element.toMap();
        for (const char *field : {"group", "key", "value"}) {
            if (item.contains(QLatin1String(field)))
                continue;
            complain(QStringLiteral("%1: item %2 has no \"%3\"")
                         .arg(fileName)
                         .arg(items.size() + 1)
                         .arg(QLatin1String(field)));
            return std::nullopt;
        }
        items.append(item);
    }
    return items;
}

bool takeSettingsItems(const QString &fileName, const QList<SettingsItem> &items,
                       PrinterSettings &settings)
{
    bool good = true;
    for (const SettingsItem &item : items) {
        const QString reason = give(item, settings);
        if (reason.isEmpty())
            continue;
        complain(QStringLiteral("%1: group \"%2\", key \"%3\": not taken: %4")
                     .arg(fileName, text(item, "group"), text(item, "key"), reason));
        good = false;
    }
    return good;
}

}  // namespace tool
