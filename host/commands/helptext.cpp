#include "commands/helptext.h"

#include "diagnostics/suggestion.h"

#include <algorithm>
#include <iterator>

namespace panelhost {

namespace {

QString optionLine(const Command &command)
{
    QString text;
    const auto options = visibleOptions(command);
    for (const QCommandLineOption &option : options)
        text += QStringLiteral(" [%1]").arg(optionForm(option));
    return text.isEmpty() ? text : QString(18, QLatin1Char(' ')) + text + QLatin1Char('\n');
}

}

QString programSummary()
{
    return QStringLiteral("Runs the factory mode component on a simulated device.");
}

QString exitStatusText()
{
    return QStringLiteral("Exit status: 0 done, 1 an expectation or a check failed, 2 usage, unreadable input or a "
                          "component that can't be loaded.");
}

QList<QCommandLineOption> visibleOptions(const Command &command)
{
    QList<QCommandLineOption> visible;
    std::copy_if(
        command.options.cbegin(), command.options.cend(), std::back_inserter(visible),
        [](const QCommandLineOption &option) { return !option.flags().testFlag(QCommandLineOption::HiddenFromHelp); });
    return visible;
}

QString optionForm(const QCommandLineOption &option)
{
    const QStringList form{QStringLiteral("--") + option.names().constFirst(), option.valueName()};
    return form.join(QLatin1Char(' ')).trimmed();
}

QStringList commandNames()
{
    QStringList names;
    for (const Command &command : commands()) {
        if (!command.name.isEmpty())
            names << command.name;
    }
    return names;
}

QString unknownCommandText(const QString &name)
{
    const QString closest = closestWord(name, commandNames());
    const QString suggestion = closest.isEmpty() ? QString() : QStringLiteral(" Did you mean \"%1\"?").arg(closest);
    return QStringLiteral("There is no command \"%1\"; see panelhost --help.").arg(name) + suggestion;
}

QString helpText()
{
    QString text = programSummary() + QStringLiteral("\n\nCommands:\n");
    for (const Command &command : commands())
        text += QStringLiteral("  panelhost %1%2\n").arg(command.syntax, -18).arg(command.description)
            + optionLine(command);
    return text + QLatin1Char('\n') + exitStatusText();
}

}
