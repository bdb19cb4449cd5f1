#include "keywalktest.h"

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcdfactorymodeimpl/buttonfunctionbiz.h"
#include "mirel/api.h"
#include "pagetest.h"
#include "singletestadapter.h"
#include "texts.h"

#include <QtCore/QStringList>

#include <memory>
#include <mutex>

namespace LCD::RepairPages {

namespace {

const std::string KeyWalkRequester = "RepairKeyWalk";

/// The single test reports no state during the walk, so the state is stored here. Keys are reported on the thread of
/// the keyboard service.
class KeyWalkTest : public PageTest
{
public:
    ~KeyWalkTest() override { m_biz.reset(); }

    void enter() override {}
    void start() override;
    void reTest() override { reset(); }
    void setPass() override { end(&FactoryModeImpl::ButtonFunctionBiz::setPass); }
    void setNotPass() override { end(&FactoryModeImpl::ButtonFunctionBiz::setNotPass); }
    void restore() override;

    TestState state() const override;
    int failCount() const override { return m_failedKeys.size(); }
    QVector<PageLine> lines() const override;
    QVector<PageLine> remarks() const override;
    QString leftCaption() const override { return text("FCAgeModeStopTest"); }
    QString rightCaption() const override { return text("RepairSkipKey"); }
    void pressLeft() override { reset(); }
    void pressRight() override;
    bool takesKeys() const override { return true; }

private:
    void reset();
    void setState(TestState state);
    void onState(int code);
    void onKey(const std::string &name);
    void end(void (FactoryModeImpl::ButtonFunctionBiz::*verdict)());
    QString currentKey() const;

    mutable std::mutex m_mutex;
    QString m_currentKey;
    TestState m_state = TestState::Idle;
    QStringList m_failedKeys;
    FactoryMode::IKeyboardEvent *m_keyboard =
        mirel::api::get().service<FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
    std::unique_ptr<FactoryModeImpl::ButtonFunctionBiz> m_biz;
};

void KeyWalkTest::start()
{
    reset();
    m_biz = std::make_unique<FactoryModeImpl::ButtonFunctionBiz>();
    m_biz->registerStateCallback(KeyWalkRequester, [this](int code, int) { onState(code); });
    m_biz->registerCurrentKeyUnderTestCallback(KeyWalkRequester,
                                               [this](unsigned, const std::string &name) { onKey(name); });
    setState(TestState::Running);
    m_biz->enter();
    m_biz->startTest();
    // An empty key check list leaves nothing to test.
    if (currentKey().isEmpty())
        reset();
}

// The single test listens to the keys until it is deleted.
void KeyWalkTest::reset()
{
    restore();
    m_failedKeys.clear();
    const std::lock_guard locker(m_mutex);
    m_state = TestState::Idle;
    m_currentKey.clear();
}

void KeyWalkTest::setState(TestState state)
{
    const std::lock_guard locker(m_mutex);
    m_state = state;
}

void KeyWalkTest::restore()
{
    if (!m_biz)
        return;
    m_biz.reset();
    if (m_keyboard)
        m_keyboard->setAllButtonBrightness(0);
}

void KeyWalkTest::onState(int code)
{
    setState(testState(code));
    announceChange();
}

void KeyWalkTest::onKey(const std::string &name)
{
    {
        const std::lock_guard locker(m_mutex);
        m_currentKey = QString::fromStdString(name);
    }
    announceChange();
}

void KeyWalkTest::end(void (FactoryModeImpl::ButtonFunctionBiz::*verdict)())
{
    if (m_biz)
        (*m_biz.*verdict)();
}

QString KeyWalkTest::currentKey() const
{
    const std::lock_guard locker(m_mutex);
    return m_currentKey;
}

// A walk in which a key was skipped can't pass.
TestState KeyWalkTest::state() const
{
    const std::lock_guard locker(m_mutex);
    const bool hasFailed = m_state == TestState::AllStepsDone && !m_failedKeys.isEmpty();
    return hasFailed ? TestState::Failed : m_state;
}

void KeyWalkTest::pressRight()
{
    m_failedKeys << currentKey();
    m_biz->skipCurrentStep();
}

QVector<PageLine> KeyWalkTest::lines() const
{
    return QVector<PageLine>{{text("FCClickGreenFlashingBtn")}, {text("RepairKeyUnderTest").arg(currentKey())}}
    + remarks();
}

QVector<PageLine> KeyWalkTest::remarks() const
{
    if (m_failedKeys.isEmpty())
        return {};
    return {{text("RepairKeysFailed").arg(m_failedKeys.join(QStringLiteral(", "))), notPassColor()}};
}

}

std::unique_ptr<PageTest> makeKeyWalkTest()
{
    return std::make_unique<KeyWalkTest>();
}

}
