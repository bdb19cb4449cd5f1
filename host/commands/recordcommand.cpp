#include "commands/runinwindow.h"

namespace panelhost {

int runRecord(const CommandLine &line)
{
    return runInWindow(line, line.arguments.first());
}

}
