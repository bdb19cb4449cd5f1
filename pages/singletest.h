#pragma once

#include "pagetest.h"

#include <memory>

namespace LCD::RepairPages {

/// The state codes of the single tests. Any other code is one of a running
/// test.
constexpr int codeIdle = 0;
constexpr int codeAllStepsDone = 101;
constexpr int codeNotPass = 102;
constexpr int codePass = 103;

inline TestState testState(int code)
{
    switch (code) {
    case codeIdle:
        return TestState::Idle;
    case codeAllStepsDone:
        return TestState::AllStepsDone;
    case codeNotPass:
        return TestState::Failed;
    case codePass:
        return TestState::Passed;
    default:
        return TestState::Running;
    }
}

/// The part of a PageTest that all single tests of the factory mode have in
/// common. Counts the verdicts that say "not passed" since the page was
/// entered.
template <class Biz>
class SingleTest : public PageTest
{
public:
    void enter() override { biz->enter(); }
    void start() override { biz->startTest(); }
    void reTest() override { biz->reTest(); }
    void setPass() override { biz->setPass(); }
    void setNotPass() override
    {
        ++m_failCount;
        biz->setNotPass();
    }
    TestState state() const override { return testState(biz->state()); }
    int failCount() const override { return m_failCount; }

protected:
    // Tests that share data with listeners on other threads end it first, by
    // hand.
    std::unique_ptr<Biz> biz = std::make_unique<Biz>();

private:
    int m_failCount = 0;
};

} // namespace LCD::RepairPages
