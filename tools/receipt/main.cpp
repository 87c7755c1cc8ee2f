#include <QGuiApplication>
#include <QHash>
#include <QLoggingCategory>
#include <memory>

#include "commands.h"
#include "programstart.h"
#include "support.h"
#include "terminaltext.h"

namespace {

constexpr Command commands[] = {
    {"bbcode", "show what a BBCode text prints", runBbCode},
    {"document", "save, show, check, repair and remove document files", runDocument},
    {"eval", "evaluate an arithmetic expression", runEval},
    {"fill", "fill a template's lines from a document", runFill},
    {"find", "find receipt printers on serial ports", runFind},
    {"lint", "say what is wrong in templates", runLint},
    {"models", "list the known printers and what they can do", runModels},
    {"preview", "draw a receipt as a printer model prints it", runPreview, true},
    {"render", "print a receipt from a template and a document", runRender},
    {"settings", "show, check and make lists of settings", runSettings},
    {"split", "show the fiscal sections of a template", runSplit},
    {"state", "explain a state record of the print service", runState},
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

/// A command that draws gets an application with fonts, and works without a display; the others
/// don't pay for it.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[])
{
    const Command *command =
        argc > 1 ? tool::findCommand(commands, QString::fromLocal8Bit(argv[1])) : nullptr;
    if (command == nullptr || !command->draws)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt writes the fonts of a PDF in the order of a hash, which is to be the same on every run.
    qSetGlobalQHashSeed(0);
    // What Qt finds missing for a desktop is nothing to the user of a command.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    QLoggingCategory::setFilterRules(QString());
    return application;
}

}  // namespace

int main(int argc, char *argv[])
{
    programstart::begin("receipt");
    qInstallMessageHandler(terminaltext::writeLogLine);
    const auto application = makeApplication(argc, argv);
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
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
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
