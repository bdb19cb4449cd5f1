#include "commands/helptext.h"
#include "commands/manualpage.h"
#include "commands/shellcompletion.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"

#include <algorithm>

namespace panelhost {

namespace {

int printManualPage(const QString &name)
{
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&name](const Command &command) { return command.name == name; });
    if (found == commands().end())
        return reportError(unknownCommandText(name));
    print(commandManualPage(*found));
    return 0;
}

int printed(const QString &text)
{
    print(text);
    return 0;
}

}

int runGenerate(const CommandLine &line)
{
    const QString kind = line.arguments.first();
    if (kind == QLatin1String("man") && line.arguments.size() == 2)
        return printManualPage(line.arguments.last());
    if (line.arguments.size() == 1) {
        if (kind == QLatin1String("man"))
            return printed(programManualPage());
        if (kind == QLatin1String("bash"))
            return printed(bashCompletion());
        if (kind == QLatin1String("zsh"))
            return printed(zshCompletion());
    }
    return reportError(QStringLiteral("Usage: panelhost generate man [COMMAND], generate bash or generate zsh"));
}

}
