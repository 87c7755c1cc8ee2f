#include <QJsonDocument>
#include <QJsonObject>

#include "commands.h"
#include "forms.h"
#include "printeroption.h"
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

QCommandLineOption timeoutOption()
{
    return {QStringLiteral("timeout"),
            QStringLiteral("How long is waited, each time, for the printer's turn, for its line "
                           "and for its answer, 1 to %1; default: %2.")
                .arg(longestTimeout)
                .arg(usualTimeout),
            QStringLiteral("SECONDS"), QString::number(usualTimeout)};
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
    parser.addOptions(tool::printerOptions());
    parser.addOptions(tool::printerModelOptions());
    parser.addOptions({tool::jsonOption(), timeoutOption()});
    if (const auto status =
            tool::parseForPrinter(parser, QStringLiteral("status"), arguments, 0, 0))
        return *status;
    const auto seconds = tool::numberOf(parser, timeoutOption(), 1, longestTimeout);
    if (!seconds)
        return tool::WrongUsage;
    int status = tool::Success;
    const auto printer = tool::chosenPrinterOf(parser, QStringLiteral("status"), &status);
    if (!printer)
        return status;
    constexpr int millisecondsOfASecond = 1000;
    tool::StatusQuery query(printer->address, printer->profile, *seconds * millisecondsOfASecond);
    return report(printer->address, printer->profile, query.run(),
                  parser.isSet(tool::jsonOption()));
}
