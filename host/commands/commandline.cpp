#include "commands/commandline.h"

#include "check/checker.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"
#include "records/runlines.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace panelhost {

namespace {

QString ownOptions(const Command &command)
{
    QString text;
    for (const QCommandLineOption &option : command.options) {
        if (option.flags().testFlag(QCommandLineOption::HiddenFromHelp))
            continue;
        const QStringList form{QStringLiteral("--") + option.names().constFirst(), option.valueName()};
        text += QStringLiteral(" [%1]").arg(form.join(QLatin1Char(' ')).trimmed());
    }
    return text.isEmpty() ? text : QString(18, QLatin1Char(' ')) + text + QLatin1Char('\n');
}

QString help()
{
    QString text = QStringLiteral("Runs the factory mode component on a simulated device.\n\nCommands:\n");
    for (const Command &command : commands())
        text += QStringLiteral("  panelhost %1%2\n").arg(command.syntax, -16).arg(command.description)
            + ownOptions(command);
    return text
        + QStringLiteral("\nExit status: 0 done, 1 an expectation or a check failed, 2 usage, unreadable "
                         "input or a component that can't be loaded.");
}

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
    parser.setApplicationDescription(help());
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {QStringLiteral("component"), QStringLiteral("The component's library."), QStringLiteral("PATH")},
        {QStringLiteral("pages"), QStringLiteral("The library of the repair mode's pages, or none."),
         QStringLiteral("PATH")},
        {QStringLiteral("share"), QStringLiteral("Directory with the two XML files. Files with errors are refused."),
         QStringLiteral("DIR")},
        {QStringLiteral("share-unchecked"),
         QStringLiteral("Like --share, but files with errors are passed to the component."), QStringLiteral("DIR")},
        {QStringLiteral("language"), QStringLiteral("Language of the component's texts."), QStringLiteral("CODE"),
         QStringLiteral("en")},
        {QStringLiteral("tbar"), QStringLiteral("Type of the T-Bar: slider or fader."), QStringLiteral("TYPE"),
         QStringLiteral("slider")},
        {QStringLiteral("usb-stick"),
         QStringLiteral("Directory where the USB stick for the log export is mounted; none; or temporary for an empty "
                        "stick that is discarded."),
         QStringLiteral("DIR"), Session::noUsbStick},
        {QStringLiteral("size"), QStringLiteral("Size of the LCD in pixels."), QStringLiteral("WxH"),
         QStringLiteral("800x480")},
    });
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
            std::fprintf(stderr, "%s\n", qPrintable(diagnostic.toLine()));
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
        return reportError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return printed(parser.helpText());
    if (parser.isSet(QStringLiteral("version")))
        return printed(QStringLiteral("panelhost %1\n").arg(QCoreApplication::applicationVersion()));

    CommandLine line{{}, parser.positionalArguments(), parser};
    if (!command.name.isEmpty())
        line.arguments.removeFirst();
    const int count = line.arguments.size();
    if (command.name.isEmpty() && count > 0)
        return reportError(
            QStringLiteral("There is no command \"%1\"; see panelhost --help.").arg(line.arguments.first()));
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
