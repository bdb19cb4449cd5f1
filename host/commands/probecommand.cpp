#include "commands/commands.h"
#include "device/board/boardprobe.h"
#include "output/standardoutput.h"
#include "session/devicenames.h"

namespace panelhost {

int runProbe(const CommandLine &line)
{
    const ProbedBoard board = probeBoard();
    const bool isProfile = line.parser.isSet(QStringLiteral("profile"));
    print(isProfile ? probeProfile(board, deviceNamesOf(line.session).keys.keys()) : probeText(board));
    return 0;
}

}
