#pragma once

#include "scenario/scenario.h"

#include <QtCore/QObject>

class QWidget;

namespace panelhost {

/// Opens scenarios for the window: loads them, shows the errors of a file that can't be played, and remembers which
/// files were opened. GUI thread.
class ScenarioOpener : public QObject
{
    Q_OBJECT

public:
    /// @p base has the options of the device that a scenario doesn't set. Dialogs are shown over @p window.
    ScenarioOpener(const Session::Options &base, QWidget *window);

    /// Asks for a file and plays it.
    void askAndPlay();
    /// Asks for a file and shows its timeline.
    void askAndShowTimeline();
    void play(const QString &path);
    void showTimeline(const QString &path);

    /// Returns the files that were opened last, the last one first.
    QStringList recentFiles() const;
    void clearRecentFiles();

    /// Returns the arguments of the command `view` for the scenario at @p path.
    static QStringList viewArguments(const QString &path, const Session::Options &base);

Q_SIGNALS:
    /// Emitted when @p scenario shall be played.
    void scenarioOpened(const panelhost::Scenario &scenario);
    /// Emitted when `panelhost` shall be started with @p arguments, to show a timeline.
    void viewRequested(const QStringList &arguments);

private:
    void ask(const QString &title, void (ScenarioOpener::*use)(const QString &));
    std::optional<Scenario> load(const QString &path);

    const Session::Options m_base;
    QWidget *m_window;
};

}
