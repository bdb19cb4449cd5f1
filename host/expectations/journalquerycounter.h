#pragma once

#include "journal/journal.h"
#include "scenario/scenario.h"

#include <QtCore/QHash>

#include <mutex>
#include <vector>

namespace panelhost {

/// Counts the entries of a journal that the expectations of a scenario ask for, so that the entries themselves needn't
/// be kept. Any thread.
class JournalQueryCounter
{
public:
    /// Counts for all expectations in @p steps and in the steps that they repeat.
    explicit JournalQueryCounter(const QVector<Step> &steps);

    void add(const Journal::Entry &entry);
    /// Counts from here: what a mark does.
    void restart();
    /// Number of entries since the last restart() that are what @p expectation, one of the scenario's, asks for.
    int count(const Expectation &expectation) const;

private:
    /// Expectations that differ in nothing but the number of times share one count.
    struct Query
    {
        Expectation expectation;
        int count = 0;
    };

    void addQueries(const QVector<Step> &steps);
    void addQuery(const Expectation &expectation);

    mutable std::mutex m_mutex;
    std::vector<Query> m_queries;
    QHash<QByteArray, size_t> m_indexOfKey;
    QHash<QString, std::vector<size_t>> m_indexesOfName; ///< by kind and name, or by kind alone
};

}
