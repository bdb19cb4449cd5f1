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

// Empty if there is nothing of this kind.
QString textOf(const QString &kind)
{
    if (kind == QLatin1String("man"))
        return programManualPage();
    if (kind == QLatin1String("bash"))
        return bashCompletion();
    return kind == QLatin1String("zsh") ? zshCompletion() : QString();
}

}

int runGenerate(const CommandLine &line)
{
    const QString kind = line.arguments.first();
    if (kind == QLatin1String("man") && line.arguments.size() == 2)
        return printManualPage(line.arguments.last());
    const QString text = line.arguments.size() == 1 ? textOf(kind) : QString();
    if (!text.isEmpty()) {
        print(text);
        return 0;
    }
    return reportError(QStringLiteral("Usage: panelhost generate man [COMMAND], generate bash or generate zsh"));
}

}
