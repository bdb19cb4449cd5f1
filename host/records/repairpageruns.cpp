#include "records/repairpageruns.h"

namespace panelhost {

namespace {

constexpr int RepairMenuLevel = 2;

std::optional<RunOutcome> markedOutcome(const QString &mark)
{
    if (mark == QLatin1String("pass"))
        return RunOutcome::Passed;
    return mark == QLatin1String("notpass") ? std::optional(RunOutcome::Failed) : std::nullopt;
}

}

void RepairPageRuns::add(const Journal::Entry &entry)
{
    if (entry.kind == Journal::Kind::Screen)
        return readScreen();
    if (entry.kind != Journal::Kind::Signal || entry.name != QLatin1String("requestShowContainer"))
        return;
    endSession();
    m_isOnPage = false;
    m_container = entry.data.value(QLatin1String("containerKey")).toString();
}

void RepairPageRuns::endSession()
{
    if (m_run)
        finish(RunOutcome::Aborted, VerdictSource::None);
}

void RepairPageRuns::readScreen()
{
    const LcdState &lcd = m_session.lcd();
    if (lcd.page() == QLatin1String("menu"))
        m_menuLevel = lcd.number("menu.level");
    const bool isPage = lcd.page() == QLatin1String("container") || lcd.page() == QLatin1String("repair");
    if (!isPage || m_menuLevel != RepairMenuLevel) {
        m_isOnPage = false;
        return endSession();
    }
    const auto verdict = lcd.page() == QLatin1String("repair") ? markedOutcome(lcd.firstStepMark()) : std::nullopt;
    if (!m_run && !verdict && (!m_isOnPage || m_isJudged))
        open();
    if (m_run && verdict)
        finish(*verdict, m_session.cause());
    m_isOnPage = true;
    m_isJudged = verdict.has_value();
}

void RepairPageRuns::open()
{
    m_run = m_session.open(RunKind::Repair);
    RunPhase page;
    page.name = m_container.section(QLatin1Char('.'), -1);
    page.begin = m_session.now();
    m_run->phases.append(page);
}

void RepairPageRuns::finish(RunOutcome outcome, VerdictSource source)
{
    RunPhase &page = m_run->phases.last();
    page.outcome = outcome;
    page.duration = m_session.now() - page.begin;
    page.source = source;
    m_session.close(*m_run, outcome);
    m_run.reset();
}

}
