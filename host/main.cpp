// The command line of panelhost.

#include "application/display.h"
#include "application/processsetup.h"
#include "commands/commandline.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"
#include "output/temporarydirectory.h"
#include "window/themechoice.h"

#include <QtWidgets/QApplication>

namespace {

int runOnConsole(int argc, char **argv)
{
    panelhost::prepareConsoleProcess();
    const QCoreApplication application(argc, argv);
    panelhost::nameApplication();
    return panelhost::runCommandLine(QCoreApplication::arguments());
}

int runWithWidgets(bool needsDisplay, int argc, char **argv)
{
    QString error;
    if (!panelhost::isDisplayReachable(needsDisplay, argc, argv, &error))
        return panelhost::reportError(error);
    panelhost::prepareProcess(needsDisplay);
    const QApplication application(argc, argv);
    panelhost::prepareApplication();
    panelhost::setSystemDark(panelhost::isSystemDark());
    panelhost::removeAbandonedDirectories();
    return panelhost::runCommandLine(QApplication::arguments());
}

}

int main(int argc, char **argv)
{
    using panelhost::Platform;
    panelhost::prepareOutput();
    const Platform platform = panelhost::neededPlatform(argc, argv);
    return panelhost::statusAfterOutput(platform == Platform::None
                                            ? runOnConsole(argc, argv)
                                            : runWithWidgets(platform == Platform::Display, argc, argv));
}
