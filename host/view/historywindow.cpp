#include "view/historywindow.h"

#include "panel/linelist.h"
#include "panel/theme.h"
#include "playing/scenarioresult.h"
#include "view/historylinemodel.h"
#include "view/historypane.h"
#include "view/timelinebar.h"

#include <QtGui/QKeySequence>
#include <QtGui/QScreen>
#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolBar>

#include <algorithm>

namespace panelhost {

using theme::Grid;
using Direction = SessionHistory::Direction;

namespace {

constexpr int ListHeight = 22 * Grid;

Milliseconds longest(const HistoryWindow::Histories &histories)
{
    Milliseconds duration = 0;
    for (const auto &history : histories)
        duration = qMax(duration, history->duration());
    return duration;
}

}

HistoryWindow::HistoryWindow(const Histories &histories)
    : m_steps(new QToolBar(this)), m_time(new QLabel), m_message(new QLabel)
{
    theme::applyTo(this);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("history"));
    auto *column = new QVBoxLayout(content);
    auto *panes = new QHBoxLayout;
    auto *lists = new QHBoxLayout;
    column->addLayout(panes, 1);
    column->addLayout(lists);
    for (const auto &history : histories)
        addSide(*history, longest(histories), panes, lists);
    for (const Side &side : m_sides)
        column->addWidget(side.timeline);
    m_message->setObjectName(QStringLiteral("history-message"));
    m_message->setWordWrap(true);
    column->addWidget(m_message);
    setCentralWidget(content);
    addSteps();
    compare();
    addTakeOver();
    showTime(0);
    constexpr int Frame = 4 * Grid; // of the window manager
    resize(QSize(1280, 800).boundedTo(screen()->availableSize() - QSize(0, Frame)));
}

HistoryWindow::~HistoryWindow() = default;

void HistoryWindow::addSide(const SessionHistory &history, Milliseconds duration, QBoxLayout *panes, QBoxLayout *lists)
{
    Side side;
    side.history = &history;
    side.pane = new HistoryPane(history, this);
    side.model = new HistoryLineModel(history, this);
    side.lines = new LineList(QStringLiteral("history-lines"), side.model);
    side.lines->setFixedHeight(ListHeight);
    side.timeline = new TimelineBar(history, duration, this);
    panes->addWidget(side.pane, 1);
    lists->addWidget(side.lines, 1);
    const int index = static_cast<int>(m_sides.size());
    connect(side.timeline, &TimelineBar::timeSelected, this, [this, index](Milliseconds at) {
        m_active = index;
        showTime(at);
    });
    connect(side.lines->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, index](const QModelIndex &current) {
                if (!m_isUpdating)
                    showLine(index, current.row() + 1);
            });
    m_sides.push_back(side);
}

QAction *HistoryWindow::addStep(const char *name, const QString &text, const QKeySequence &key,
                                const std::function<qint64()> &find)
{
    auto *action = m_steps->addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, [this, find] {
        const qint64 line = find();
        if (line > 0)
            showLine(m_active, line);
    });
    return action;
}

void HistoryWindow::addSteps()
{
    m_steps->setObjectName(QStringLiteral("history-steps"));
    m_steps->setMovable(false);
    addToolBar(Qt::BottomToolBarArea, m_steps);
    const auto marker = [this](Direction direction) {
        const Marker *found = active().history->findMarker(active().line, direction);
        return found ? found->line : 0;
    };
    const auto screen = [this](Direction direction) {
        return active().history->findLine(Journal::Kind::Screen, active().line, direction);
    };
    const auto line = [this](int distance) {
        return qBound<qint64>(1, active().line + distance, active().history->lineCount());
    };
    addStep("previous-event", tr("◀ Event"), Qt::CTRL + Qt::Key_Left, [=] { return marker(Direction::Back); });
    addStep("previous-screen", tr("◀ Screen"), Qt::SHIFT + Qt::Key_Left, [=] { return screen(Direction::Back); });
    addStep("previous-line", tr("◀ Line"), Qt::Key_Left, [=] { return line(-1); });
    m_time->setObjectName(QStringLiteral("history-time"));
    m_time->setMargin(Grid);
    m_steps->addWidget(m_time);
    addStep("next-line", tr("Line ▶"), Qt::Key_Right, [=] { return line(1); });
    addStep("next-screen", tr("Screen ▶"), Qt::SHIFT + Qt::Key_Right, [=] { return screen(Direction::Forward); });
    addStep("next-event", tr("Event ▶"), Qt::CTRL + Qt::Key_Right, [=] { return marker(Direction::Forward); });
}

void HistoryWindow::compare()
{
    if (m_sides.size() < 2) {
        const QString error = m_sides.front().history->error();
        m_message->setText(error.isEmpty() ? QString() : tr("Failed: %1").arg(error));
        m_message->setVisible(!error.isEmpty());
        return;
    }
    m_difference = firstDifference(*m_sides[0].history, *m_sides[1].history);
    QAction *action = addStep("first-difference", tr("First difference"), Qt::Key_D, [this] { return m_difference; });
    action->setEnabled(m_difference > 0);
    if (m_difference == 0) {
        m_message->setText(tr("The two sessions have the same journal."));
        return;
    }
    m_message->setText(tr("The sessions differ from line %1 of the journal on.").arg(m_difference));
    for (const Side &side : m_sides) {
        side.model->setDifference(m_difference);
        side.timeline->setDifference(side.history->timeOf(qMin(m_difference, side.history->lineCount())));
    }
}

void HistoryWindow::addTakeOver()
{
    auto *space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_steps->addWidget(space);
    const auto add = [this](const char *name, const QString &text, bool isRecorded) {
        auto *action = m_steps->addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this,
                [this, isRecorded] { Q_EMIT takeOverRequested(m_sides.front().line, isRecorded); });
    };
    add("take-over", tr("Take over here"), false);
    add("take-over-recorded", tr("Take over and record…"), true);
}

void HistoryWindow::showTime(Milliseconds at)
{
    for (int index = 0; index < static_cast<int>(m_sides.size()); ++index)
        update(index, m_sides[static_cast<std::size_t>(index)].history->lineAt(at));
    updateTitle();
}

// At a difference both sessions are shown at the line with this number, whenever it came.
void HistoryWindow::showLine(int index, qint64 line)
{
    m_active = index;
    const Milliseconds at = active().history->timeOf(line);
    for (int side = 0; side < static_cast<int>(m_sides.size()); ++side) {
        const SessionHistory &history = *m_sides[static_cast<std::size_t>(side)].history;
        const bool isSameLine = side == index || line == m_difference;
        update(side, isSameLine ? qMin(line, history.lineCount()) : history.lineAt(at));
    }
    updateTitle();
}

qint64 HistoryWindow::line(int index) const
{
    return m_sides[static_cast<std::size_t>(index)].line;
}

void HistoryWindow::update(int index, qint64 line)
{
    Side &side = m_sides[static_cast<std::size_t>(index)];
    side.line = line;
    side.pane->showLine(line);
    side.timeline->setNow(side.history->timeOf(line));
    m_isUpdating = true;
    const QModelIndex current = side.model->index(static_cast<int>(line) - 1);
    side.lines->setCurrentIndex(current);
    side.lines->scrollTo(current, QAbstractItemView::PositionAtCenter);
    m_isUpdating = false;
}

void HistoryWindow::updateTitle()
{
    QStringList titles;
    for (const Side &side : m_sides)
        titles << side.history->title();
    setWindowTitle(titles.join(QStringLiteral(" – ")) + QStringLiteral(" – panelhost"));
    m_time->setText(tr("%1 of %2   line %3 of %4")
                        .arg(timeText(active().history->timeOf(active().line)), timeText(active().history->duration()))
                        .arg(active().line)
                        .arg(active().history->lineCount()));
}

}
