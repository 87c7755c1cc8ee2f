#include <QJsonDocument>
#include <QJsonObject>

#include "commands.h"
#include "forms.h"
#include "printermodel.h"
#include "statusquery.h"
#include "statusreport.h"
#include "support.h"

namespace {

using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrinterProfile;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Asks a printer whether it can print, by the questions that its model answers at
once: whether it is on line, has paper, is shut, and has no error. Nothing is
printed. It is asked when no other program prints on it; standard error tells
how many are in front. Ctrl+C ends it.

Exit status: 0 it can print, also with paper near its end; 4 it can't, as without
paper or with its cover open; 1 it isn't reached, or doesn't answer; 2 wrong
usage.)";

constexpr int cannotPrint = 4;
constexpr int usualTimeout = 5;
constexpr int longestTimeout = 3600;
const QString usualModel = QStringLiteral("GENERAL_EPSON_PROTOCOL");

QCommandLineOption toOption()
{
    return {QStringLiteral("to"),
            QStringLiteral("The printer: serial:/dev/ttyS0?baud=19200, device:/dev/usb/lp0, "
                           "usb:VENDOR:PRODUCT or tcp:HOST:9100."),
            QStringLiteral("URL")};
}

QCommandLineOption timeoutOption()
{
    return {QStringLiteral("timeout"),
            QStringLiteral("How long is waited, each time, for the printer's turn, for its line "
                           "and for its answer, 1 to %1; default: %2.")
                .arg(longestTimeout)
                .arg(usualTimeout),
            QStringLiteral("SECONDS"), QString::number(usualTimeout)};
}

/// Complains and gives nothing if that is nothing that can be asked.
std::optional<PrinterAddress> printerOf(const QCommandLineParser &parser)
{
    if (!parser.isSet(toOption())) {
        tool::complain(QStringLiteral("status needs --to URL, the printer that is asked"));
        return std::nullopt;
    }
    QString error;
    auto address = PrinterAddress::parse(parser.value(toOption()), &error);
    if (!address) {
        tool::complain(QStringLiteral("--to: ") + error);
        return std::nullopt;
    }
    if (address->kind() == PrinterAddress::Kind::File) {
        tool::complain(
            QStringLiteral("--to: %1 is a file, which answers nothing").arg(address->toString()));
        return std::nullopt;
    }
    return address;
}

void printJson(const PrinterAddress &address, const PrinterProfile &profile,
               const tool::StatusResult &result)
{
    QJsonObject json = tool::statusJson(result.status);
    json.insert(QStringLiteral("printer"), address.toString());
    json.insert(QStringLiteral("model"), profile.modelId());
    json.insert(QStringLiteral("reached"), result.isReached);
    json.insert(QStringLiteral("answered"), result.status.isKnown());
    if (!result.fault.isEmpty())
        json.insert(QStringLiteral("error"), result.fault);
    tool::printContent(tool::linesOf(QJsonDocument(json).toJson()));
}

int report(const PrinterAddress &address, const PrinterProfile &profile,
           const tool::StatusResult &result, bool asJson)
{
    for (const QString &text : {result.note, result.fault}) {
        if (!text.isEmpty())
            tool::complain(text);
    }
    if (asJson)
        printJson(address, profile, result);
    else if (result.fault.isEmpty() || !result.status.native().isEmpty())
        tool::printStatus(result.status);
    if (!result.fault.isEmpty() || !result.status.isKnown())
        return tool::BadInput;
    return result.status.canPrint() ? int(tool::Success) : cannotPrint;
}

}  // namespace

int runStatus(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions({toOption(), tool::modelOption(usualModel), tool::modelsFileOption(),
                       tool::jsonOption(), timeoutOption()});
    if (const auto status = tool::parse(parser, QStringLiteral("status"), arguments, 0, 0))
        return *status;
    const auto address = printerOf(parser);
    const auto seconds = tool::numberOf(parser, timeoutOption(), 1, longestTimeout);
    if (!address || !seconds)
        return tool::WrongUsage;
    const auto models = tool::modelsOf(parser);
    if (!models)
        return tool::BadInput;
    const QString model = parser.value(tool::modelOption());
    if (!tool::findModel(*models, model))
        return tool::WrongUsage;
    const PrinterProfile profile = *models->profile(model);
    constexpr int millisecondsOfASecond = 1000;
    tool::StatusQuery query(*address, profile, *seconds * millisecondsOfASecond);
    return report(*address, profile, query.run(), parser.isSet(tool::jsonOption()));
}
