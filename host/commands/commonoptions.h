#pragma once

#include <QtCore/QCommandLineOption>
#include <QtCore/QList>

namespace panelhost {

/// Returns the options that all commands have, without --help and --version.
QList<QCommandLineOption> commonOptions();

}
