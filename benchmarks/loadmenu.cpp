#include "processortime.h"

#include "lcd/factorymode/ilcdfactorymode.h"
#include "mirel/api.h"
#include "mirel/component.h"

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <dlfcn.h>

// Loads a component library, shows its menu and prints the processor time that this took, in seconds.

namespace {

class NoServices final : public mirel::IHost
{
public:
    void *getComponent(const char *) override { return nullptr; }
};

bool showMenu(const char *path, mirel::IHost &host)
{
    void *library = dlopen(path, RTLD_NOW);
    if (!library)
        return std::fprintf(stderr, "loadmenu: %s\n", dlerror()), false;
    const auto info = reinterpret_cast<mirel::PluginInfo *(*)()>(dlsym(library, "pluginfo"));
    const auto init = reinterpret_cast<void (*)(void *)>(dlsym(library, "pluginit"));
    if (!info || !init)
        return std::fprintf(stderr, "loadmenu: %s isn't a component library\n", path), false;
    init(&host);
    auto *menu = static_cast<LCD::FactoryMode::ILcdFactoryMode *>(info()->componentInfoTable[0]->creator());
    QCoreApplication::processEvents(); // a new menu hides itself
    menu->setFactoryModeSize({800, 480});
    menu->enterFactoryMode();
    QCoreApplication::processEvents(); // paints it
    return true;
}

}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    if (argc != 2)
        return std::fprintf(stderr, "usage: loadmenu LIBRARY\n"), 2;
    NoServices host;
    const double before = processorTime();
    if (!showMenu(argv[1], host))
        return 1;
    std::printf("%.9f\n", processorTime() - before);
    std::fflush(stdout);
    _Exit(0); // the menu needs its library until the end
}
