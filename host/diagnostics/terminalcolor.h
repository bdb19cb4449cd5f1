#pragma once

#include <QtCore/QString>

#include <cstdio>

namespace panelhost {

enum class TerminalColor {
    Red,
    Green,
    Yellow
};

/// Returns true if @p stream is a terminal that shows colors, and the user hasn't switched them off with NO_COLOR.
bool hasColors(std::FILE *stream);

/// Returns @p text in @p color if @p stream has colors, otherwise @p text itself.
QString colored(const QString &text, TerminalColor color, std::FILE *stream);

/// Returns a line such as "file:1:2: error: text" with the word "error" or "warning" in its color.
QString coloredDiagnostic(QString line, std::FILE *stream);

}
