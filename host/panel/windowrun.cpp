#include "panel/windowrun.h"

#include "panel/journalfile.h"
#include "panel/panellayout.h"
#include "panel/panelwindow.h"
#include "panel/windowoptions.h"
#include "scenario/scenariowriter.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QSaveFile>
#include <QtWidgets/QApplication>

namespace panelhost {

namespace {

bool saveLayout(const PanelWindow &window, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(layoutOf(window)).toJson());
    return file.commit();
}

int takeScreenshot(PanelWindow &window, Session &session, const QString &path)
{
    session.timeline().settle();
    window.refresh();
    QCoreApplication::processEvents();
    return window.grab().save(path) ? 0 : refuse(QStringLiteral("%1: the picture can't be written.").arg(path));
}

int show(Session &session, const WindowOptions &options, const QString &recording)
{
    PanelWindow window(session);
    window.setSpeed(options.speed);
    window.setRecording(QFileInfo(recording).fileName());
    window.show();
    if (!options.screenshot.isEmpty())
        return takeScreenshot(window, session, options.screenshot);
    QCoreApplication::processEvents();
    if (!options.layout.isEmpty() && !saveLayout(window, options.layout))
        return refuse(QStringLiteral("%1: the layout can't be written.").arg(options.layout));
    return QApplication::exec();
}

}

int runInWindow(const CommandLine &line, const QString &recording)
{
    WindowOptions options;
    QString error;
    if (!options.read(line.parser, &error))
        return refuse(error);
    const std::unique_ptr<Session> session = Session::open(line.session, &error);
    if (!session)
        return refuse(error);
    JournalFile journal(options.journal, session->journal());
    if (!options.journal.isEmpty() && !journal.open(&error))
        return refuse(error);
    ScenarioWriter writer(recording, *session);
    if (!recording.isEmpty() && !writer.open(&error))
        return refuse(error);
    const int status = show(*session, options, recording);
    writer.close();
    return writer.error().isEmpty() ? status : refuse(writer.error());
}

}
