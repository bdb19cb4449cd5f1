#include "commands/windowrequest.h"

#include "window/panelwindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

namespace panelhost {

void acceptRequests(PanelWindow &window, WindowRequest *request)
{
    window.setOpensScenarios(request->base);
    QObject::connect(&window, &PanelWindow::scenarioOpened, &window, [&window, request](const Scenario &scenario) {
        request->scenario = scenario;
        if (window.asksForUnits())
            request->unit = window.unit();
        QCoreApplication::quit();
    });
    QObject::connect(&window, &PanelWindow::newSessionTriggered, &window, [request] {
        request->isNewSession = true;
        QCoreApplication::quit();
    });
    // A process has one session, and the timeline plays the scenario in one of its own.
    QObject::connect(&window, &PanelWindow::viewRequested, &window, [&window](const QStringList &arguments) {
        if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments))
            window.addFailure(PanelWindow::tr("The timeline can't be opened: panelhost can't be started."));
    });
}

}
