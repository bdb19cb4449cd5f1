// The command line of panelhost.

#include "commandline.h"

#include <QtWidgets/QApplication>

int main(int argc, char **argv)
{
    panelhost::prepareProcess(panelhost::needsDisplay(argc, argv));
    QApplication application(argc, argv);
    panelhost::prepareApplication();
    return panelhost::runCommandLine(QApplication::arguments());
}
