#include "commands/manualpage.h"

#include "commands/commonoptions.h"
#include "commands/helptext.h"

#include <QtCore/QCoreApplication>

namespace panelhost {

namespace {

// Text of a line that troff must not take for a request or an escape.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e")).replace(QLatin1Char('-'), QStringLiteral("\\-"));
    return text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\'')) ? QStringLiteral("\\&") + text
                                                                                   : text;
}

QString heading(const QString &page)
{
    return QStringLiteral(".TH \"%1\" 1 \"\" \"panelhost %2\" \"User Commands\"\n")
        .arg(escaped(page).toUpper(), QCoreApplication::applicationVersion());
}

QString section(const char *title, const QString &text)
{
    return QStringLiteral(".SH %1\n").arg(QLatin1String(title)) + text;
}

QString entry(const QString &term, const QString &text)
{
    return QStringLiteral(".TP\n.B %1\n%2\n").arg(escaped(term), escaped(text));
}

QString entries(const QList<QCommandLineOption> &options)
{
    QString text;
    for (const QCommandLineOption &option : options) {
        const QString byDefault = option.defaultValues().join(QLatin1Char(' '));
        text += entry(optionForm(option),
                      byDefault.isEmpty() ? option.description()
                                          : option.description() + QStringLiteral(" Default: %1.").arg(byDefault));
    }
    return text;
}

QString helpEntries()
{
    return entry(QStringLiteral("-h, --help"), QStringLiteral("Prints the help."))
        + entry(QStringLiteral("-v, --version"), QStringLiteral("Prints the version."));
}

QString pageName(const Command &command)
{
    return command.name.isEmpty() ? QStringLiteral("panelhost") : QStringLiteral("panelhost-") + command.name;
}

QString line(const QString &text)
{
    return escaped(text) + QLatin1Char('\n');
}

const Command &windowCommand()
{
    return commands().constFirst();
}

}

QString programManualPage()
{
    QString list;
    QString pages;
    for (const Command &command : commands()) {
        list += entry(QStringLiteral("panelhost ") + command.syntax, command.description);
        if (!command.name.isEmpty())
            pages += (pages.isEmpty() ? QString() : QStringLiteral(",\n"))
                + QStringLiteral(".BR %1 (1)").arg(escaped(pageName(command)));
    }
    return heading(QStringLiteral("panelhost"))
        + section("NAME", QStringLiteral("panelhost \\- host with a simulated device for the factory mode\n"))
        + section("SYNOPSIS", QStringLiteral(".B panelhost\n[COMMAND] [options] [FILE...]\n"))
        + section("DESCRIPTION", line(programSummary())) + section("COMMANDS", list)
        + section("OPTIONS OF ALL COMMANDS", entries(commonOptions()) + helpEntries())
        + section("OPTIONS OF THE WINDOW", entries(visibleOptions(windowCommand())))
        + section("EXIT STATUS", line(exitStatusText())) + section("SEE ALSO", pages + QLatin1Char('\n'));
}

QString commandManualPage(const Command &command)
{
    const QString own = entries(visibleOptions(command));
    return heading(pageName(command))
        + section("NAME", QStringLiteral("%1 \\- %2\n").arg(escaped(pageName(command)), escaped(command.description)))
        + section("SYNOPSIS", QStringLiteral(".B panelhost\n") + line(command.syntax + QStringLiteral(" [options]")))
        + section("OPTIONS", own + entries(commonOptions()) + helpEntries())
        + section("EXIT STATUS", line(exitStatusText())) + section("SEE ALSO", QStringLiteral(".BR panelhost (1)\n"));
}

}
