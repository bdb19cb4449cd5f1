#include "window/windowoptions.h"

#include "window/speedbar.h"

#include <QtCore/QMap>

namespace panelhost {

static QCommandLineOption hidden(const QString &name)
{
    QCommandLineOption option(name, {}, QStringLiteral("FILE"));
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    return option;
}

QCommandLineOption WindowOptions::stateOption()
{
    return {QStringLiteral("state"), QStringLiteral("Directory for what a board has to restore."),
            QStringLiteral("DIR")};
}

QList<QCommandLineOption> WindowOptions::commandLineOptions()
{
    return {
        {QStringLiteral("device"), QStringLiteral("Use the board that FILE describes."), QStringLiteral("FILE")},
        stateOption(),
        {QStringLiteral("kiosk"), QStringLiteral("Show the LCD alone, on the whole screen.")},
        {QStringLiteral("journal"), QStringLiteral("Write the journal to FILE."), QStringLiteral("FILE")},
        {QStringLiteral("speed"), QStringLiteral("Speed of the device's time: pause, 1, 10 or max."),
         QStringLiteral("SPEED"), QStringLiteral("1")},
        {QStringLiteral("force"), QStringLiteral("Overwrite a recording.")},
        {QStringLiteral("ask-unit"), QStringLiteral("Ask for the unit's serial number before factory mode.")},
        {QStringLiteral("unit-pattern"), QStringLiteral("Like --ask-unit; serial numbers must match REGEX."),
         QStringLiteral("REGEX")},
        hidden(QStringLiteral("screenshot")),
        hidden(QStringLiteral("layout")),
    };
}

bool WindowOptions::read(const QCommandLineParser &parser, QString *error)
{
    static const QMap<QString, double> speeds = {{QStringLiteral("pause"), SpeedBar::Paused},
                                                 {QStringLiteral("1"), 1},
                                                 {QStringLiteral("10"), 10},
                                                 {QStringLiteral("max"), 0}};
    journal = parser.value(QStringLiteral("journal"));
    screenshot = parser.value(QStringLiteral("screenshot"));
    force = parser.isSet(QStringLiteral("force"));
    board = parser.value(QStringLiteral("device"));
    state = parser.value(QStringLiteral("state"));
    isKiosk = parser.isSet(QStringLiteral("kiosk"));
    layout = parser.value(QStringLiteral("layout"));
    const QString wanted = parser.value(QStringLiteral("speed"));
    if (!speeds.contains(wanted)) {
        *error = QStringLiteral("--speed is \"%1\", expected pause, 1, 10 or max.").arg(wanted);
        return false;
    }
    speed = speeds.value(wanted);
    hasSpeed = parser.isSet(QStringLiteral("speed"));
    return readUnitPattern(parser, error);
}

bool WindowOptions::readUnitPattern(const QCommandLineParser &parser, QString *error)
{
    const QString name = QStringLiteral("unit-pattern");
    asksForUnit = parser.isSet(QStringLiteral("ask-unit")) || parser.isSet(name);
    if (isKiosk && asksForUnit) {
        *error = QStringLiteral("--kiosk has no place to ask for a unit; give it with --unit.");
        return false;
    }
    const auto pattern = parser.isSet(name) ? UnitPattern::fromText(parser.value(name), error) : UnitPattern();
    if (!pattern)
        return false;
    unitPattern = *pattern;
    const QString unit = parser.value(QStringLiteral("unit"));
    const QString problem = asksForUnit && !unit.isEmpty() ? unitPattern.problem(unit) : QString();
    if (!problem.isEmpty())
        *error = QStringLiteral("--unit: %1").arg(problem);
    return problem.isEmpty();
}

}
