#pragma once

#include "pagetest.h"
#include "texts.h"

namespace LCD::RepairPages {

/// The common part of the tests that have no single test in the factory mode. Such a test passes by itself; the left
/// button fails it. Counts the verdicts "not passed" since the page was entered.
class OwnTest : public PageTest
{
public:
    void enter() override { m_state = TestState::Idle; }
    void start() override { m_state = TestState::Running; }
    void reTest() override { m_state = TestState::Idle; }
    void setPass() override { m_state = TestState::Passed; }
    void setNotPass() override
    {
        ++m_failCount;
        m_state = TestState::Failed;
    }
    TestState state() const override { return m_state; }
    int failCount() const override { return m_failCount; }
    QString leftCaption() const override { return text("FCNoPass"); }
    void pressLeft() override { setNotPass(); }

private:
    TestState m_state = TestState::Idle;
    int m_failCount = 0;
};

}
