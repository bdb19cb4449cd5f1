#pragma once

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// What the two commands with a window have beside the common options.
struct WindowOptions
{
    QString journal;    ///< file that gets the journal, line by line
    QString screenshot; ///< file that gets a picture of the window, which then closes
    QString layout;     ///< file that gets the geometry of all controls on the screen
    bool force = false; ///< an existing recording is overwritten
    double speed = 1;   ///< as VirtualClock::run() takes it

    static QList<QCommandLineOption> commandLineOptions();
    /// False, with a sentence in @p error, for a value that none has.
    bool read(const QCommandLineParser &parser, QString *error);
};

}
