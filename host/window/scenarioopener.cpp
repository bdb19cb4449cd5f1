#include "window/scenarioopener.h"

#include "scenario/scenarioloader.h"
#include "window/filedialog.h"
#include "window/problemdialog.h"
#include "window/windowsettings.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>

namespace panelhost {

ScenarioOpener::ScenarioOpener(const Session::Options &base, QWidget *window)
    : QObject(window), m_base(base), m_window(window)
{
}

void ScenarioOpener::askAndPlay()
{
    ask(tr("Open a scenario"), &ScenarioOpener::play);
}

void ScenarioOpener::askAndShowTimeline()
{
    ask(tr("Open a recording in the timeline"), &ScenarioOpener::showTimeline);
}

void ScenarioOpener::ask(const QString &title, void (ScenarioOpener::*use)(const QString &))
{
    QFileDialog *dialog = makeFileDialog(m_window, title, QStringLiteral("open-dialog"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({tr("Scenarios (*.yaml *.yml)"), tr("All files (*)")});
    const QStringList recent = recentFiles();
    if (!recent.isEmpty())
        dialog->setDirectory(QFileInfo(recent.first()).path());
    connect(dialog, &QFileDialog::fileSelected, this, use, Qt::QueuedConnection);
    dialog->open();
}

// A file with errors isn't remembered.
std::optional<Scenario> ScenarioOpener::load(const QString &path)
{
    QStringList errors;
    auto scenario = loadScenario(path, m_base, &errors);
    if (scenario)
        WindowSettings().addRecentFile(QFileInfo(path).absoluteFilePath());
    else
        showProblem(m_window, tr("Scenario with errors"),
                    tr("%1 can't be played. Nothing has changed.").arg(QFileInfo(path).fileName()),
                    errors.join(QLatin1Char('\n')));
    return scenario;
}

void ScenarioOpener::play(const QString &path)
{
    if (const auto scenario = load(path))
        Q_EMIT scenarioOpened(*scenario);
}

void ScenarioOpener::showTimeline(const QString &path)
{
    if (load(path))
        Q_EMIT viewRequested(viewArguments(QFileInfo(path).absoluteFilePath(), m_base));
}

QStringList ScenarioOpener::recentFiles() const
{
    return WindowSettings().recentFiles();
}

void ScenarioOpener::clearRecentFiles()
{
    WindowSettings().clearRecentFiles();
}

QStringList ScenarioOpener::viewArguments(const QString &path, const Session::Options &base)
{
    QStringList arguments{QStringLiteral("view"), path};
    const auto add = [&arguments](const char *option, const QString &value) {
        if (!value.isEmpty())
            arguments << QStringLiteral("--%1").arg(QLatin1String(option)) << value;
    };
    add("component", base.component);
    add("pages", base.pages);
    add("share-unchecked", base.share);
    add("language", base.language);
    add("usb-stick", base.usbStick);
    add("size", QStringLiteral("%1x%2").arg(base.lcdSize.width()).arg(base.lcdSize.height()));
    add("tbar", base.tbarType == TBarType::Fader ? QStringLiteral("fader") : QStringLiteral("slider"));
    return arguments;
}

}
