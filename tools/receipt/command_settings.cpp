#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSharedPointer>

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
    const std::optional<QByteArray> bytes = tool::readInput(fileName);
    if (!bytes)
        return std::nullopt;
    QJsonParseError error{};
    const QJsonDocument json = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        tool::complain(QStringLiteral("%1: %2").arg(tool::placeOf(fileName, *bytes, error.offset),
                                                    error.errorString()));
        return std::nullopt;
    }
    if (!json.isArray()) {
        tool::complain(QStringLiteral("%1: an item list is a JSON array").arg(fileName));
        return std::nullopt;
    }
    QList<Item> items;
    const QVariantList elements = json.toVariant().toList();
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

/// Why an item isn't what the settings hold in the end, or nothing. The settings count some items
/// as taken that they don't keep, so the outcome is looked at as well.
QString fault(const Item &item, const QList<QVariant> &outcome)
{
    for (const QVariant &element : outcome) {
        const Item held = element.toMap();
        if (!isSame(held, item))
            continue;
        if (text(held, "value") == text(item, "value"))
            return QString();
        return QStringLiteral("the value \"%1\" became \"%2\"")
            .arg(text(item, "value"), text(held, "value"));
    }
    return QStringLiteral("this printer has no such setting");
}

/// Gives the items to the settings, and complains about each that was not taken.
bool importItems(const QString &fileName, const QList<Item> &items, PrinterSettings &settings)
{
    bool good = true;
    const auto complainOf = [&](const Item &item, const QString &reason) {
        tool::complain(QStringLiteral("%1: group \"%2\", key \"%3\": not taken: %4")
                           .arg(fileName, text(item, "group"), text(item, "key"), reason));
        good = false;
    };
    QList<Item> taken;
    for (const Item &item : items) {
        if (!settings.setValue(item) && !CheckTemplatesSettings().setValue(item)) {
            complainOf(item, QStringLiteral("unknown group, unknown key or bad value"));
            continue;
        }
        for (int row = taken.size() - 1; row >= 0; --row) {
            if (isSame(taken.at(row), item))
                taken.removeAt(row);
        }
        taken.append(item);
    }
    const QList<QVariant> outcome = everything(settings);
    for (const Item &item : qAsConst(taken)) {
        const QString reason = fault(item, outcome);
        if (!reason.isEmpty())
            complainOf(item, reason);
    }
    return good;
}

void printItems(const QList<QVariant> &items)
{
    for (const QVariant &element : items) {
        const Item item = element.toMap();
        tool::print(QStringLiteral("%1\t%2\t%3")
                        .arg(text(item, "group"), text(item, "key"), text(item, "value")));
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
    const bool written = tool::writeText(fileName == standardOutput ? QString() : fileName,
                                         QString::fromUtf8(json.toJson()).trimmed());
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
