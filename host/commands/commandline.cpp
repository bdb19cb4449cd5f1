#include "commands/commandline.h"

#include "check/checker.h"
#include "commands/commonoptions.h"
#include "commands/helptext.h"
#include "diagnostics/reporterror.h"
#include "diagnostics/suggestion.h"
#include "diagnostics/terminalcolor.h"
#include "output/standardoutput.h"
#include "records/runlines.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace panelhost {

namespace {

const Command *findCommand(const QString &name)
{
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&name](const Command &command) { return command.name == name; });
    return found == commands().end() ? nullptr : &*found;
}

// The command is the first argument that is the name of a command. Its own options come after it.
const Command *commandIn(const QStringList &arguments)
{
    for (const QString &argument : arguments.mid(1)) {
        const Command *command = argument.isEmpty() ? nullptr : findCommand(argument);
        if (command)
            return command;
    }
    return findCommand(QString());
}

void addCommonOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(helpText());
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions(commonOptions());
}

bool readTBar(const QString &value, Session::Options &options, QString *error)
{
    if (value != QLatin1String("slider") && value != QLatin1String("fader")) {
        *error = QStringLiteral("--tbar is \"%1\", expected slider or fader.").arg(value);
        return false;
    }
    options.tbarType = value == QLatin1String("slider") ? TBarType::Slider : TBarType::Fader;
    return true;
}

bool readSize(const QString &value, Session::Options &options, QString *error)
{
    static const QRegularExpression form(QStringLiteral("^([1-9][0-9]{1,3})x([1-9][0-9]{1,3})$"));
    const QRegularExpressionMatch match = form.match(value);
    if (!match.hasMatch()) {
        *error = QStringLiteral("--size is \"%1\", expected width and height in pixels, such as 800x480.").arg(value);
        return false;
    }
    options.lcdSize = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return true;
}

// An empty variable of a script must not be taken for the default.
bool checkValues(const QCommandLineParser &parser, QString *error)
{
    for (const QString &name : parser.optionNames()) {
        if (parser.values(name).contains(QString())) {
            *error = QStringLiteral("--%1 has no value.").arg(name);
            return false;
        }
    }
    return true;
}

bool readShare(const QCommandLineParser &parser, Session::Options &options, QString *error)
{
    const QStringList names{QStringLiteral("share"), QStringLiteral("share-unchecked")};
    if (parser.isSet(names.first()) && parser.isSet(names.last())) {
        *error = QStringLiteral("Give --share or --share-unchecked, not both.");
        return false;
    }
    for (const QString &name : names) {
        if (!parser.isSet(name))
            continue;
        options.share = parser.value(name);
        if (!QFileInfo(options.share).isDir()) {
            *error = QStringLiteral("--%1 is \"%2\", expected the directory with the two XML files.")
                         .arg(name, options.share);
            return false;
        }
    }
    return true;
}

// Instead of files that it rejects, the component silently uses its default files.
bool checkShare(const QString &directory, QString *error)
{
    const Diagnostics diagnostics = checkDirectory(directory);
    if (countOf(diagnostics, Diagnostic::Severity::Error) == 0)
        return true;
    for (const Diagnostic &diagnostic : diagnostics) {
        if (diagnostic.severity == Diagnostic::Severity::Error)
            std::fprintf(stderr, "%s\n", qPrintable(coloredDiagnostic(diagnostic.toLine(), stderr)));
    }
    *error = QStringLiteral("--share is \"%1\"; the files there have errors. To use them all the same, give "
                            "--share-unchecked.")
                 .arg(directory);
    return false;
}

bool readOptions(const QCommandLineParser &parser, Session::Options &options, QString *error)
{
    options.component = parser.value(QStringLiteral("component"));
    options.pages = parser.value(QStringLiteral("pages"));
    options.language = parser.value(QStringLiteral("language"));
    options.usbStick = parser.value(QStringLiteral("usb-stick"));
    options.deriveRuns = runLines;
    return checkValues(parser, error) && readShare(parser, options, error)
        && readTBar(parser.value(QStringLiteral("tbar")), options, error)
        && readSize(parser.value(QStringLiteral("size")), options, error);
}

// The first unknown option that resembles one of the command.
QString optionSuggestion(const QCommandLineParser &parser, const Command &command)
{
    QStringList names{QStringLiteral("help"), QStringLiteral("version")};
    const auto options = visibleOptions(command) + commonOptions();
    for (const QCommandLineOption &option : options)
        names += option.names();
    for (const QString &unknown : parser.unknownOptionNames()) {
        const QString name = closestWord(unknown, names);
        if (!name.isEmpty())
            return QStringLiteral(" Did you mean --%1?").arg(name);
    }
    return {};
}

int printed(const QString &text)
{
    print(text);
    return 0;
}

}

Platform neededPlatform(int argc, const char *const *argv)
{
    QStringList arguments;
    for (int index = 0; index < argc; ++index)
        arguments << QString::fromLocal8Bit(argv[index]);
    const auto asks = [&arguments](const QString &option) {
        return std::any_of(arguments.begin(), arguments.end(), [&option](const QString &argument) {
            return argument == option || argument.startsWith(option + QLatin1Char('='));
        });
    };
    const Command &command = *commandIn(arguments);
    // Only an application with widgets removes Qt's own option from the arguments.
    if (command.platform == Platform::None && !asks(QStringLiteral("-platform"))
        && (command.drawingOption.isEmpty() || !asks(QStringLiteral("--") + command.drawingOption)))
        return Platform::None;
    const bool isHelp = asks(QStringLiteral("--help")) || asks(QStringLiteral("-h"))
        || asks(QStringLiteral("--version")) || asks(QStringLiteral("-v"));
    return command.platform == Platform::Display && !isHelp ? Platform::Display : Platform::Offscreen;
}

int runCommandLine(const QStringList &arguments)
{
    const Command &command = *commandIn(arguments);
    QCommandLineParser parser;
    addCommonOptions(parser);
    parser.addOptions(command.options);
    if (!parser.parse(arguments))
        return reportError(parser.errorText() + optionSuggestion(parser, command));
    if (parser.isSet(QStringLiteral("help")))
        return printed(parser.helpText());
    if (parser.isSet(QStringLiteral("version")))
        return printed(QStringLiteral("panelhost %1\n").arg(QCoreApplication::applicationVersion()));

    CommandLine line{{}, parser.positionalArguments(), parser};
    if (!command.name.isEmpty())
        line.arguments.removeFirst();
    const int count = line.arguments.size();
    if (command.name.isEmpty() && count > 0)
        return reportError(unknownCommandText(line.arguments.first()));
    if (count < command.minArguments || count > command.maxArguments)
        return reportError(QStringLiteral("Usage: panelhost %1").arg(command.syntax));
    QString error;
    if (!readOptions(parser, line.session, &error))
        return reportError(error);
    // The command check reports the errors itself.
    if (parser.isSet(QStringLiteral("share")) && command.run != runCheck && !checkShare(line.session.share, &error))
        return reportError(error);
    return command.run(line);
}

}
