#include "records/machinetestruns.h"

#include <iterator>

namespace panelhost {

namespace {

struct PhaseRow
{
    const char *name;
    const char *icon;     ///< title icon of its screens, or the first part of it
    const char *passLine; ///< log line of the page when the phase ends; nullptr: none
};

constexpr PhaseRow phaseRows[] = {
    {"brightness", "ScreenLight", nullptr},
    {"pattern", "ScreenBadPixel", "Screen bad pixel pass"},
    {"key-light", "ButtonLight", nullptr},
    {"key-walk", "ButtonFunction", "Button function pass"},
    {"tbar", "fc_tbar_", nullptr},
    {"net-port", "NetTest", "Net port pass"},
    {"usb-port", "UsbTest", "USB port pass"},
    {"typec-communication", "TypecTest", "Type-C USB communication pass"},
    {"typec-power", "TypecTest", "Type-C power port pass"},
    {"poe", "NetTest", "Net port 1 POE power pass"},
};
constexpr int PhaseCount = std::size(phaseRows);
constexpr int KeyWalkPhase = 3;
constexpr int TBarPhase = 4;
constexpr int FirstTestType = 0;

constexpr char passedColor[] = "#129a37";
constexpr char failedColor[] = "#ff483c";

// Returns the lines that were appended since @p before. The page discards its oldest lines if there are many.
QStringList newLines(const QStringList &before, const QStringList &now)
{
    for (int dropped = qMax(0, before.size() - now.size()); dropped < before.size(); ++dropped) {
        const int kept = before.size() - dropped;
        if (before.mid(dropped) == now.mid(0, kept))
            return now.mid(kept);
    }
    return now;
}

}

QStringList machineTestPhases()
{
    QStringList names;
    for (const PhaseRow &row : phaseRows)
        names << QString::fromLatin1(row.name);
    return names;
}

void MachineTestRuns::add(const Journal::Entry &entry)
{
    switch (entry.kind) {
    case Journal::Kind::Screen:
        return readScreen(entry.data);
    case Journal::Kind::Call:
        if (entry.name == QLatin1String("lcdFactoryModeBiz.setFactoryTestType"))
            m_hasStarted = entry.data.value(QLatin1String("testType")).toInt(-1) == FirstTestType;
        return readKeys(entry);
    case Journal::Kind::Event:
    case Journal::Kind::Log:
        return readKeys(entry);
    case Journal::Kind::Action:
    case Journal::Kind::Signal:
        return;
    }
}

void MachineTestRuns::endSession()
{
    if (m_run)
        finish(RunOutcome::Aborted);
}

void MachineTestRuns::readScreen(const QJsonObject &changes)
{
    const LcdState &lcd = m_session.lcd();
    if (lcd.page() == QLatin1String("machine")) {
        const QStringList log = lcd.list("log");
        if (changes.contains(QLatin1String("log"))) {
            const QStringList added = newLines(m_log, log);
            m_log = log;
            for (const QString &line : added)
                readLogLine(line);
        }
        const Screen screen = shownScreen();
        if (screen == Screen::Passed && m_run) {
            advanceTo(PhaseCount);
            finish(RunOutcome::Passed);
        } else if (screen == Screen::Failed && m_run) {
            finish(RunOutcome::Failed);
        } else if (screen == Screen::Other) {
            readPhaseScreen(lcd.text("titleIcon"));
        }
        m_screen = screen;
    }
    m_hasStarted = false;
}

MachineTestRuns::Screen MachineTestRuns::shownScreen() const
{
    const LcdState &lcd = m_session.lcd();
    const QString color = lcd.onlyStepColor();
    if (color == QLatin1String(passedColor))
        return Screen::Passed;
    if (color == QLatin1String(failedColor))
        return Screen::Failed;
    return lcd.text("titleIcon") == QLatin1String("MachineMode") && !lcd.hasSteps() ? Screen::Entry : Screen::Other;
}

void MachineTestRuns::readLogLine(const QString &line)
{
    if (!m_run)
        return;
    if (line == QLatin1String("Test failed"))
        return finish(RunOutcome::Failed);
    for (int phase = m_phase; phase < PhaseCount; ++phase) {
        if (line == QLatin1String(phaseRows[phase].passLine))
            return advanceTo(phase + 1);
    }
}

// Phases have a fixed order. If two of them have the same icon, the log shows when the first one ends.
void MachineTestRuns::readPhaseScreen(const QString &icon)
{
    int phase = m_run ? m_phase : 0;
    while (phase < PhaseCount && !icon.startsWith(QLatin1String(phaseRows[phase].icon)))
        ++phase;
    const bool isFirst = icon == QLatin1String(phaseRows[0].icon);
    if (!m_run) {
        // The component may continue a run that has failed. Its outcome doesn't change.
        if (isFirst)
            start();
    } else if (isFirst && (m_phase > 0 || (m_screen == Screen::Entry && m_hasStarted))) {
        finish(RunOutcome::Aborted);
        start();
    } else if (phase < PhaseCount) {
        advanceTo(phase);
    }
}

void MachineTestRuns::start()
{
    m_run = m_session.open(RunKind::Machine);
    m_phase = 0;
    beginPhase();
}

void MachineTestRuns::beginPhase()
{
    RunPhase phase;
    phase.name = QString::fromLatin1(phaseRows[m_phase].name);
    phase.begin = m_session.now();
    m_run->phases.append(phase);
}

void MachineTestRuns::endPhase(RunOutcome outcome, VerdictSource source)
{
    RunPhase &phase = m_run->phases.last();
    phase.outcome = outcome;
    phase.duration = m_session.now() - phase.begin;
    phase.source = source;
}

VerdictSource MachineTestRuns::passSource() const
{
    return m_phase == TBarPhase ? VerdictSource::Test : m_session.cause();
}

void MachineTestRuns::advanceTo(int phase)
{
    while (m_phase < phase) {
        endPhase(RunOutcome::Passed, passSource());
        if (++m_phase < PhaseCount)
            beginPhase();
    }
}

void MachineTestRuns::finish(RunOutcome outcome)
{
    if (m_phase < PhaseCount)
        endPhase(outcome, outcome == RunOutcome::Failed ? m_session.cause() : VerdictSource::None);
    m_session.close(*m_run, outcome);
    m_run.reset();
}

// The key walk waits for its first key before the screen of the phase appears.
void MachineTestRuns::readKeys(const Journal::Entry &entry)
{
    const int key = entry.data.value(QLatin1String("halKey")).toInt(-1);
    if (entry.name == QLatin1String("lcdKeyboardEvent.setKeyLed")) {
        if (entry.data.value(QLatin1String("mode")).toInt() == 1)
            m_awaitedKey = key;
    } else if (entry.name == QLatin1String("lcdKeyboardEvent.setAllButtonBrightness")) {
        m_awaitedKey = -1; // the walk begins or ends
    } else if (m_run && m_phase == KeyWalkPhase && m_awaitedKey >= 0) {
        countKeys(entry, key);
    }
}

void MachineTestRuns::countKeys(const Journal::Entry &entry, int key)
{
    if (entry.name == QLatin1String("lcdKeyboardEvent.key")) {
        const bool isDown = entry.data.value(QLatin1String("value")).toInt() == 1;
        if (isDown && key != m_awaitedKey && ++m_run->wrongKeyCount <= Run::MaxListed)
            m_run->wrongKeys.append(key);
    } else if (entry.kind == Journal::Kind::Log && m_run->skippedKeys.size() < Run::MaxListed) {
        const QString text = entry.data.value(QLatin1String("text")).toString();
        if (text.startsWith(QLatin1String("[ButtonFunctionBiz] Skipped key:")))
            m_run->skippedKeys.append(m_awaitedKey);
    }
}

}
