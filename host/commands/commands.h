#pragma once

#include "session/session.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// The arguments of a command. The options that all commands have are read and checked.
struct CommandLine
{
    Session::Options session;         ///< from the common options
    QStringList arguments;            ///< files and directories after the command's name
    const QCommandLineParser &parser; ///< for the command's own options
};

/// A command of panelhost. Each is implemented in a file of its own. The exit status is 0 for success, 1 if an
/// expectation or a check failed, and 2 for wrong usage, unreadable input or a component that can't be loaded.
struct Command
{
    QString name; ///< empty: the window
    QString syntax;
    QString description;
    QList<QCommandLineOption> options;
    int minArguments;
    int maxArguments;
    bool needsDisplay; ///< if not, the offscreen platform is used
    int (*run)(const CommandLine &);
};

const QList<Command> &commands();

int runWindow(const CommandLine &line);
int runPlay(const CommandLine &line);
int runRecord(const CommandLine &line);
int runCheck(const CommandLine &line);
int runProbe(const CommandLine &line);
int runRestore(const CommandLine &line);
int runInfo(const CommandLine &line);
int runRuns(const CommandLine &line);
int runRun(const CommandLine &line);
int runStats(const CommandLine &line);
int runPrune(const CommandLine &line);
int runSchema(const CommandLine &line);

}
