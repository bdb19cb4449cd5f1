#pragma once

#include "check/finding.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Everything that is wrong with one scenario file, so that its author sees all of it at once.
class Problems
{
public:
    explicit Problems(const QString &file) : m_file(file) {}

    void add(Place where, const QString &text) { add(where, {}, text); }
    /// What was reached through @p aliases is told at the last of them, and only if it isn't wrong without them, too.
    void add(Place definition, const QVector<Place> &aliases, const QString &text);

    QString file() const { return m_file; }
    bool isEmpty() const { return m_problems.isEmpty(); }
    /// "file:line:column: error: text", one line each, in the order of the file.
    QStringList lines() const;

private:
    struct Problem
    {
        Place definition;
        QVector<Place> aliases;
        QString text;
    };

    static QString keyOf(const Problem &problem, int aliases);

    QString m_file;
    QVector<Problem> m_problems;
};

}
