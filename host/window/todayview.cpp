#include "window/todayview.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "records/statisticstext.h"
#include "window/elidedlabel.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace panelhost {

namespace {

// The words for kinds and outcomes of runs.
[[maybe_unused]] const char *const Words[] = {
    QT_TRANSLATE_NOOP("panelhost::TodayView", "machine"), QT_TRANSLATE_NOOP("panelhost::TodayView", "aging"),
    QT_TRANSLATE_NOOP("panelhost::TodayView", "repair"),  QT_TRANSLATE_NOOP("panelhost::TodayView", "passed"),
    QT_TRANSLATE_NOOP("panelhost::TodayView", "failed"),  QT_TRANSLATE_NOOP("panelhost::TodayView", "aborted"),
};

QString lineOf(const Run &run)
{
    const QString unit = run.session.unit.isEmpty() ? QStringLiteral("-") : run.session.unit;
    return QStringLiteral("%1  %2 %3  %4")
        .arg(run.beginUtc().toString(QStringLiteral("HH:mm")), TodayView::tr(toText(run.kind).toUtf8().constData()),
             TodayView::tr(toText(run.outcome).toUtf8().constData()), unit);
}

QString yieldText(qint64 passed, const RunCounts &counts)
{
    if (counts.units == 0)
        return QStringLiteral("-");
    const QString percent = percentText(passed, counts.units);
    return counts.units == 1 ? TodayView::tr("%1  (%2 of 1 unit)").arg(percent).arg(passed)
                             : TodayView::tr("%1  (%2 of %3 units)").arg(percent).arg(passed).arg(counts.units);
}

QString failingText(const RunCounts &counts)
{
    const QVector<FailingPhase> failing = failingPhases(counts);
    return failing.isEmpty() ? QStringLiteral("-")
                             : TodayView::tr("%1  (%2 of %3 failed)")
                                   .arg(phaseText(failing.first().phase))
                                   .arg(failing.first().runs)
                                   .arg(counts.failed);
}

}

TodayView::TodayView(StoreReader &reader, const std::function<int()> &savedCount, QWidget *parent)
    : QDockWidget(parent), m_reader(reader), m_savedCount(savedCount)
{
    setObjectName(QStringLiteral("today"));
    theme::applyTo(this);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("today-content"));
    content->setAttribute(Qt::WA_StyledBackground);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(theme::Grid, theme::Grid, theme::Grid, theme::Grid);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * theme::Grid);
    grid->setColumnStretch(1, 1);
    m_firstPass = addLine(grid, QStringLiteral("today-first-pass"));
    m_final = addLine(grid, QStringLiteral("today-final"));
    m_runs = addLine(grid, QStringLiteral("today-runs"));
    m_failing = addLine(grid, QStringLiteral("today-failing"));
    column->addLayout(grid);
    for (int index = 0; index < LastRuns; ++index) {
        auto *label = new ElidedLabel(QStringLiteral("today-run-%1").arg(index));
        label->hide();
        m_lastRuns.append(label);
        column->addWidget(label);
    }
    column->addStretch(1);
    setWidget(content);
    connect(&reader, &StoreReader::todayRead, this, &TodayView::showFigures);
    keepTranslated(this, [this] { setTexts(); });
}

// The figures are read again in the new language.
void TodayView::setTexts()
{
    setWindowTitle(tr("Today"));
    const QStringList captions{tr("First-pass yield"), tr("Final yield"), tr("Machine tests"), tr("Fails most often")};
    for (int index = 0; index < m_captions.size(); ++index)
        m_captions[index]->setText(captions[index]);
    m_seenCount = -1;
}

QLabel *TodayView::addLine(QGridLayout *grid, const QString &name)
{
    const int row = grid->rowCount();
    auto *label = new ElidedLabel(name);
    label->setText(QStringLiteral("-"));
    m_captions.append(new QLabel);
    grid->addWidget(m_captions.last(), row, 0);
    grid->addWidget(label, row, 1);
    return label;
}

void TodayView::poll()
{
    const int count = m_savedCount();
    const QDate day = QDateTime::currentDateTimeUtc().date();
    if (!isVisible() || (count == m_seenCount && day == m_day))
        return;
    m_seenCount = count;
    m_day = day;
    m_reader.readToday(LastRuns);
}

void TodayView::showFigures(const TodayFigures &figures)
{
    const RunCounts &counts = figures.counts;
    m_firstPass->setText(yieldText(counts.firstPassed, counts));
    m_final->setText(yieldText(counts.finallyPassed, counts));
    m_runs->setText(tr("%1  (%2 passed, %3 failed, %4 aborted)")
                        .arg(counts.runs())
                        .arg(counts.passed)
                        .arg(counts.failed)
                        .arg(counts.aborted));
    m_failing->setText(failingText(counts));
    for (int index = 0; index < m_lastRuns.size(); ++index) {
        QLabel *label = m_lastRuns.at(index);
        label->setVisible(index < figures.lastRuns.size());
        if (index >= figures.lastRuns.size())
            continue;
        const Run &run = figures.lastRuns.at(index);
        label->setText(lineOf(run));
        label->setProperty("outcome", toText(run.outcome));
        label->style()->unpolish(label);
        label->style()->polish(label);
    }
}

}
