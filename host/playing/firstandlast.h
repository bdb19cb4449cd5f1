#pragma once

#include <QtCore/QtGlobal>

#include <deque>
#include <vector>

namespace panelhost {

/// Keeps the first and the newest elements of a growing sequence, and the number of elements between them.
template <class T>
class FirstAndLast
{
public:
    /// Keeps @p each first and @p each newest elements.
    explicit FirstAndLast(int each) : m_each(static_cast<size_t>(each)) {}

    void append(const T &element)
    {
        ++m_count;
        if (m_head.size() < m_each) {
            m_head.push_back(element);
            return;
        }
        m_tail.push_back(element);
        if (m_tail.size() > m_each)
            m_tail.pop_front();
    }
    qint64 count() const { return m_count; }
    qint64 leftOut() const { return m_count - static_cast<qint64>(m_head.size() + m_tail.size()); }
    bool isEmpty() const { return m_count == 0; }
    /// Returns the newest element. The sequence must not be empty.
    T &last() { return m_tail.empty() ? m_head.back() : m_tail.back(); }
    const std::vector<T> &head() const { return m_head; }
    const std::deque<T> &tail() const { return m_tail; }

private:
    size_t m_each;
    qint64 m_count = 0;
    std::vector<T> m_head;
    std::deque<T> m_tail;
};

}
