#pragma once

#include <QtCore/QStringList>

#include <initializer_list>

/// The expected calls of a test, one a line.
inline QStringList calls(std::initializer_list<const char *> lines)
{
    QStringList result;
    for (const char *line : lines)
        result << QString::fromUtf8(line);
    return result;
}
