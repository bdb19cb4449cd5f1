// The command line of panelhost.

#include "application/display.h"
#include "application/processsetup.h"
#include "commands/commandline.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"

#include <QtWidgets/QApplication>

int main(int argc, char **argv)
{
    panelhost::prepareOutput();
    const bool needsDisplay = panelhost::needsDisplay(argc, argv);
    QString error;
    if (!panelhost::isDisplayReachable(needsDisplay, argc, argv, &error))
        return panelhost::reportError(error);
    panelhost::prepareProcess(needsDisplay);
    QApplication application(argc, argv);
    panelhost::prepareApplication();
    return panelhost::statusAfterOutput(panelhost::runCommandLine(QApplication::arguments()));
}
