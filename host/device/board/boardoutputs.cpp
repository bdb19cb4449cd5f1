#include "device/board/boardoutputs.h"

#include "diagnostics/reporterror.h"

#include <utility>

namespace panelhost {

namespace {

constexpr std::chrono::milliseconds RetryDelay(200);

QString located(const QString &where, const QString &error)
{
    return where.isEmpty() ? error + QLatin1Char('.') : QStringLiteral("%1: %2.").arg(where, error);
}

}

BoardOutputs::BoardOutputs(const BoardConfiguration &board, PartHandler partChanged)
    : m_board(board), m_partChanged(std::move(partChanged)), m_saved(board.stateDirectory)
{
    for (const KeyLedConfiguration &key : board.leds) {
        const auto names = key.names();
        for (const QString &name : names)
            m_leds.try_emplace(name, name, name == key.multicolor);
    }
    for (int screen = 0; screen < board.screens.size(); ++screen) {
        if (!board.screens.at(screen).backlight.isEmpty())
            m_backlights.try_emplace(screen, board.screens.at(screen).backlight);
    }
}

BoardOutputs::~BoardOutputs()
{
    m_loop.run([this] {
        for (const auto &monitor : m_monitors)
            m_loop.remove(*monitor);
        m_monitors.clear();
        const QStringList problems = m_isSaved ? m_saved.restore() : QStringList();
        for (const QString &problem : problems)
            reportError(QStringLiteral("A value of the board could not be restored: %1.").arg(problem));
    });
}

bool BoardOutputs::start(QString *error)
{
    if (m_leds.empty() && m_backlights.empty())
        return true;
    bool isStarted = false;
    m_loop.run([&] {
        QString reason;
        if (!m_saved.lock(&reason)) {
            *error = located({}, reason);
            return;
        }
        m_saved.restore(); // a crash has left the file
        if (!openAll(error))
            return;
        isStarted = m_saved.save(ledNames(), backlightNames(), &reason);
        m_isSaved = isStarted;
        if (!isStarted)
            *error = located(m_board.file, reason);
        watch("leds");
        watch("backlight");
    });
    return isStarted;
}

QStringList BoardOutputs::ledNames() const
{
    QStringList names;
    for (const auto &[name, led] : m_leds)
        names << name;
    return names;
}

QStringList BoardOutputs::backlightNames() const
{
    QStringList names;
    for (const auto &[screen, backlight] : m_backlights)
        names << backlight.device().name();
    return names;
}

// Without udev, a device that was away is used again with the next value.
void BoardOutputs::watch(const char *deviceClass)
{
    const QString name = QLatin1String(deviceClass);
    const auto changed = [this, name](const QString &action, udev_device &device) {
        if (action == QLatin1String("add") || action == QLatin1String("remove"))
            reopen(name, deviceName(device));
    };
    const auto overflowed = [this, name] {
        const auto names = ledNames() + backlightNames();
        for (const QString &each : names)
            reopen(name, each);
    };
    auto monitor = std::make_unique<UdevMonitor>(deviceClass, UdevMonitor::Listeners{changed, overflowed});
    if (!monitor->isValid())
        return;
    m_loop.add(*monitor);
    m_monitors.push_back(std::move(monitor));
}

bool BoardOutputs::openAll(QString *error)
{
    QString reason;
    for (const KeyLedConfiguration &key : m_board.leds) {
        const auto names = key.names();
        for (const QString &name : names) {
            if (!m_leds.at(name).open(&reason)) {
                *error = located(key.where, reason);
                return false;
            }
        }
    }
    for (auto &[screen, backlight] : m_backlights) {
        if (!backlight.open(&reason)) {
            *error = located(m_board.screens.at(screen).where, reason);
            return false;
        }
    }
    return true;
}

void BoardOutputs::setKeyLed(int halKey, const KeyLed &light)
{
    const std::lock_guard lock(m_mutex);
    m_newLights[halKey] = light;
    post();
}

void BoardOutputs::setScreenBrightness(int screen, int percent)
{
    const std::lock_guard lock(m_mutex);
    m_newScreens[screen] = percent;
    post();
}

// With the lock held.
void BoardOutputs::post()
{
    if (!std::exchange(m_isPosted, true))
        m_loop.post([this] { writeWanted(); });
}

// What is shown is written again if the device is there, and is found missing if it isn't.
void BoardOutputs::reopen(const QString &deviceClass, const QString &name)
{
    bool isOurs = false;
    const auto led = m_leds.find(name);
    if (deviceClass == QLatin1String("leds") && led != m_leds.end()) {
        led->second.reset();
        isOurs = true;
    }
    for (auto &[screen, backlight] : m_backlights) {
        if (deviceClass == QLatin1String("backlight") && backlight.device().name() == name) {
            backlight.reset();
            isOurs = true;
        }
    }
    if (isOurs)
        writeWanted();
}

void BoardOutputs::writeWanted()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isPosted = false;
        m_newLights.merge(m_lights); // what is new stays
        m_lights = std::exchange(m_newLights, {});
        m_newScreens.merge(m_screens);
        m_screens = std::exchange(m_newScreens, {});
    }
    if (!m_isSaved)
        return;
    const bool isFirstFailure = m_retry == 0;
    const bool hasLeds = writeLeds();
    const bool hasScreens = writeScreens();
    m_loop.stopTimer(std::exchange(m_retry, 0));
    // The permission for what a trigger adds comes a moment later. After that a device is gone until udev says that it
    // is back, or until something else is to be shown.
    if ((!hasLeds || !hasScreens) && isFirstFailure) {
        m_retry = m_loop.startTimer(RetryDelay, [this] { writeWanted(); });
        return;
    }
    setPresent(QStringLiteral("leds"), hasLeds);
    setPresent(QStringLiteral("screens"), hasScreens);
}

// Returns whether all LEDs show what they should.
bool BoardOutputs::writeLeds()
{
    bool isAllWritten = true;
    for (const KeyLedConfiguration &key : m_board.leds) {
        const auto light = m_lights.find(key.halKey);
        if (light == m_lights.end())
            continue;
        const auto states = ledOutputStates(key, light->second);
        for (const LedOutputState &state : states) {
            QString error;
            isAllWritten = m_leds.at(state.led).show(state, &error) && isAllWritten;
        }
    }
    return isAllWritten;
}

bool BoardOutputs::writeScreens()
{
    bool isAllWritten = true;
    for (auto &[screen, backlight] : m_backlights) {
        const auto percent = m_screens.find(screen);
        QString error;
        if (percent != m_screens.end())
            isAllWritten = backlight.show(percent->second, &error) && isAllWritten;
    }
    return isAllWritten;
}

void BoardOutputs::setPresent(const QString &part, bool present)
{
    if (present != m_missing.contains(part))
        return;
    if (present)
        m_missing.removeAll(part);
    else
        m_missing << part;
    m_partChanged(part, present);
}

}
