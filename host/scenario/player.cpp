#include "scenario/player.h"

#include "scenario/menuwalk.h"
#include "scenario/outcomes.h"
#include "scenario/pagespans.h"
#include "scenario/wallpace.h"

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace panelhost {

namespace {

constexpr int LinesOnFailure = 10;

}

ScenarioResult Player::play()
{
    QElapsedTimer clock;
    clock.start();
    m_result.file = m_scenario.file;
    m_result.title = m_scenario.title;
    m_session = Session::open(m_scenario.device, &m_result.error);
    if (m_session)
        playSession();
    else
        m_result.passed = false;
    m_session.reset();
    m_result.wallTime = clock.elapsed();
    return m_result;
}

void Player::playSession()
{
    m_session->lcd()->show();
    m_session->timeline().settle();
    m_result.passed = prepare() && playSteps(m_scenario.steps);
    finish();
}

bool Player::prepare()
{
    for (const auto &action : m_scenario.preparation) {
        if (!m_session->op().perform(action, &m_result.error))
            return false;
    }
    return true;
}

bool Player::playSteps(const QVector<Step> &steps)
{
    const auto play = [this](const Step &step) { return playStep(step); };
    return std::all_of(steps.begin(), steps.end(), play);
}

bool Player::playStep(const Step &step)
{
    if (step.kind == Step::Kind::Repeat) {
        for (int round = 0; round < step.times; ++round) {
            if (!playSteps(step.steps))
                return false;
        }
        return true;
    }
    StepResult result;
    result.file = step.file;
    result.where = step.where;
    result.text = step.text;
    doStep(step, result);
    result.at = m_session->timeline().now();
    m_result.steps.append(result);
    m_observer(result, ++m_number);
    return result.passed;
}

void Player::doStep(const Step &step, StepResult &result)
{
    switch (step.kind) {
    case Step::Kind::Act:
        return act(step, result);
    case Step::Kind::Open:
        return open(step, result);
    case Step::Kind::WalkKeys:
        return walkKeys(step, result);
    case Step::Kind::Wait:
        return advance(step.duration);
    case Step::Kind::Expect:
        return expect(step, result);
    case Step::Kind::Screenshot:
        return screenshot(step, result);
    case Step::Kind::Mark:
        m_mark = m_session->journal().entries().size();
        return;
    case Step::Kind::Note:
    case Step::Kind::Repeat:
        return;
    }
}

bool Player::perform(const Action &action, StepResult &result)
{
    result.passed = m_session->op().perform(action, &result.error);
    return result.passed;
}

void Player::act(const Step &step, StepResult &result)
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
        if (!perform({Action::Kind::Press, {{QStringLiteral("key"), halKey}}}, result))
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
    const auto check = [&] {
        result.outcomes = outcomesOf(step.expectations, *m_session, m_mark);
        return allHold(result.outcomes);
    };
    result.passed = check() || (step.within && advanceUntil(*step.within, check));
}

void Player::screenshot(const Step &step, StepResult &result)
{
    const int taken = m_screenshots[step.name]++;
    result.screenshot = taken == 0 ? step.name : QStringLiteral("%1-%2").arg(step.name).arg(taken + 1);
    if (!m_options.takesScreenshots)
        return;
    QBuffer buffer(&result.png);
    buffer.open(QIODevice::WriteOnly);
    m_session->lcd()->grab().save(&buffer, "PNG");
}

void Player::advance(Instant duration)
{
    advanceUntil(duration, [] { return false; });
}

bool Player::advanceUntil(Instant duration, const std::function<bool()> &done)
{
    if (!m_options.isRealTime)
        return m_session->timeline().advanceUntil(duration, done);
    return advanceAtWallPace(m_session->timeline(), duration, done);
}

void Player::finish()
{
    const auto &journal = m_session->journal();
    m_result.duration = m_session->timeline().now();
    m_result.journal = journal.toJsonLines();
    m_result.pages = pagesOf(journal.entries(), m_result.duration);
    if (m_result.passed)
        return;
    for (const auto &entry : journal.tail(LinesOnFailure))
        m_result.lastLines.append(entry.toText());
}

}
