#pragma once

#include "window/unitpattern.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// The options of the two commands that open a window.
struct WindowOptions
{
    QString journal;          ///< file that gets the journal, line by line
    QString screenshot;       ///< file for a screenshot of the window, which then closes
    QString layout;           ///< file that gets the geometry of all controls on the screen
    QString board;            ///< profile of the board that is the device; empty: the device is simulated
    QString state;            ///< directory for what must survive the process; empty: the default
    bool isKiosk = false;     ///< the LCD alone, on the whole screen
    bool force = false;       ///< an existing recording is overwritten
    double speed = 1;         ///< as VirtualClock::run() takes it
    bool hasSpeed = false;    ///< the speed was given
    bool asksForUnit = false; ///< factory mode is entered only for a unit whose serial number was entered
    UnitPattern unitPattern;

    /// Returns the options for the parser.
    static QList<QCommandLineOption> commandLineOptions();
    /// Returns the option --state, which other commands have, too.
    static QCommandLineOption stateOption();
    /// Reads the values. Returns false and sets @p error to a sentence if a value isn't allowed.
    bool read(const QCommandLineParser &parser, QString *error);

private:
    bool readUnitPattern(const QCommandLineParser &parser, QString *error);
};

}
