#pragma once

#include "device/board/boardconfiguration.h"
#include "device/board/eventloop.h"
#include "device/board/ledoutput.h"
#include "device/board/savedoutputs.h"
#include "device/board/udevmonitor.h"

#include <map>
#include <memory>

namespace panelhost {

/// The LEDs and backlights of a board. They are written on a thread of their own, because a write can take long. If
/// values come faster than they are written, only the newest are written. What was shown before is restored at the end.
class BoardOutputs
{
public:
    /// Called on the thread of the outputs when the first device of a part, "leds" or "screens", has disappeared, and
    /// when all are back.
    using PartHandler = std::function<void(const QString &part, bool present)>;

    BoardOutputs(const BoardConfiguration &board, PartHandler partChanged);
    /// Restores everything.
    ~BoardOutputs();

    /// Restores what an earlier process has left, checks that all devices are there, and saves what they show. Returns
    /// false and sets @p error to a sentence if that is impossible.
    bool start(QString *error);

    // Return immediately. Any thread.

    void setKeyLed(int halKey, const KeyLed &light);
    void setScreenBrightness(int screen, int percent);

    EventLoop &loop() { return m_loop; }

private:
    using Leds = std::map<QString, LedOutput>;

    bool openAll(QString *error);
    QStringList ledNames() const;
    QStringList backlightNames() const;
    void watch(const char *deviceClass);
    void reopen(const QString &deviceClass, const QString &name);
    void post();
    void writeWanted();
    bool writeLeds();
    bool writeScreens();
    void setPresent(const QString &part, bool present);

    const BoardConfiguration m_board;
    const PartHandler m_partChanged;
    SavedOutputs m_saved;
    bool m_isSaved = false;

    std::mutex m_mutex;
    std::map<int, KeyLed> m_newLights; // by hal key; not taken over by the thread yet
    std::map<int, int> m_newScreens;
    bool m_isPosted = false;

    // On the thread of the outputs.
    std::map<int, KeyLed> m_lights;
    std::map<int, int> m_screens;
    Leds m_leds;
    std::map<int, BacklightOutput> m_backlights; // by number of the screen
    QStringList m_missing;
    EventLoop::Timer m_retry = 0;
    std::vector<std::unique_ptr<UdevMonitor>> m_monitors;

    EventLoop m_loop; // ends first
};

}
