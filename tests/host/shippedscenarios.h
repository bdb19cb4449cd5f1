#pragma once

#include "scenario/scenario.h"
#include "session/session.h"

#include <QtCore/QMetaType>

/// Returns the options of a session with the component that was built and the shipped configuration files.
inline panelhost::Session::Options shippedOptions()
{
    panelhost::Session::Options options;
    options.component = QStringLiteral(LCD_BUILD_DIR "/lib/liblcdfactorymodeimpl.so");
    options.share = QStringLiteral(LCD_SOURCE_DIR "/share");
    return options;
}

/// Returns the path of the shipped scenario in the file @p name.
inline QString shippedScenario(const char *name)
{
    return QStringLiteral(LCD_SOURCE_DIR "/scenarios/") + QString::fromLatin1(name);
}

// A scenario as the data of a test.
Q_DECLARE_METATYPE(panelhost::Scenario)
