#include "printeroption.h"

#include "printermodel.h"
#include "settingslist.h"
#include "shopfile.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::PrinterAddress;

const QString generalModel = QStringLiteral("GENERAL_EPSON_PROTOCOL");
const QString settingsBeginning = QStringLiteral("--settings=");

/// The model that a list of settings names; empty if it names none. Complains and gives nothing if
/// it can't be read.
std::optional<QString> modelOfSettings(const QString &file)
{
    const auto items = readSettingsItems(file);
    if (!items)
        return std::nullopt;
    for (const SettingsItem &item : *items) {
        if (text(item, "group") == PrinterSettings::SECTION &&
            text(item, "key") == PrinterSettings::PRINTER_ID)
            return text(item, "value");
    }
    return QString();
}

/// The shop's options without those that the command lacks. One that takes no settings takes their
/// model.
std::optional<QStringList> optionsOfCommand(QCommandLineParser &parser, const QStringList &options)
{
    parser.parse(QStringList(QString()) + options);
    const QStringList unknown = parser.unknownOptionNames();
    QStringList taken;
    for (const QString &option : options) {
        const QString name = option.mid(2).section(QLatin1Char('='), 0, 0);
        if (!unknown.contains(name)) {
            taken.append(option);
        } else if (option.startsWith(settingsBeginning)) {
            const auto model = modelOfSettings(option.mid(settingsBeginning.size()));
            if (!model)
                return std::nullopt;
            if (!model->isEmpty())
                taken.append(QStringLiteral("--model=") + *model);
        }
    }
    return taken;
}

}  // namespace

QCommandLineOption printerOption()
{
    return {QStringLiteral("to"),
            QStringLiteral("The printer: serial:/dev/ttyS0?baud=19200, device:/dev/usb/lp0, "
                           "usb:VENDOR:PRODUCT or tcp:HOST:9100. Default: that of --config."),
            QStringLiteral("URL")};
}

QList<QCommandLineOption> printerOptions()
{
    return {printerOption(), shopFileOption()};
}

std::optional<int> parseForPrinter(QCommandLineParser &parser, const QString &usage,
                                   const QStringList &arguments, int minimum, int maximum)
{
    if (const auto status = parse(parser, usage, arguments, minimum, maximum))
        return status;
    const auto options = shopFileOptions(parser);
    const auto taken = options ? optionsOfCommand(parser, *options) : std::nullopt;
    if (!taken)
        return BadInput;
    parser.parse(QStringList(usage) + *taken + arguments);
    return std::nullopt;
}

std::optional<PrinterAddress> printerAddressOf(const QCommandLineParser &parser,
                                               const QCommandLineOption &option)
{
    QString error;
    auto address = PrinterAddress::parse(parser.value(option), &error);
    if (!address)
        complain(QStringLiteral("--%1: %2").arg(option.names().constFirst(), error));
    return address;
}

QList<QCommandLineOption> printerModelOptions()
{
    return {modelOption(generalModel), modelsFileOption()};
}

std::optional<PrinterAddress> printerOf(const QCommandLineParser &parser, const QString &command)
{
    if (!parser.isSet(printerOption())) {
        complain(
            QStringLiteral("%1 needs --to URL, the printer, or a file of --config that names it")
                .arg(command));
        return std::nullopt;
    }
    auto address = printerAddressOf(parser, printerOption());
    if (!address)
        return std::nullopt;
    if (address->kind() == PrinterAddress::Kind::File) {
        complain(
            QStringLiteral("--to: %1 is a file, which answers nothing").arg(address->toString()));
        return std::nullopt;
    }
    return address;
}

std::optional<ChosenPrinter> chosenPrinterOf(const QCommandLineParser &parser,
                                             const QString &command, int *status)
{
    *status = WrongUsage;
    const auto address = printerOf(parser, command);
    if (!address)
        return std::nullopt;
    const auto models = modelsOf(parser);
    if (!models) {
        *status = BadInput;
        return std::nullopt;
    }
    const QString model = parser.value(modelOption());
    if (!findModel(*models, model))
        return std::nullopt;
    return ChosenPrinter{*address, *models->profile(model)};
}

}  // namespace tool
