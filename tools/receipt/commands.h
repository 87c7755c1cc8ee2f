#pragma once

#include <QStringList>

/// One command of the tool. `run` gets the arguments behind the command's name and gives the exit
/// status. A new command is a file command_<name>.cpp, listed in CMakeLists.txt, a declaration
/// here, and a row in main.cpp.
struct Command
{
    const char *name;
    const char *summary;
    int (*run)(const QStringList &arguments);
    bool draws = false;  ///< whether it needs the fonts of a graphical application
};

int runBbCode(const QStringList &arguments);
int runDocument(const QStringList &arguments);
int runEval(const QStringList &arguments);
int runFill(const QStringList &arguments);
int runFind(const QStringList &arguments);
int runLint(const QStringList &arguments);
int runModels(const QStringList &arguments);
int runPreview(const QStringList &arguments);
int runRender(const QStringList &arguments);
int runSettings(const QStringList &arguments);
int runSplit(const QStringList &arguments);
int runState(const QStringList &arguments);
int runSymbols(const QStringList &arguments);
