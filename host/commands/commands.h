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

/// What a command needs of Qt.
enum class Platform {
    None,      ///< no window system and no widgets, so that it starts fast
    Offscreen, ///< widgets that nobody sees
    Display
};

/// A command of panelhost. Each command is implemented in a file of its own. The exit status is 0 for success, 1 if an
/// expectation or a check failed, and 2 for wrong usage, unreadable input or a component that can't be loaded.
struct Command
{
    QString name; ///< empty: the window
    QString syntax;
    QString description;
    QList<QCommandLineOption> options;
    int minArguments;
    int maxArguments;
    Platform platform;
    int (*run)(const CommandLine &);
    QString drawingOption = {}; ///< with this option, Platform::Offscreen is needed instead of Platform::None
};

const QList<Command> &commands();

int runWindow(const CommandLine &line);
int runPlay(const CommandLine &line);
int runRecord(const CommandLine &line);
int runView(const CommandLine &line);
int runCheck(const CommandLine &line);
int runProbe(const CommandLine &line);
int runRestore(const CommandLine &line);
int runInfo(const CommandLine &line);
int runRuns(const CommandLine &line);
int runRun(const CommandLine &line);
int runStats(const CommandLine &line);
int runPrune(const CommandLine &line);
int runSchema(const CommandLine &line);
int runGenerate(const CommandLine &line);

}
