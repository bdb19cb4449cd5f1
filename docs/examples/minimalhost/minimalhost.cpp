// The smallest host that does everything a host must do. Usage: minimalhost COMPONENT [--once]

#include "lcd/factorymode/ilcdfactorymode.h"
#include "mirel/api.h"
#include "mirel/component.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>

#include <cstdio>
#include <dlfcn.h>
#include <map>
#include <string>

// The services by name. A real host adds its own services before it creates the widget.
class Host final : public mirel::IHost
{
public:
    void *getComponent(const char *name) override
    {
        const auto found = services.find(name);
        return found == services.end() ? nullptr : found->second;
    }
    std::map<std::string, void *> services;
};

// Replaces the device's UI: shows the factory mode and the containers that its menu entries name.
class Screen : public QStackedWidget
{
    Q_OBJECT
public:
    void showFactoryMode(LCD::FactoryMode::ILcdFactoryMode *widget)
    {
        m_factoryMode = widget;
        addWidget(widget);
        addWidget(&m_container);
        connect(widget, SIGNAL(requestShowContainer(QString)), SLOT(showContainer(QString)));
        connect(widget, SIGNAL(requestExitFactoryMode()), SLOT(leave()));
        connect(&m_container, &QPushButton::clicked, this, [this] { setCurrentWidget(m_factoryMode); });
    }
public Q_SLOTS:
    void showContainer(const QString &containerKey)
    {
        m_container.setText(containerKey);
        setCurrentWidget(&m_container);
    }
    void leave()
    {
        m_factoryMode->exitFactoryMode();
        close();
    }

private:
    LCD::FactoryMode::ILcdFactoryMode *m_factoryMode = nullptr;
    QPushButton m_container;
};

static int fail(const char *what)
{
    return std::fprintf(stderr, "minimalhost: %s\n", what), 2;
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc < 2)
        return fail("usage: minimalhost COMPONENT [--once]");
    void *library = dlopen(argv[1], RTLD_NOW);
    if (!library)
        return fail(dlerror());
    const auto info = reinterpret_cast<const mirel::PluginInfo *(*)()>(dlsym(library, "pluginfo"));
    const auto init = reinterpret_cast<void (*)(void *)>(dlsym(library, "pluginit"));
    if (!info || !init || qstrcmp(info()->interfaceVersion, "0.1") != 0 || !info()->componentInfoTable[0])
        return fail("not a component library of interface 0.1");

    Host host;
    init(static_cast<mirel::IHost *>(&host));
    const mirel::ComponentInfo &component = *info()->componentInfoTable[0];
    auto *widget = static_cast<LCD::FactoryMode::ILcdFactoryMode *>(component.creator());
    if (!widget)
        return fail("out of memory");
    host.services["lcdFactoryModeWidget"] = widget;

    Screen screen;
    screen.showFactoryMode(widget);
    screen.resize(800, 480);
    screen.show();
    QTimer::singleShot(0, [&] { // after the timer with which the component hides a new widget
        widget->enterFactoryMode();
        if (argc > 2)
            screen.leave();
    });
    app.exec();
    component.deletor(widget);
}

#include "minimalhost.moc"
