#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Makes sure that the descriptors 0 to 2 are taken and that a closed pipe is an error of the write instead of the
/// process's end. Called first of all: a file that is opened later must not become the standard output.
void prepareOutput();

/// Writes @p text to the standard output at once. A failure is remembered for statusAfterOutput(). GUI thread.
void print(const QString &text);

/// The exit status of a command that ended with @p status: 2, after one sentence on the standard error output, if
/// some of what it printed was lost.
int statusAfterOutput(int status);

}
