#pragma once

#include "pagetest.h"

#include <memory>

namespace LCD::RepairPages {

/// The state codes of the single tests. All other codes mean that the test is running.
constexpr int CodeIdle = 0;
constexpr int CodeAllStepsDone = 101;
constexpr int CodeNotPass = 102;
constexpr int CodePass = 103;

inline TestState testState(int code)
{
    switch (code) {
    case CodeIdle:
        return TestState::Idle;
    case CodeAllStepsDone:
        return TestState::AllStepsDone;
    case CodeNotPass:
        return TestState::Failed;
    case CodePass:
        return TestState::Passed;
    default:
        return TestState::Running;
    }
}

/// The common part of the page tests that are based on a single test of the factory mode. Counts the verdicts "not
/// passed" since the page was entered.
template <class Biz>
class SingleTestAdapter : public PageTest
{
public:
    void enter() override { m_biz->enter(); }
    void start() override { m_biz->startTest(); }
    void reTest() override { m_biz->reTest(); }
    void setPass() override { m_biz->setPass(); }
    void setNotPass() override
    {
        ++m_failCount;
        m_biz->setNotPass();
    }
    TestState state() const override { return testState(m_biz->state()); }
    int failCount() const override { return m_failCount; }

protected:
    /// Derived classes whose listeners run on other threads reset m_biz in their destructor, because deleting the
    /// single test waits for listeners that still use the members of the derived class.
    std::unique_ptr<Biz> m_biz = std::make_unique<Biz>();

private:
    int m_failCount = 0;
};

}
