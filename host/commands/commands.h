#pragma once

#include "session/session.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// What was typed, read and checked as far as all commands have it in common.
struct CommandLine
{
    Session::Options session;         ///< from the common options
    QStringList arguments;            ///< files and directories after the command's name
    const QCommandLineParser &parser; ///< for the command's own options
};

/// One command: each in a file of its own. Returns the exit status: 0 done, 1 an expectation or a check failed,
/// 2 usage, unreadable input or a component that can't be loaded.
struct Command
{
    QString name; ///< empty: the window
    QString syntax;
    QString description;
    QList<QCommandLineOption> options;
    int minArguments;
    int maxArguments;
    bool needsDisplay; ///< without it the offscreen platform does
    int (*run)(const CommandLine &);
};

const QList<Command> &commands();

int runWindow(const CommandLine &line);
int runPlay(const CommandLine &line);
int runRecord(const CommandLine &line);
int runCheck(const CommandLine &line);
int runInfo(const CommandLine &line);

}
