#include <QJsonArray>
#include <QJsonDocument>

#include "commands.h"
#include "settingslist.h"
#include "support.h"

namespace {

void printItems(const QList<QVariant> &items)
{
    for (const QVariant &element : items) {
        const tool::SettingsItem item = element.toMap();
        tool::printRow(
            {tool::text(item, "group"), tool::text(item, "key"), tool::text(item, "value")});
    }
}

/// "show" prints what the settings hold after the file; "import" only tells whether they took it.
int takeFile(const QString &fileName, bool show)
{
    const auto items = tool::readSettingsItems(fileName);
    if (!items)
        return tool::BadInput;
    const tool::SettingsObject settings = tool::settingsFor(*items);
    const bool good = tool::takeSettingsItems(fileName, *items, *settings);
    if (show)
        printItems(tool::itemsOf(*settings));
    else if (good)
        tool::print(QStringLiteral("%1 items taken").arg(items->size()));
    return good ? tool::Success : tool::BadInput;
}

int exportFile(const QString &fileName, int type, const QString &printer)
{
    const tool::SettingsObject settings = tool::settingsOfType(type);
    settings->setPrinterType(static_cast<unsigned int>(type));
    settings->setPrinterId(printer);
    const QJsonDocument json(QJsonArray::fromVariantList(tool::itemsOf(*settings)));
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
        return takeFile(fileName, action == QLatin1String("show"));
    if (action == QLatin1String("export")) {
        const std::optional<int> number = tool::numberOf(parser, type, 0, tool::systemPrinter);
        if (!number)
            return tool::WrongUsage;
        return exportFile(fileName, *number, parser.value(printer));
    }
    tool::complain(QStringLiteral("settings: there is no action \"%1\"; see \"receipt settings "
                                  "--help\"")
                       .arg(action));
    return tool::WrongUsage;
}
