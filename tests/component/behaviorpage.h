#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <vector>

/// One statement of docs/behavior.md: a paragraph that begins with a bold sentence, and what follows up to the next
/// one.
struct BehaviorStatement
{
    QString section;
    /// The bold sentence, without its full stop.
    QString heading;
    /// The rows of the statement's table, the header first; empty without a table.
    QList<QStringList> table;
};

/// docs/behavior.md, taken apart.
struct BehaviorPage
{
    std::vector<BehaviorStatement> statements;
    /// What can't be assigned to a statement, one message each.
    QStringList problems;

    QStringList headings() const;
    /// The table under @p heading; empty if there is none.
    QList<QStringList> table(const QString &heading) const;
};

BehaviorPage readBehaviorPage();

/// @p rows as a Markdown table, the header first.
QString markdownTable(const QList<QStringList> &rows);
