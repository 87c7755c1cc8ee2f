#pragma once

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVariant>
#include <optional>

#include "settings/printersettings.h"

/// Lists of settings in files: JSON arrays of {"group", "key", "value"}.
namespace tool {

using SettingsItem = QMap<QString, QVariant>;
using SettingsObject = QSharedPointer<PrinterSettings>;

// Types of printers, as the item "printerType" names them.
constexpr int textPrinter = 1;
constexpr int systemPrinter = 2;

/// A field of an item as text.
QString text(const SettingsItem &item, const char *field);

/// The settings class of a type of printers.
SettingsObject settingsOfType(int type);
/// The settings class that the list's own "printerType" item asks for.
SettingsObject settingsFor(const QList<SettingsItem> &items);
/// All settings as items, those of templates behind the printer's.
QList<QVariant> itemsOf(const PrinterSettings &settings);

/// The list of a file. Complains and gives nothing on failure.
std::optional<QList<SettingsItem>> readSettingsItems(const QString &fileName);
/// Gives the items to the settings, and complains about each that was not taken.
bool takeSettingsItems(const QString &fileName, const QList<SettingsItem> &items,
                       PrinterSettings &settings);

}  // namespace tool
