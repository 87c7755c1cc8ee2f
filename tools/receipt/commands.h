#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>

#include "support.h"

/// One command of the tool. `run` gets the arguments behind the command's name and gives the exit
/// status. A new command is a file command_<name>.cpp, listed in CMakeLists.txt, a declaration
/// here, and a row in main.cpp.
struct Command
{
    const char *name;
    const char *summary;
    int (*run)(const QStringList &arguments);
    /// Whether it needs the fonts of a graphical application; null: never.
    bool (*draws)(const QStringList &arguments) = nullptr;
};

namespace tool {

/// The command of this name; null if there is none.
template <std::size_t count>
const Command *findCommand(const Command (&commands)[count], const QString &name)
{
    for (const Command &command : commands) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

/// Prints a row of a help text for each of the commands.
/// @param width of the column of their names
template <std::size_t count>
void printCommands(const Command (&commands)[count], int width)
{
    for (const Command &command : commands)
        print(QStringLiteral("  %1 %2")
                  .arg(QLatin1String(command.name), -width)
                  .arg(QLatin1String(command.summary)));
}

/// Whether a word asks for a help text in the place of a command or an action.
inline bool isHelp(const QString &word)
{
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

/// Runs the action that the arguments name, or tells which there are.
/// @param command which has these actions
/// @param about   says what the command does, between its usage and the actions
/// @return the exit status
template <std::size_t count>
int runAction(const QString &command, const QString &about, const Command (&actions)[count],
              const QStringList &arguments)
{
    constexpr int nameWidth = 8;
    const QString name = arguments.value(0);
    if (const Command *action = findCommand(actions, name))
        return action->run(arguments.mid(1));
    if (!isHelp(name)) {
        complain(QStringLiteral("%1: there is no action \"%2\"; see \"receipt %1 --help\"")
                     .arg(command, name));
        return WrongUsage;
    }
    printOwn(QStringLiteral("Usage: receipt %1 ACTION [ARGUMENT...]\n\n%2 Actions:")
                 .arg(command, about));
    printCommands(actions, nameWidth);
    printOwn(QStringLiteral("\n\"receipt %1 ACTION --help\" says more.").arg(command));
    return Success;
}

}  // namespace tool

int runBbCode(const QStringList &arguments);
int runData(const QStringList &arguments);
int runDecode(const QStringList &arguments);
bool drawsDecoded(const QStringList &arguments);
int runDocument(const QStringList &arguments);
int runDrawer(const QStringList &arguments);
int runEval(const QStringList &arguments);
int runFill(const QStringList &arguments);
int runFind(const QStringList &arguments);
int runLint(const QStringList &arguments);
int runModels(const QStringList &arguments);
int runPreview(const QStringList &arguments);
int runPrint(const QStringList &arguments);
int runQueue(const QStringList &arguments);
int runRecord(const QStringList &arguments);
int runRender(const QStringList &arguments);
int runSelfTest(const QStringList &arguments);
int runSettings(const QStringList &arguments);
int runSplit(const QStringList &arguments);
int runState(const QStringList &arguments);
int runStatus(const QStringList &arguments);
int runSymbols(const QStringList &arguments);
