#pragma once

#include "commands/commands.h"

namespace panelhost {

/// What --help, the manual pages and the shell completions are made of.
QString programSummary();
QString exitStatusText();

/// Returns the options of @p command that users see, without those of all commands.
QList<QCommandLineOption> visibleOptions(const Command &command);

/// Returns @p option as it is typed, such as "--journal FILE".
QString optionForm(const QCommandLineOption &option);

/// Returns the names of all commands but the window, which has none.
QStringList commandNames();

/// Returns the error message about a command that doesn't exist.
QString unknownCommandText(const QString &name);

/// Returns the text above the list of options in --help.
QString helpText();

}
