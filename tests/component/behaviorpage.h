#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <vector>

/// One statement of docs/behavior.md: a paragraph that begins with a bold sentence, and all text up to the next bold
/// sentence.
struct BehaviorStatement
{
    QString section;
    /// The bold sentence, without its full stop.
    QString heading;
    /// The rows of the statement's table, the header first; empty without a table.
    QList<QStringList> table;
};

/// The parsed content of docs/behavior.md.
struct BehaviorPage
{
    std::vector<BehaviorStatement> statements;
    /// One message for each line that belongs to no statement.
    QStringList problems;

    QStringList headings() const;
    /// Returns the table under @p heading, or an empty list.
    QList<QStringList> table(const QString &heading) const;
};

BehaviorPage readBehaviorPage();

/// Returns @p rows as a Markdown table. The first row is the header.
QString markdownTable(const QList<QStringList> &rows);
