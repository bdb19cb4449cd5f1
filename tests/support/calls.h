#pragma once

#include <QtCore/QStringList>

#include <initializer_list>

/// Returns @p lines as a list of expected calls, one call per line.
inline QStringList calls(std::initializer_list<const char *> lines)
{
    QStringList result;
    for (const char *line : lines)
        result << QString::fromUtf8(line);
    return result;
}
