#pragma once

#include "check/finding.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Everything that is wrong with one scenario file, so that its author sees all of it at once.
class Problems
{
public:
    explicit Problems(const QString &file) : m_file(file) {}

    void add(Place where, const QString &text);
    /// "found ..., expected ..."
    void add(Place where, const QString &found, const QString &expected);

    QString file() const { return m_file; }
    bool isEmpty() const { return m_findings.isEmpty(); }
    /// "file:line:column: error: text", one line each, in the order of the file.
    QStringList lines() const;

private:
    QString m_file;
    Findings m_findings;
};

}
