#include "visualtests.h"

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcdfactorymodeimpl/buttonlightbiz.h"
#include "lcdfactorymodeimpl/screenbadpixelbiz.h"
#include "lcdfactorymodeimpl/screenbrightnessbiz.h"
#include "mirel/api.h"
#include "singletestadapter.h"
#include "texts.h"

#include <QtCore/QTimer>

namespace LCD::RepairPages {

namespace {

constexpr int LevelInterval = 2000; // milliseconds

/// A test that goes through the brightness levels by itself.
template <class Biz>
class LevelTest : public SingleTestAdapter<Biz>
{
public:
    LevelTest()
    {
        m_timer.setInterval(LevelInterval);
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { next(); });
    }

    void start() override
    {
        SingleTestAdapter<Biz>::start();
        m_timer.start();
    }

    void restore() override { m_timer.stop(); }

    /// The code of a running test is the level in percent.
    QString titleSuffix() const override
    {
        return this->state() == TestState::Running ? QStringLiteral(" %1%").arg(this->m_biz->state()) : QString();
    }

private:
    void next()
    {
        this->m_biz->nextStep();
        if (this->state() != TestState::Running)
            m_timer.stop();
        Q_EMIT this->changed();
    }

    QTimer m_timer;
};

class ScreenLightTest : public LevelTest<FactoryModeImpl::ScreenBrightnessBiz>
{
public:
    void restore() override
    {
        LevelTest::restore();
        m_biz->restoreBrightnessToNormal();
    }
};

class ButtonLightTest : public LevelTest<FactoryModeImpl::ButtonLightBiz>
{
public:
    void restore() override
    {
        LevelTest::restore();
        if (m_keyboard)
            m_keyboard->setAllButtonBrightness(0);
    }

private:
    FactoryMode::IKeyboardEvent *m_keyboard =
        mirel::api::get().service<FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
};

/// The operator goes from pattern to pattern.
class ScreenBadPixelTest : public SingleTestAdapter<FactoryModeImpl::ScreenBadPixelBiz>
{
public:
    QString rightCaption() const override { return text("FCNextStep"); }
    void pressRight() override { m_biz->nextStep(); }

    // A verdict has cleared the screens.
    void restore() override
    {
        if (state() == TestState::Running)
            m_biz->reTest();
    }
};

}

std::unique_ptr<PageTest> makeScreenLightTest()
{
    return std::make_unique<ScreenLightTest>();
}

std::unique_ptr<PageTest> makeScreenBadPixelTest()
{
    return std::make_unique<ScreenBadPixelTest>();
}

std::unique_ptr<PageTest> makeButtonLightTest()
{
    return std::make_unique<ButtonLightTest>();
}

}
