#include <QCoreApplication>

#include "application.h"
#include "commands.h"
#include "programstart.h"
#include "support.h"
#include "terminaltext.h"

namespace {

bool drawsAlways(const QStringList &)
{
    return true;
}

constexpr Command commands[] = {
    {"bbcode", "show what a BBCode text prints", runBbCode},
    {"data", "write the document that a template needs", runData},
    {"decode", "show what a printer makes of the bytes sent to it", runDecode, drawsDecoded},
    {"document", "save, show, check, repair and remove document files", runDocument},
    {"drawer", "open the cash drawer at a printer", runDrawer},
    {"eval", "evaluate an arithmetic expression", runEval},
    {"fill", "fill a template's lines from a document", runFill},
    {"find", "find receipt printers on serial ports", runFind},
    {"lint", "say what is wrong in templates", runLint},
    {"models", "list the known printers and what they can do", runModels},
    {"preview", "draw a receipt as a printer model prints it", runPreview, drawsAlways},
    {"print", "print a receipt, or make the bytes that a printer gets", runPrint},
    {"queue", "keep receipts until they are printed, and reprint them", runQueue},
    {"record", "keep what programs and a printer say to each other", runRecord},
    {"render", "print a receipt from a template and a document", runRender},
    {"selftest", "print a printer's self test, and make a file of what it shows", runSelfTest},
    {"settings", "show, check and make lists of settings", runSettings},
    {"split", "show the fiscal sections of a template", runSplit},
    {"state", "explain a state record of the print service", runState},
    {"status", "ask a printer whether it can print", runStatus},
    {"symbols", "draw and check a file of special symbols", runSymbols},
};

void printHelp()
{
    tool::printOwn(
        QStringLiteral("Usage: receipt COMMAND [ARGUMENT...]\n\n"
                       "Fills, renders and inspects receipts. Commands:"));
    tool::printCommands(commands, 10);
    tool::printOwn(
        QStringLiteral("\n\"receipt COMMAND --help\" says more. Exit status: 0 success, 1 bad "
                       "input, 2 wrong usage."));
}

/// Whether the arguments are those of a command that draws.
bool draws(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const Command *command = tool::findCommand(commands, arguments.value(0));
    return command != nullptr && command->draws != nullptr && command->draws(arguments);
}

}  // namespace

int main(int argc, char *argv[])
{
    programstart::begin("receipt");
    qInstallMessageHandler(terminaltext::writeLogLine);
    const auto application = receiptpreview::makeApplication(argc, argv, draws(argc, argv));
    const QString refusal = programstart::refusalOfArguments(argc, argv);
    if (!refusal.isEmpty()) {
        tool::complain(refusal);
        return tool::WrongUsage;
    }
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.isEmpty()) {
        printHelp();
        return tool::WrongUsage;
    }
    const QString &name = arguments.constFirst();
    if (tool::isHelp(name)) {
        printHelp();
        return tool::Success;
    }
    if (name == QLatin1String("--version")) {
        tool::print(QStringLiteral("receipt " RECEIPT_VERSION));
        return tool::Success;
    }
    if (const Command *command = tool::findCommand(commands, name))
        return tool::finished(command->run(arguments.mid(1)));
    tool::complain(QStringLiteral("there is no command \"%1\"; see \"receipt --help\"").arg(name));
    return tool::WrongUsage;
}
