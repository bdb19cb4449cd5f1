#include "playing/player.h"

#include "expectations/expectationevaluator.h"
#include "playing/menunavigator.h"
#include "playing/repeatsummarizer.h"
#include "playing/sessionfacts.h"

#include <QtCore/QBuffer>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace panelhost {

namespace {

constexpr int LinesOnFailure = 10;

}

Session *Player::open(QString *error)
{
    m_keepsSession = true;
    return openSession(error);
}

Session *Player::openSession(QString *error)
{
    auto device = m_scenario.device;
    device.journalSink = [this](const Journal::Entry &entry) { addEntry(entry); };
    // The log export reads the lines that are kept.
    if (device.usbStick == Session::noUsbStick && !m_options.keepsJournal)
        device.journalLineLimit = LinesOnFailure;
    m_session = Session::open(device, error);
    return m_session.get();
}

void Player::playInNewSession()
{
    const bool isOpen = openSession(&m_result.error) != nullptr;
    m_result.facts = sessionFacts(m_scenario, m_session.get());
    if (isOpen)
        playSession();
    else
        m_result.passed = false;
    m_session.reset();
}

ScenarioResult Player::play()
{
    m_clock.start();
    m_sincePartialResult.start();
    m_result.file = m_scenario.file;
    m_result.title = m_scenario.title;
    m_result.state = ScenarioResult::State::Running;
    if (m_session) {
        m_result.facts = sessionFacts(m_scenario, m_session.get());
        playSession();
    } else {
        playInNewSession();
    }
    bool isAfterLast = m_lastStep == nullptr;
    if (!m_result.passed)
        listNotPlayed(m_scenario.steps, &isAfterLast);
    m_result.wallTime = m_clock.elapsed();
    if (m_result.state == ScenarioResult::State::Running)
        m_result.state = ScenarioResult::State::Over;
    return m_result;
}

void Player::playSession()
{
    m_session->lcd()->setUpdatesEnabled(m_options.paintsLcd);
    m_session->lcd()->show();
    m_session->clock().settle();
    m_result.passed = prepare() && playSteps(m_scenario.steps);
    finish();
}

bool Player::prepare()
{
    for (const auto &action : m_scenario.preparation) {
        if (!m_session->panelOperator().perform(action, &m_result.error))
            return false;
    }
    return true;
}

bool Player::playSteps(const QVector<Step> &steps)
{
    const auto play = [this](const Step &step) { return !isInterrupted() && playStep(step); };
    return std::all_of(steps.begin(), steps.end(), play);
}

bool Player::playStep(const Step &step)
{
    if (step.kind == Step::Kind::Repeat)
        return playRepetitions(step);
    StepResult result;
    result.file = step.file;
    result.where = step.where;
    result.text = step.text;
    result.repeat = m_repeat;
    result.repetition = m_repetition;
    const qint64 before = lastLine();
    doStep(step, result);
    // A step that was interrupted by a signal has neither passed nor failed.
    if (isInterrupted())
        return false;
    m_lastStep = &step;
    result.journalLine = lastLine() > before ? before + 1 : 0;
    result.at = m_session->clock().now();
    if (!result.passed && m_options.takesScreenshots)
        screenshot(QStringLiteral("failure"), result);
    m_result.steps.append(result);
    m_observer(result, ++m_result.stepsPlayed);
    reportPartialResult();
    return result.passed;
}

bool Player::playRepetitions(const Step &step)
{
    RepeatSummarizer summarizer(step, m_result);
    const bool isOutermost = m_repetition == 0;
    for (int repetition = 0; repetition < step.times; ++repetition) {
        summarizer.beginRepetition();
        if (isOutermost) {
            m_repeat = step.where;
            m_repetition = repetition + 1;
        }
        if (!playSteps(step.steps))
            return false;
    }
    if (isOutermost)
        m_repetition = 0;
    return true;
}

// The steps after the last one that was played, in the order of the scenario.
void Player::listNotPlayed(const QVector<Step> &steps, bool *isAfterLast)
{
    for (const Step &step : steps) {
        if (step.kind == Step::Kind::Repeat) {
            listNotPlayed(step.steps, isAfterLast);
        } else if (*isAfterLast) {
            StepResult result;
            result.file = step.file;
            result.where = step.where;
            result.text = step.text;
            if (++m_result.notPlayedCount <= ScenarioResult::StepsNotPlayed)
                m_result.notPlayed.append(result);
        } else {
            *isAfterLast = &step == m_lastStep;
        }
    }
}

qint64 Player::lastLine()
{
    const std::lock_guard lock(m_entryMutex);
    return m_lastLine;
}

void Player::doStep(const Step &step, StepResult &result)
{
    switch (step.kind) {
    case Step::Kind::Act:
        return performActions(step, result);
    case Step::Kind::Open:
        return open(step, result);
    case Step::Kind::WalkKeys:
        return walkKeys(step, result);
    case Step::Kind::Wait:
        return advance(step.duration);
    case Step::Kind::Expect:
        return expect(step, result);
    case Step::Kind::Screenshot:
        return screenshot(step.name, result);
    case Step::Kind::Mark:
        return m_counter.restart();
    case Step::Kind::Note:
    case Step::Kind::Repeat:
        return;
    }
}

bool Player::perform(const OperatorAction &action, StepResult &result)
{
    result.passed = m_session->panelOperator().perform(action, &result.error);
    return result.passed;
}

void Player::performActions(const Step &step, StepResult &result)
{
    for (int time = 0; time < step.times; ++time) {
        for (const auto &action : step.actions) {
            if (!perform(action, result))
                return;
        }
    }
}

void Player::open(const Step &step, StepResult &result)
{
    result.passed = openMenuEntry(*m_session, step.path, &result.error);
}

void Player::walkKeys(const Step &step, StepResult &result)
{
    const auto press = [&](int halKey) {
        if (!perform({OperatorAction::Kind::Press, {{QStringLiteral("key"), halKey}}}, result))
            return false;
        advance(step.walk.pace);
        return true;
    };
    const auto blinking = [this] {
        const auto keys = m_session->device().state().keys;
        const auto key = std::find_if(keys.begin(), keys.end(), [](const KeyState &k) { return k.led.isBlinking(); });
        return key == keys.end() ? std::optional<KeyState>() : std::optional<KeyState>(*key);
    };
    if (step.walk.wrongKey && !press(*step.walk.wrongKey))
        return;
    auto key = blinking();
    for (int presses = 0; key && presses < step.walk.max; ++presses) {
        if (!press(key->halKey))
            return;
        key = blinking();
    }
    if (key) {
        result.passed = false;
        result.error = QStringLiteral("key \"%1\" still blinks after %2 presses").arg(key->name).arg(step.walk.max);
    }
}

void Player::expect(const Step &step, StepResult &result)
{
    const auto advanceTime = [this](Milliseconds duration, const std::function<bool()> &done) {
        return advanceUntil(duration, done);
    };
    const ExpectationEvaluator evaluator(*m_session, m_counter);
    result.passed = evaluator.evaluateWithin(step.expectations, step.within, advanceTime, &result.expectationResults);
}

// A name that was used before, such as in a repeat, gets a number.
QString Player::unusedScreenshotName(const QString &name)
{
    QString unused = name;
    while (m_screenshots.contains(unused))
        unused = QStringLiteral("%1-%2").arg(name).arg(++m_screenshots[name]);
    m_screenshots.insert(unused, 1);
    return unused;
}

void Player::screenshot(const QString &name, StepResult &result)
{
    result.screenshot = unusedScreenshotName(name);
    if (!m_options.takesScreenshots)
        return;
    QWidget &lcd = *m_session->lcd();
    QBuffer buffer(&result.png);
    buffer.open(QIODevice::WriteOnly);
    lcd.setUpdatesEnabled(true);
    lcd.grab().save(&buffer, "PNG");
    lcd.setUpdatesEnabled(m_options.paintsLcd);
}

void Player::advance(Milliseconds duration)
{
    advanceUntil(duration, [] { return false; });
}

bool Player::advanceUntil(Milliseconds duration, const std::function<bool()> &done)
{
    bool isDone = false;
    const auto stops = [&] {
        reportPartialResult();
        isDone = done();
        return isDone || isInterrupted();
    };
    if (m_options.wait)
        m_options.wait(m_session->clock(), duration, stops);
    else
        m_session->clock().advanceUntil(duration, stops);
    return isDone;
}

void Player::addEntry(const Journal::Entry &entry)
{
    m_counter.add(entry);
    if (m_options.journal)
        m_options.journal(entry);
    const std::lock_guard lock(m_entryMutex);
    m_lastLine = entry.sequence;
    m_lines.append(entry);
    m_pages.add(entry);
}

void Player::reportPartialResult()
{
    if (!m_options.partialResult || m_sincePartialResult.elapsed() < PartialResultInterval)
        return;
    updateResult();
    m_options.partialResult(m_result);
    m_sincePartialResult.start();
}

void Player::updateResult()
{
    m_result.duration = m_session->clock().now();
    m_result.wallTime = m_clock.elapsed();
    const std::lock_guard lock(m_entryMutex);
    m_result.pages = m_pages.spans(m_result.duration);
    m_result.journal = m_lines;
}

// What happens from now on isn't part of the result, such as what the component does while the session ends.
void Player::finish()
{
    m_session->journal().setSink(m_keepsSession ? m_options.journal : Journal::Sink());
    updateResult();
    if (isInterrupted()) {
        m_result.state = ScenarioResult::State::Interrupted;
        m_result.passed = false;
    }
    if (m_result.passed)
        return;
    for (const auto &entry : m_session->journal().tail(LinesOnFailure))
        m_result.lastLines.append(entry.toText());
}

}
