#pragma once

#include "expectations/expectation.h"
#include "journal/journal.h"

#include <QtCore/QHash>

#include <mutex>
#include <vector>

namespace panelhost {

/// Counts the journal entries that match the expectations of a scenario, so that the entries needn't be kept.
/// Thread-safe.
class JournalQueryCounter
{
public:
    /// Counts for the expectations in @p expectations that query the journal.
    explicit JournalQueryCounter(const Expectations &expectations);

    void add(const Journal::Entry &entry);
    /// Resets all counts, for a mark.
    void restart();
    /// Returns the number of entries since the last restart() that match @p expectation of the scenario.
    int count(const Expectation &expectation) const;

private:
    /// Expectations that differ only in the number of times share a count.
    struct Query
    {
        Expectation expectation;
        int count = 0;
    };

    void addQuery(const Expectation &expectation);

    mutable std::mutex m_mutex;
    std::vector<Query> m_queries;
    QHash<QByteArray, size_t> m_indexOfKey;
    QHash<QString, std::vector<size_t>> m_indexesOfName; ///< by kind and name, or by kind alone
};

}
