#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Opens the descriptors 0 to 2 if they are closed, so that a file that is opened later doesn't become the standard
/// output, and makes writing to a closed pipe an error instead of a signal. Call it first in the process.
void prepareOutput();

/// Writes @p text to the standard output immediately. statusAfterOutput() reports failures. GUI thread.
void print(const QString &text);

/// Returns the exit status of a command that returned @p status. If some of its output was lost, writes a sentence to
/// the standard error output and returns 2.
int statusAfterOutput(int status);

}
