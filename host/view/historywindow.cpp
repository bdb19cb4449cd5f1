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
#include <QtWidgets/QSplitter>
#include <QtWidgets/QToolBar>

#include <algorithm>

namespace panelhost {

using theme::Grid;
using Direction = SessionHistory::Direction;

namespace {

constexpr int LineCount = 12; ///< lines of the journal that are shown in a large window

Milliseconds longest(const HistoryWindow::Histories &histories)
{
    Milliseconds duration = 0;
    for (const auto &history : histories)
        duration = qMax(duration, history->duration());
    return duration;
}

// Adds a row of widgets to @p parts.
QBoxLayout *addRow(QSplitter &parts)
{
    auto *part = new QWidget(&parts);
    auto *row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    return row;
}

}

HistoryWindow::HistoryWindow(const Histories &histories)
    : m_steps(new QToolBar(this)), m_takeOver(new QToolBar(this)), m_time(new QLabel), m_message(new QLabel)
{
    theme::applyTo(this);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("history"));
    auto *column = new QVBoxLayout(content);
    m_parts = new QSplitter(Qt::Vertical, content);
    m_parts->setObjectName(QStringLiteral("history-parts"));
    m_parts->setChildrenCollapsible(false);
    connect(m_parts, &QSplitter::splitterMoved, this, [this] { m_arrangesParts = false; });
    QBoxLayout *panes = addRow(*m_parts);
    QBoxLayout *lists = addRow(*m_parts);
    column->addWidget(m_parts, 1);
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
    placeParts();
}

HistoryWindow::~HistoryWindow() = default;

void HistoryWindow::addSide(const SessionHistory &history, Milliseconds duration, QBoxLayout *panes, QBoxLayout *lists)
{
    Side side;
    side.history = &history;
    side.pane = new HistoryPane(history, this);
    side.model = new HistoryLineModel(history, this);
    side.lines = new LineList(QStringLiteral("history-lines"), side.model);
    side.lines->setMinimumHeight(3 * side.lines->sizeHintForRow(0));
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

QAction *HistoryWindow::addStep(QToolBar *bar, const char *name, const QString &text, const QKeySequence &key,
                                const std::function<qint64()> &find)
{
    auto *action = bar->addAction(text);
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
    addStep(m_steps, "previous-event", tr("◀ Event"), Qt::CTRL + Qt::Key_Left, [=] { return marker(Direction::Back); });
    addStep(m_steps, "previous-screen", tr("◀ Screen"), Qt::SHIFT + Qt::Key_Left,
            [=] { return screen(Direction::Back); });
    addStep(m_steps, "previous-line", tr("◀ Line"), Qt::Key_Left, [=] { return line(-1); });
    m_time->setObjectName(QStringLiteral("history-time"));
    m_time->setMargin(Grid);
    // The buttons don't move while the time gets longer.
    for (const Side &side : m_sides) {
        m_time->setText(timeOf(*side.history, side.history->lineCount()));
        m_time->setMinimumWidth(qMax(m_time->minimumWidth(), m_time->sizeHint().width()));
    }
    m_steps->addWidget(m_time);
    addStep(m_steps, "next-line", tr("Line ▶"), Qt::Key_Right, [=] { return line(1); });
    addStep(m_steps, "next-screen", tr("Screen ▶"), Qt::SHIFT + Qt::Key_Right,
            [=] { return screen(Direction::Forward); });
    addStep(m_steps, "next-event", tr("Event ▶"), Qt::CTRL + Qt::Key_Right, [=] { return marker(Direction::Forward); });
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
    QAction *action =
        addStep(m_takeOver, "first-difference", tr("First difference"), Qt::Key_D, [this] { return m_difference; });
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
    m_takeOver->setObjectName(QStringLiteral("history-take-over"));
    m_takeOver->setMovable(false);
    addToolBar(Qt::BottomToolBarArea, m_takeOver);
    auto *space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_takeOver->addWidget(space);
    const auto add = [this](const char *name, const QString &text, bool isRecorded) {
        auto *action = m_takeOver->addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this,
                [this, isRecorded] { Q_EMIT takeOverRequested(m_sides.front().line, isRecorded); });
    };
    add("take-over", tr("Take over here"), false);
    add("take-over-recorded", tr("Take over and record…"), true);
}

// In a row of its own if the window is too narrow for one row.
void HistoryWindow::placeTakeOver()
{
    const bool isNarrow = m_steps->sizeHint().width() + m_takeOver->sizeHint().width() > width();
    if (isNarrow && !toolBarBreak(m_takeOver))
        insertToolBarBreak(m_takeOver);
    else if (!isNarrow && toolBarBreak(m_takeOver))
        removeToolBarBreak(m_takeOver);
}

// Most of the room is for the panel.
void HistoryWindow::placeParts()
{
    if (!m_arrangesParts)
        return;
    const int listHeight = qMin(LineCount * m_sides.front().lines->sizeHintForRow(0), height() / 6);
    m_parts->setSizes({height() - listHeight, listHeight});
}

void HistoryWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    placeTakeOver();
    placeParts();
}

QString HistoryWindow::timeOf(const SessionHistory &history, qint64 line) const
{
    return tr("%1 of %2   line %3 of %4")
        .arg(timeText(history.timeOf(line)), timeText(history.duration()))
        .arg(line)
        .arg(history.lineCount());
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
    m_time->setText(timeOf(*active().history, active().line));
}

}
