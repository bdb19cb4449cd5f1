#include "commands/runinwindow.h"

namespace panelhost {

int runWindow(const CommandLine &line)
{
    return runInWindow(line, {});
}

}
