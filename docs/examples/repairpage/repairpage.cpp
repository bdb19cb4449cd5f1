#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/repairmode/ilcdrepairmode.h"
#include "lcd/widget/factorytestframe.h"
#include "mirel/api.h"
#include "mirel/component.h"
using namespace LCD::Widget;
// The page dims the screens, and the operator judges. It takes the place of the page Screen Light.
class DimPage : public LCD::RepairMode::ILcdRepairMode
{
public:
    DimPage() : ILcdRepairMode(nullptr), m_frame(new FactoryTestFrame(this))
    {
        connect(m_frame, &FactoryTestFrame::signalBackPrevious, this, &DimPage::backRequested);
        connect(m_frame, &FactoryTestFrame::signalLeftBtnClicked, this,
                [this] { m_frame->setStepIcon(0, IconNotPass); });
        connect(m_frame, &FactoryTestFrame::signalRightBtnClicked, this, [this] { m_frame->setStepIcon(0, IconPass); });
    }
    QStringList containerKeys() const override { return {m_key}; }
    bool showPage(const QString &containerKey) override
    {
        if (containerKey != m_key)
            return false;
        m_frame->setTitle(QStringLiteral("Dimmed screens"));
        m_frame->addTestSteps({QStringLiteral("Are all three screens dark?")});
        m_frame->setLeftBtnText(QStringLiteral("Fail"));
        m_frame->setRightBtnText(QStringLiteral("Pass"));
        m_frame->setLeftBtnVisible(true);
        m_frame->setRighttBtnVisible(true);
        m_frame->setControlFocus(FocusRightButton);
        setBrightness(20);
        return true;
    }
    void leavePage() override { setBrightness(100); }
    void resizeEvent(QResizeEvent *) override { m_frame->setGeometry(rect()); }

private:
    void setBrightness(int level)
    {
        auto *keyboard = mirel::api::get().service<LCD::FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
        for (int screen = 0; keyboard && screen < 3; ++screen)
            keyboard->setScreenBrightness(screen, level);
    }
    const QString m_key = QStringLiteral("container.factorytest.repairmode.screenlight");
    FactoryTestFrame *m_frame;
};

static mirel::ComponentInfo component = {[]() -> void * { return new DimPage; },
                                         [](void *object) { delete static_cast<DimPage *>(object); }, nullptr,
                                         "lcd.repair.mode", "{\"end\":0 }"};
extern "C" mirel::ComponentInfo *const repairpages_mirel_componentInfoTable[2] = {&component, nullptr};
static const mirel::PluginInfo info = {"0.1", repairpages_mirel_componentInfoTable, "example", "1.0.0", "{\"end\":0 }"};
extern "C" const mirel::PluginInfo *pluginfo()
{
    return &info;
}
extern "C" void pluginit(void *host)
{
    mirel::api::get().setHost(host);
}
