#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSharedPointer>
#include <algorithm>
#include <initializer_list>

#include "commands.h"
#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "support.h"

namespace {

using Item = QMap<QString, QVariant>;
using Settings = QSharedPointer<PrinterSettings>;

// Types of printers, as the item "printerType" names them.
constexpr int textPrinter = 1;
constexpr int systemPrinter = 2;

QString text(const Item &item, const char *field)
{
    return item.value(QLatin1String(field)).toString();
}

bool isSame(const Item &one, const Item &other)
{
    return text(one, "group") == text(other, "group") && text(one, "key") == text(other, "key");
}

Settings settingsOfType(int type)
{
    if (type == textPrinter)
        return Settings(new TextPrinterSettings);
    if (type == systemPrinter)
        return Settings(new SystemPrinterSettings);
    return Settings(new PrinterSettings);
}

/// The settings class that the list's own "printerType" item asks for.
Settings settingsFor(const QList<Item> &items)
{
    int type = 0;
    for (const Item &item : items) {
        if (text(item, "group") == PrinterSettings::SECTION &&
            text(item, "key") == PrinterSettings::PRINTER_TYPE)
            type = text(item, "value").toInt();
    }
    return settingsOfType(type);
}

QList<QVariant> everything(const PrinterSettings &settings)
{
    return settings.toList() + CheckTemplatesSettings().toList();
}

std::optional<QList<Item>> readItems(const QString &fileName)
{
    const auto json = tool::readJson(fileName);
    if (!json)
        return std::nullopt;
    if (!json->isArray()) {
        tool::complain(QStringLiteral("%1: an item list is a JSON array").arg(fileName));
        return std::nullopt;
    }
    QList<Item> items;
    const QVariantList elements = json->toVariant().toList();
    for (const QVariant &element : elements) {
        const Item item = element.toMap();
        for (const char *field : {"group", "key", "value"}) {
            if (item.contains(QLatin1String(field)))
                continue;
            tool::complain(QStringLiteral("%1: item %2 has no \"%3\"")
                               .arg(fileName)
                               .arg(items.size() + 1)
                               .arg(QLatin1String(field)));
            return std::nullopt;
        }
        items.append(item);
    }
    return items;
}

bool isKey(const Item &item, std::initializer_list<QString> keys)
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
int keptNumber(const Item &item, int number)
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
bool isKept(const Item &item, const QVariant &held)
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
    QList<QVariant> items = everything(settings);
    const auto *const textSettings = dynamic_cast<const TextPrinterSettings *>(&settings);
    if (textSettings != nullptr && textSettings->imageAvailable())
        items.append(Item{{QStringLiteral("group"), settings.printerId()},
                          {QStringLiteral("key"), TextPrinterSettings::DEFAULT_FONT},
                          {QStringLiteral("value"), textSettings->defaultFont()}});
    return items;
}

/// Why an item isn't what the settings hold now, or nothing. The settings count some items as taken
/// that they don't keep, so what they hold is looked at as well.
QString fault(const Item &item, const QList<QVariant> &held)
{
    for (const QVariant &element : held) {
        const Item candidate = element.toMap();
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
QString give(const Item &item, PrinterSettings &settings)
{
    if (!settings.setValue(item) && !CheckTemplatesSettings().setValue(item))
        return QStringLiteral("unknown group, unknown key or bad value");
    return fault(item, holdings(settings));
}

/// Gives the items to the settings, and complains about each that was not taken.
bool importItems(const QString &fileName, const QList<Item> &items, PrinterSettings &settings)
{
    bool good = true;
    for (const Item &item : items) {
        const QString reason = give(item, settings);
        if (reason.isEmpty())
            continue;
        tool::complain(QStringLiteral("%1: group \"%2\", key \"%3\": not taken: %4")
                           .arg(fileName, text(item, "group"), text(item, "key"), reason));
        good = false;
    }
    return good;
}

void printItems(const QList<QVariant> &items)
{
    for (const QVariant &element : items) {
        const Item item = element.toMap();
        tool::printRow({text(item, "group"), text(item, "key"), text(item, "value")});
    }
}

/// "show" prints what the settings hold after the file; "import" only tells whether they took it.
int takeFile(const QString &fileName, bool show)
{
    const std::optional<QList<Item>> items = readItems(fileName);
    if (!items)
        return tool::BadInput;
    const Settings settings = settingsFor(*items);
    const bool good = importItems(fileName, *items, *settings);
    if (show)
        printItems(everything(*settings));
    else if (good)
        tool::print(QStringLiteral("%1 items taken").arg(items->size()));
    return good ? tool::Success : tool::BadInput;
}

int exportFile(const QString &fileName, int type, const QString &printer)
{
    const Settings settings = settingsOfType(type);
    settings->setPrinterType(static_cast<unsigned int>(type));
    settings->setPrinterId(printer);
    const QJsonDocument json(QJsonArray::fromVariantList(everything(*settings)));
    const QString standardOutput = QStringLiteral("-");
    const bool written = tool::writeLines(fileName == standardOutput ? QString() : fileName,
                                          tool::linesOf(json.toJson()));
    return written ? tool::Success : tool::BadInput;
}

}  // namespace

int runSettings(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Works on lists of settings, JSON arrays of {\"group\", \"key\", \"value\"}.\n"
        "  show    take the list and print all settings then, separated by tabulators\n"
        "  import  take the list and say what was not taken\n"
        "  export  write the list with which a printer starts"));
    parser.addPositionalArgument(QStringLiteral("ACTION"),
                                 QStringLiteral("show, import or export."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The list; - is standard input or output."));
    const QCommandLineOption printer(QStringLiteral("printer"),
                                     QStringLiteral("export: the printer's name."),
                                     QStringLiteral("NAME"));
    const QCommandLineOption type(
        QStringLiteral("type"),
        QStringLiteral("export: 0 no printer, 1 text printer, 2 system printer."),
        QStringLiteral("NUMBER"), QStringLiteral("1"));
    parser.addOptions({printer, type});
    if (const auto status = tool::parse(parser, QStringLiteral("settings"), arguments, 2, 2))
        return *status;
    const QString action = parser.positionalArguments().at(0);
    const QString fileName = parser.positionalArguments().at(1);
    if (action == QLatin1String("show") || action == QLatin1String("import"))
        return tool::finished(takeFile(fileName, action == QLatin1String("show")));
    if (action == QLatin1String("export")) {
        const std::optional<int> number = tool::numberOf(parser, type, 0, systemPrinter);
        if (!number)
            return tool::WrongUsage;
        return tool::finished(exportFile(fileName, *number, parser.value(printer)));
    }
    tool::complain(QStringLiteral("settings: there is no action \"%1\"; see \"receipt settings "
                                  "--help\"")
                       .arg(action));
    return tool::WrongUsage;
}
