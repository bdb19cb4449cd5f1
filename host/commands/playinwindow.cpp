#include "commands/playinwindow.h"

#include "playing/player.h"
#include "records/runrecords.h"
#include "window/panelwindow.h"
#include "window/quitonsignal.h"
#include "window/speedbar.h"
#include "window/windowplayback.h"
#include "window/windowsettings.h"

#include <QtWidgets/QApplication>

namespace panelhost {

int playInWindow(const Scenario &scenario, RunRecords &records, WindowRequest *next)
{
    Scenario played = scenario;
    played.device.sessionLine =
        records.beginSession(scenario.device, scenario.unit.isEmpty() ? next->unit : scenario.unit);
    std::optional<WindowPlayback> playback;
    const auto isInterrupted = [&] { return playback->isStopped() || next->isSet() || QuitOnSignal::isAsked(); };
    Player::Options options;
    options.keepsJournal = true;
    options.paintsLcd = true;
    options.journal = [&records](const Journal::Entry &entry) { records.add(entry); };
    options.isInterrupted = isInterrupted;
    options.wait = [&](VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done) {
        return playback->wait(clock, duration, done);
    };
    Player player(played, options, [&](const StepResult &step, qint64 number) { playback->stepPlayed(step, number); });
    Session *session = player.open(&next->problem);
    if (!session) {
        next->isNewSession = true;
        return 0;
    }
    PanelWindow window(*session);
    WindowSettings settings;
    settings.restore(window);
    const double speed = settings.speed().value_or(1);
    window.setSpeed(speed == SpeedBar::Paused ? 1 : speed);
    window.setPendingRuns(records.pendingCount());
    acceptRequests(window, next);
    window.beginPlaying(scenario);
    window.show();
    playback.emplace(*session, window);
    window.endPlaying(player.play());
    const bool goesOn = window.isVisible() && !next->isSet() && !QuitOnSignal::isAsked();
    const int status = goesOn ? QApplication::exec() : 0;
    settings.save(window, {});
    return status;
}

}
