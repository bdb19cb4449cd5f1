#include "commands/shellcompletion.h"

#include "commands/commonoptions.h"
#include "commands/helptext.h"

#include <QtCore/QMap>

namespace panelhost {

namespace {

// How the value of an option is completed, by the name that the help shows for it.
struct ValueKind
{
    const char *valueName;
    const char *bash; ///< options and arguments of bash's compgen
    const char *zsh;  ///< action of zsh's _arguments
};

const ValueKind valueKinds[] = {
    {"FILE", "-f", "_files"},
    {"JOURNAL", "-f", "_files"},
    {"PATH", "-f", "_files"},
    {"DIR", "-d", "_files -/"},
    {"TYPE", "-W 'slider fader'", "(slider fader)"},
    {"SPEED", "-W 'pause 1 10 max'", "(pause 1 10 max)"},
};

const ValueKind *kindOf(const QCommandLineOption &option)
{
    for (const ValueKind &kind : valueKinds) {
        if (option.valueName() == QLatin1String(kind.valueName))
            return &kind;
    }
    return nullptr;
}

QString name(const QCommandLineOption &option)
{
    return QStringLiteral("--") + option.names().constFirst();
}

QList<QCommandLineOption> optionsOf(const Command &command)
{
    static const QList<QCommandLineOption> help = {
        {QStringLiteral("help"), QStringLiteral("Prints the help.")},
        {QStringLiteral("version"), QStringLiteral("Prints the version.")},
    };
    return visibleOptions(command) + commonOptions() + help;
}

QStringList namesOf(const QList<QCommandLineOption> &options)
{
    QStringList names;
    for (const QCommandLineOption &option : options)
        names << name(option);
    return names;
}

// The options that have a value, as patterns of case by how the value is completed.
QString bashValueCases()
{
    QMap<QString, QStringList> patterns;
    for (const Command &command : commands()) {
        const auto options = optionsOf(command);
        for (const QCommandLineOption &option : options) {
            const ValueKind *kind = kindOf(option);
            if (!option.valueName().isEmpty())
                patterns[QString::fromLatin1(kind ? kind->bash : "-W ''")] << name(option);
        }
    }
    QString cases;
    for (auto pattern = patterns.begin(); pattern != patterns.end(); ++pattern) {
        pattern->removeDuplicates();
        cases += QStringLiteral("        %1) mapfile -t COMPREPLY < <(compgen %2 -- \"$current\"); return ;;\n")
                     .arg(pattern->join(QLatin1Char('|')), pattern.key());
    }
    return cases;
}

QString bashWordCases()
{
    QString cases;
    for (const Command &command : commands()) {
        const bool isWindow = command.name.isEmpty();
        cases += QStringLiteral("        %1) options='%2' ;;\n")
                     .arg(isWindow ? QStringLiteral("''") : command.name,
                          namesOf(optionsOf(command)).join(QLatin1Char(' ')));
    }
    return cases;
}

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

QString zshOption(const QCommandLineOption &option)
{
    QString description = option.description();
    description.replace(QLatin1Char('['), QStringLiteral("\\[")).replace(QLatin1Char(']'), QStringLiteral("\\]"));
    const ValueKind *kind = kindOf(option);
    QString text = name(option) + QLatin1Char('[') + description + QLatin1Char(']');
    if (!option.valueName().isEmpty())
        text += QStringLiteral(":%1:%2").arg(option.valueName(), QString::fromLatin1(kind ? kind->zsh : " "));
    return quoted(text);
}

QString zshCase(const Command &command)
{
    QStringList arguments;
    const auto options = optionsOf(command);
    for (const QCommandLineOption &option : options)
        arguments << zshOption(option);
    const bool isWindow = command.name.isEmpty();
    arguments << (isWindow ? QStringLiteral("'1:command:_panelhost_commands'") : QStringLiteral("'*:file:_files'"));
    return QStringLiteral("        %1)\n            _arguments \\\n                %2 ;;\n")
        .arg(isWindow ? QStringLiteral("''") : command.name, arguments.join(QStringLiteral(" \\\n                ")));
}

QString zshCommands()
{
    QString text;
    for (const Command &command : commands()) {
        if (!command.name.isEmpty())
            text += QStringLiteral("        %1\n").arg(quoted(command.name + QLatin1Char(':') + command.description));
    }
    return text;
}

}

QString bashCompletion()
{
    return QStringLiteral(R"(# bash completion of panelhost
_panelhost() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' options word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        case $word in
        %1) command=$word; break ;;
        esac
    done
    compopt -o filenames 2>/dev/null
    case $previous in
%2    esac
    case $command in
%3    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [ -z "$command" ]; then
        mapfile -t COMPREPLY < <(compgen -W '%4' -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _panelhost panelhost
)")
        .arg(commandNames().join(QLatin1Char('|')), bashValueCases(), bashWordCases(),
             commandNames().join(QLatin1Char(' ')));
}

QString zshCompletion()
{
    QString cases;
    for (const Command &command : commands())
        cases += zshCase(command);
    return QStringLiteral(R"(#compdef panelhost
_panelhost_commands() {
    local -a commands
    commands=(
%1    )
    _describe command commands
}

_panelhost() {
    local command='' word
    for word in ${words[2,CURRENT-1]}; do
        case $word in
        %2) command=$word; break ;;
        esac
    done
    case $command in
%3    esac
}

_panelhost "$@"
)")
        .arg(zshCommands(), commandNames().join(QLatin1Char('|')), cases);
}

}
