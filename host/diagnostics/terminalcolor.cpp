#include "diagnostics/terminalcolor.h"

#include <unistd.h>

namespace panelhost {

namespace {

const char *codeOf(TerminalColor color)
{
    switch (color) {
    case TerminalColor::Red:
        return "31";
    case TerminalColor::Green:
        return "32";
    case TerminalColor::Yellow:
        break;
    }
    return "33";
}

}

bool hasColors(std::FILE *stream)
{
    return isatty(fileno(stream)) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR")
        && qgetenv("TERM") != QByteArrayLiteral("dumb");
}

QString colored(const QString &text, TerminalColor color, std::FILE *stream)
{
    return hasColors(stream) ? QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(codeOf(color)), text) : text;
}

QString coloredDiagnostic(QString line, std::FILE *stream)
{
    const QString words[] = {QStringLiteral("error:"), QStringLiteral("warning:")};
    const TerminalColor colors[] = {TerminalColor::Red, TerminalColor::Yellow};
    for (int kind = 0; kind < 2; ++kind) {
        const int at = line.indexOf(QStringLiteral(": ") + words[kind]);
        if (at >= 0)
            return line.replace(at + 2, words[kind].size(), colored(words[kind], colors[kind], stream));
    }
    return line;
}

}
