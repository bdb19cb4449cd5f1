#include "panel/windowrun.h"

namespace panelhost {

int runWindow(const CommandLine &line)
{
    return runInWindow(line, {});
}

}
