#include "lcd/factorymode/ilcdfactorymode.h"
#include "mirel/component.h"

#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

// A component library that does nothing but show two lists of Qt, with as many rows as the shipped menu.

namespace {

constexpr int RowCount = 5;

class PlainMenu final : public LCD::FactoryMode::ILcdFactoryMode
{
public:
    PlainMenu() : ILcdFactoryMode(nullptr)
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(m_level1);
        layout->addWidget(m_level2);
        m_level2->hide();
        for (int row = 0; row < RowCount; ++row)
            m_level1->addItem(QStringLiteral("Row %1").arg(row));
    }
    void enterFactoryMode() override { show(); }
    void exitFactoryMode() override { hide(); }
    bool isFactoryMode() const override { return isVisible(); }
    void setFactoryModeSize(const QSize &size) override { resize(size); }
    void registerTestPatternDisplayCallback(const std::string &, const std::function<void(int, int, int)> &) override {}
    void notifyTestPatternChanged(int, int, int) override {}

private:
    QListWidget *m_level1 = new QListWidget(this);
    QListWidget *m_level2 = new QListWidget(this);
};

mirel::ComponentInfo component = {
    []() -> void * { return static_cast<LCD::FactoryMode::ILcdFactoryMode *>(new PlainMenu); },
    [](void *object) { delete static_cast<LCD::FactoryMode::ILcdFactoryMode *>(object); },
    [](void *) -> mirel::IMessageHandler * { return nullptr; }, "bench.plain.menu", "{}"};
mirel::ComponentInfo *const components[] = {&component, nullptr};
const mirel::PluginInfo plugin = {"0.1", components, "plainmenu", "1.0.0", "{}"};

}

extern "C" {
extern const mirel::PluginInfo *pluginfo();
extern void pluginit(void *host);
}

const mirel::PluginInfo *pluginfo()
{
    return &plugin;
}

void pluginit(void *)
{
}
