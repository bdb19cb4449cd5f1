#include "window/panelwindow.h"

#include "panel/frontpanel.h"
#include "panel/lcdview.h"
#include "panel/theme.h"
#include "panel/translated.h"
#include "panel/windowtheme.h"
#include "playing/scenarioresult.h"
#include "records/run.h"
#include "scenario/scenario.h"
#include "session/session.h"
#include "window/dockplace.h"
#include "window/faultmenu.h"
#include "window/faultview.h"
#include "window/filemenu.h"
#include "window/helpmenu.h"
#include "window/journalview.h"
#include "window/playbar.h"
#include "window/realtimetooltips.h"
#include "window/scenarioopener.h"
#include "window/speedbar.h"
#include "window/themechoice.h"
#include "window/timemenu.h"
#include "window/todayview.h"
#include "window/unitbar.h"
#include "window/windowlanguage.h"
#include "window/windowstatus.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

namespace panelhost {

constexpr int RefreshInterval = 33; ///< real milliseconds

// Parts that are gone matter most: nothing can be tested with them.
static QString failureOf(const DeviceState &device)
{
    if (device.missingParts.isEmpty())
        return device.tbar.failure;
    return PanelWindow::tr("The board has lost: %1").arg(device.missingParts.join(QStringLiteral(", ")));
}

PanelWindow::PanelWindow(Session &session)
    : m_session(session), m_panel(new FrontPanel(session.device().state(), session.lcd(), this)),
      m_journal(new JournalView(session.journal(), this)), m_speed(new SpeedBar(this)),
      m_status(new WindowStatus(this)), m_playBar(new PlayBar(this))
{
    setObjectName(QStringLiteral("window"));
    setWindowTitle(QStringLiteral("panelhost"));
    setCentralWidget(m_panel);
    new RealTimeToolTips(this);
    theme::applyToToolTips();
    theme::applyTo(menuBar());
    theme::applyTo(m_speed);
    setStatusBar(m_status);
    setAnimated(false); // animations would run in virtual time
    addMenus();
    addJournal();
    addFaults();
    addPlayBar();
    setInitialSize();
    connect(m_panel, &FrontPanel::actionTriggered, this, &PanelWindow::perform);
    connect(m_speed, &SpeedBar::speedSelected, this, &PanelWindow::setSpeed);
    connect(&m_refresh, &RealTimeTimer::timeout, this, &PanelWindow::refresh);
    m_refresh.start(RefreshInterval);
    m_speed->setSpeed(1);
    m_sinceOpened.start();
    refresh();
}

PanelWindow::~PanelWindow()
{
    // They are hidden while the window is deleted.
    for (QDockWidget *dock : qAsConst(m_docks))
        dock->disconnect(this);
    m_session.clock().stop();
}

void PanelWindow::perform(const OperatorAction &action)
{
    QString error = refusalOf(action);
    if (error.isEmpty())
        m_session.panelOperator().perform(action, &error);
    m_status->setMessage(error);
    refresh();
}

// Outside factory mode these actions lead into it, which only a serial number may do.
QString PanelWindow::refusalOf(const OperatorAction &action) const
{
    using Kind = OperatorAction::Kind;
    if (m_isPlaying)
        return tr("A scenario is being played. Stop it first.");
    const bool leadsIn = action.kind == Kind::Navigate || action.kind == Kind::Touch || action.kind == Kind::Soft
        || action.kind == Kind::EnterFactoryMode;
    const bool isRefused = m_units && leadsIn && !m_session.isInFactoryMode();
    return isRefused ? tr("Enter the serial number of the unit first.") : QString();
}

void PanelWindow::askForUnits(const UnitPattern &pattern, const QString &unit)
{
    m_units = new UnitBar(pattern, this);
    m_units->setUnit(unit);
    connect(m_units, &UnitBar::unitEntered, this, &PanelWindow::beginUnit);
    connect(m_units, &UnitBar::finished, this, &PanelWindow::focusLcd);
    auto *bar = new QToolBar(this);
    bar->setObjectName(QStringLiteral("unit-toolbar"));
    bar->setMovable(false);
    bar->toggleViewAction()->setVisible(false);
    theme::applyTo(bar);
    bar->addWidget(m_units);
    addToolBar(Qt::TopToolBarArea, bar);
    refresh();
    if (!unit.isEmpty())
        Q_EMIT unitBegun(unit);
}

// The menu is where a test begins, wherever the previous unit's ended.
void PanelWindow::beginUnit(const QString &unit)
{
    using Kind = OperatorAction::Kind;
    if (m_session.isInFactoryMode())
        perform({Kind::ExitFactoryMode, {}});
    m_units->setUnit(unit);
    perform({Kind::Unit, {{QStringLiteral("unit"), unit}}});
    m_session.panelOperator().perform({Kind::EnterFactoryMode, {}});
    refresh();
    if (m_passed.contains(unit))
        warnThatUnitPassed(unit, m_passed.value(unit));
    else
        Q_EMIT unitBegun(unit);
}

QString PanelWindow::unit() const
{
    return m_units && m_session.isInFactoryMode() ? m_units->unit() : QString();
}

void PanelWindow::focusLcd()
{
    panelhost::focusLcd(*m_session.lcd());
}

// Next to the journal, which is closed if there is no room for docks.
void PanelWindow::addToday(StoreReader &reader, const std::function<int()> &savedCount)
{
    m_today = new TodayView(reader, savedCount, this);
    QAction *action = m_today->toggleViewAction();
    action->setShortcut(QKeySequence(QStringLiteral("Ctrl+T")));
    m_viewMenu->addAction(action);
    addDockWidget(dockWidgetArea(m_journal), m_today);
    splitDockWidget(m_today, m_journal,
                    dockWidgetArea(m_journal) == Qt::RightDockWidgetArea ? Qt::Vertical : Qt::Horizontal);
    addToDocks(m_today);
    m_today->setVisible(m_units && !m_journal->isHidden());
}

void PanelWindow::showRun(const Run &run)
{
    if (!m_units)
        return;
    m_units->setVerdict(run);
    if (run.kind == RunKind::Machine && run.outcome == RunOutcome::Passed)
        m_passed.insert(run.session.unit, run.endUtc());
}

void PanelWindow::warnThatUnitPassed(const QString &unit, const QDateTime &passedAt)
{
    const QString time = passedAt.toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    if (m_units && m_units->unit() == unit)
        m_units->setWarning(
            [unit, time] { return tr("%1 has already passed the complete machine test: %2 UTC").arg(unit, time); });
}

// Shows the failure only if it has changed, so that it doesn't replace the message of a later action.
void PanelWindow::showFailure(const QString &failure)
{
    if (failure != m_failure)
        m_status->setMessage(failure);
    m_failure = failure;
}

void PanelWindow::refresh()
{
    const DeviceState device = m_session.device().state();
    m_panel->setState(device, m_sinceOpened.elapsed());
    m_panel->setFaults(m_session.faults());
    if (m_faults->isVisible())
        m_faults->poll();
    showFailure(failureOf(device));
    m_speed->setNow(m_session.clock().now());
    m_journal->poll();
    if (m_today)
        m_today->poll();
    if (m_units && m_units->isWaiting() == m_session.isInFactoryMode())
        m_units->setWaiting(!m_session.isInFactoryMode());
}

QList<QDockWidget *> PanelWindow::dockedDocks() const
{
    QList<QDockWidget *> docked;
    for (QDockWidget *dock : m_docks) {
        if (!dock->isHidden() && !dock->isFloating())
            docked.append(dock);
    }
    return docked;
}

QSize PanelWindow::roomForPanelAndDocks() const
{
    int used = menuBar()->sizeHint().height() + m_status->sizeHint().height();
    const auto bars = findChildren<QToolBar *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QToolBar *bar : bars)
        used += bar->isHidden() ? 0 : bar->sizeHint().height();
    return {width(), height() - used};
}

void PanelWindow::arrangeDocks()
{
    const QList<QDockWidget *> docks = dockedDocks();
    if (!isVisible() || !m_arrangesDocks || m_isArranging || docks.isEmpty())
        return;
    m_isArranging = true;
    QSize minimum(46 * theme::Grid, 30 * theme::Grid); // a journal below the panel shows nine lines
    for (const QDockWidget *dock : docks)
        minimum = minimum.expandedTo(dock->minimumSizeHint());
    const DockPlace place = placeDocks(roomForPanelAndDocks(), m_panel->naturalSize(), minimum);
    const bool isRight = place.area == Qt::RightDockWidgetArea;
    if (dockWidgetArea(docks.first()) != place.area) {
        for (QDockWidget *dock : qAsConst(m_docks)) {
            if (!dock->isFloating())
                addDockWidget(place.area, dock, isRight ? Qt::Vertical : Qt::Horizontal);
        }
    }
    resizeDocks({docks.first()}, {place.extent}, isRight ? Qt::Horizontal : Qt::Vertical);
    // They share their side in equal parts.
    QList<int> shares;
    for (int count = 0; count < docks.size(); ++count)
        shares << (isRight ? height() : width()) / docks.size();
    resizeDocks(docks, shares, isRight ? Qt::Vertical : Qt::Horizontal);
    m_isArranging = false;
}

// The strip of a scenario isn't shown again in another session.
bool PanelWindow::restoreDocks(const QByteArray &state, int version)
{
    const bool isPlayBarHidden = m_playBar->isHidden();
    const bool isRestored = restoreState(state, version);
    m_playBar->setHidden(isPlayBarHidden);
    return isRestored;
}

void PanelWindow::setArrangesDocks(bool arranges)
{
    m_arrangesDocks = arranges;
    arrangeDocks();
}

void PanelWindow::addToDocks(QDockWidget *dock)
{
    const auto end = [this] {
        if (!m_isArranging)
            m_arrangesDocks = false;
    };
    m_docks.append(dock);
    connect(dock, &QDockWidget::topLevelChanged, this, end);
    connect(dock, &QDockWidget::visibilityChanged, this, &PanelWindow::arrangeDocks);
}

bool PanelWindow::event(QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && isSeparator(static_cast<QMouseEvent *>(event)->pos()))
        m_arrangesDocks = false;
    return QMainWindow::event(event);
}

void PanelWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    arrangeDocks();
}

void PanelWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    arrangeDocks();
}

void PanelWindow::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), QColor(theme::colors().window));
}

void PanelWindow::setSpeed(double factor)
{
    m_factor = factor;
    m_pausedByEnd = false;
    if (factor < 0 || m_isPlaying)
        m_session.clock().stop();
    else
        m_session.clock().run(factor);
    m_speed->setSpeed(factor);
    m_time->setSpeed(factor);
}

void PanelWindow::step()
{
    constexpr Milliseconds Most = 60000;
    setSpeed(SpeedBar::Paused);
    if (m_isPlaying) {
        Q_EMIT stepTriggered();
        return;
    }
    const qint64 before = m_session.journal().count();
    m_session.clock().advanceUntil(Most, [this, before] { return m_session.journal().count() > before; });
    refresh();
}

void PanelWindow::addPlayBar()
{
    addToolBar(Qt::TopToolBarArea, m_playBar);
    connect(m_playBar, &PlayBar::stopTriggered, this, &PanelWindow::stopTriggered);
}

void PanelWindow::setOpensScenarios(const Session::Options &base)
{
    m_opener = new ScenarioOpener(base, this);
    connect(m_opener, &ScenarioOpener::scenarioOpened, this, &PanelWindow::openScenario);
    connect(m_opener, &ScenarioOpener::viewRequested, this, &PanelWindow::viewRequested);
    connect(m_files, &FileMenu::newSessionTriggered, this, &PanelWindow::newSessionTriggered);
    connect(m_playBar, &PlayBar::playAgainTriggered, m_opener, [this] { m_opener->play(m_scenarioFile); });
    connect(m_playBar, &PlayBar::timelineTriggered, m_opener, [this] { m_opener->showTimeline(m_scenarioFile); });
    m_files->setOpener(m_opener);
    setAcceptDrops(true);
}

// Where units are tested, a run belongs to one.
void PanelWindow::openScenario(const Scenario &scenario)
{
    if (m_units && unit().isEmpty() && scenario.unit.isEmpty())
        m_status->setMessage(tr("Enter the serial number of the unit first."));
    else
        Q_EMIT scenarioOpened(scenario);
}

// One file that is on this machine.
static QString droppedFile(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

void PanelWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void PanelWindow::dropEvent(QDropEvent *event)
{
    const QString path = droppedFile(*event->mimeData());
    if (path.isEmpty() || !m_opener)
        return;
    event->acceptProposedAction();
    QMetaObject::invokeMethod(
        m_opener, [this, path] { m_opener->play(path); }, Qt::QueuedConnection);
}

void PanelWindow::beginPlaying(const Scenario &scenario)
{
    m_scenarioFile = scenario.file;
    m_isPlaying = true;
    m_session.clock().stop();
    m_playBar->begin(scenario.title.isEmpty() ? QFileInfo(scenario.file).fileName() : scenario.title,
                     playedSteps(scenario.steps));
    showSummary();
}

// Also where only the title is seen, such as in a task bar.
void PanelWindow::showSummary()
{
    setWindowTitle(m_playBar->summary() + QStringLiteral(" – panelhost"));
}

void PanelWindow::showPlayedStep(const StepResult &step, qint64 number)
{
    m_playBar->setStep(step, number);
}

void PanelWindow::endPlaying(const ScenarioResult &result)
{
    m_isPlaying = false;
    m_factorBeforeEnd = m_factor;
    setSpeed(SpeedBar::Paused);
    m_pausedByEnd = m_factorBeforeEnd != SpeedBar::Paused;
    m_playBar->end(result);
    showSummary();
    refresh();
}

void PanelWindow::setRecording(const QString &fileName)
{
    m_files->setCanRecord(fileName.isEmpty());
    m_status->setRecording(fileName);
}

void PanelWindow::setPendingRuns(int count)
{
    m_status->setPendingRuns(count);
}

void PanelWindow::setSendingProblem(const QString &text)
{
    m_status->setSendingProblem(text);
}

void PanelWindow::setJournalFile(const QString &fileName)
{
    m_journal->setFile(fileName);
}

void PanelWindow::addFailure(const QString &text)
{
    m_status->addFailure(text);
}

void PanelWindow::addMenus()
{
    m_files = new FileMenu(m_session, this);
    connect(m_files, &FileMenu::messageChanged, m_status, &WindowStatus::setMessage);
    connect(m_files, &FileMenu::recordingChanged, m_status, &WindowStatus::setRecording);
    connect(m_journal, &JournalView::messageChanged, m_status, &WindowStatus::setMessage);
    menuBar()->addMenu(m_files);
    addDeviceMenu();
    addTimeMenu();
    addFaultMenu();
    addLanguageMenu();
    addViewMenu();
    menuBar()->addMenu(new HelpMenu(m_session, menuBar(), this));
    menuBar()->setCornerWidget(m_speed);
}

void PanelWindow::addTimeMenu()
{
    m_time = new TimeMenu(this);
    connect(m_time, &TimeMenu::speedSelected, this, &PanelWindow::setSpeed);
    connect(m_time, &TimeMenu::stepTriggered, this, &PanelWindow::step);
    menuBar()->addMenu(m_time);
}

void PanelWindow::addFaultMenu()
{
    auto *faults = new FaultMenu(m_session.faults(), m_session.device(), this);
    connect(faults, &FaultMenu::actionTriggered, this, &PanelWindow::perform);
    theme::applyTo(faults);
    menuBar()->addMenu(faults);
}

void PanelWindow::addDeviceMenu()
{
    QMenu *menu = menuBar()->addMenu(QString());
    QAction *enter = menu->addAction(QString(), this, [this] {
        perform({OperatorAction::Kind::EnterFactoryMode, {}});
    });
    QAction *exit = menu->addAction(QString(), this, [this] { perform({OperatorAction::Kind::ExitFactoryMode, {}}); });
    keepTranslated(menu, [=] {
        menu->setTitle(tr("&Device"));
        enter->setText(tr("&Enter factory mode"));
        exit->setText(tr("E&xit factory mode"));
    });
}

// Qt calls English "American English".
static QString languageText(const QString &code)
{
    const QString name = code == QLatin1String("en") ? QStringLiteral("English") : QLocale(code).nativeLanguageName();
    return QStringLiteral("%1 (%2)").arg(name, code);
}

void PanelWindow::addLanguageMenu()
{
    QMenu *menu = menuBar()->addMenu(QString());
    auto *group = new QActionGroup(menu);
    const auto codes = m_session.languages();
    for (const QString &code : codes) {
        QAction *action = menu->addAction(languageText(code), this, [this, code] {
            perform({OperatorAction::Kind::Language, {{QStringLiteral("code"), code}}});
        });
        action->setData(code);
        action->setCheckable(true);
        group->addAction(action);
    }
    connect(menu, &QMenu::aboutToShow, this, [this, group] {
        const auto actions = group->actions();
        for (QAction *action : actions)
            action->setChecked(action->data().toString() == m_session.language());
    });
    auto *lcd = new QAction(menu);
    lcd->setEnabled(false);
    menu->insertAction(group->actions().constFirst(), lcd);
    QMenu *window = addWindowLanguages(menu);
    keepTranslated(menu, [=] {
        menu->setTitle(tr("&Language"));
        lcd->setText(tr("LCD"));
        window->setTitle(tr("&Window"));
    });
}

// The first entry follows the computer.
QMenu *PanelWindow::addWindowLanguages(QMenu *menu)
{
    menu->addSeparator();
    QMenu *window = menu->addMenu(QString());
    window->setObjectName(QStringLiteral("window-language"));
    auto *group = new QActionGroup(window);
    const auto add = [this, window, group](const QString &text, const QString &code) {
        QAction *action = window->addAction(text, this, [code] { setWindowLanguage(code); });
        action->setData(code);
        action->setCheckable(true);
        group->addAction(action);
        return action;
    };
    QAction *system = add(QString(), QString());
    window->addSeparator();
    const QStringList codes = windowLanguages();
    for (const QString &code : codes)
        add(languageText(code), code);
    keepTranslated(window, [system] { system->setText(tr("As on this &computer")); });
    connect(window, &QMenu::aboutToShow, this, [group] {
        const auto actions = group->actions();
        for (QAction *action : actions)
            action->setChecked(action->data().toString() == windowLanguage());
    });
    return window;
}

void PanelWindow::addViewMenu()
{
    m_viewMenu = menuBar()->addMenu(QString());
    QAction *journal = m_journal->toggleViewAction();
    journal->setShortcut(QKeySequence(QStringLiteral("Ctrl+J")));
    m_viewMenu->addAction(journal);
    QAction *find =
        m_viewMenu->addAction(QString(), m_journal, &JournalView::focusFilter, QKeySequence(QKeySequence::Find));
    QAction *arranges = m_viewMenu->addAction(QString());
    addThemes();
    keepTranslated(m_viewMenu, [=] {
        m_viewMenu->setTitle(tr("&View"));
        find->setText(tr("&Find in the journal"));
        arranges->setText(tr("&Arrange docks automatically"));
    });
    arranges->setCheckable(true);
    connect(arranges, &QAction::triggered, this, &PanelWindow::setArrangesDocks);
    connect(m_viewMenu, &QMenu::aboutToShow, this, [this, arranges] { arranges->setChecked(m_arrangesDocks); });
}

void PanelWindow::addThemes()
{
    QMenu *menu = m_viewMenu->addMenu(QString());
    menu->setObjectName(QStringLiteral("theme"));
    auto *group = new QActionGroup(menu);
    for (const char *choice : {"", "dark", "light"}) {
        const QString name = QString::fromLatin1(choice);
        QAction *action = group->addAction(menu->addAction(QString(), menu, [name] { setThemeChoice(name); }));
        action->setData(name);
        action->setCheckable(true);
    }
    connect(menu, &QMenu::aboutToShow, this, [group] {
        const auto actions = group->actions();
        for (QAction *action : actions)
            action->setChecked(action->data().toString() == themeChoice());
    });
    keepTranslated(menu, [menu] {
        menu->setTitle(tr("&Theme"));
        const QStringList names{tr("As on this &computer"), tr("&Dark"), tr("&Light")};
        for (int index = 0; index < names.size(); ++index)
            menu->actions().at(index)->setText(names[index]);
    });
}

// It is closed at first if the screen has no room for it next to the panel at its natural size.
void PanelWindow::addJournal()
{
    addDockWidget(Qt::RightDockWidgetArea, m_journal);
    addToDocks(m_journal);
}

// Closed at first: most sessions have no faults.
void PanelWindow::addFaults()
{
    m_faults = new FaultView(m_session.faults(), m_session.device(), this);
    m_faults->hide();
    connect(m_faults, &FaultView::actionTriggered, this, &PanelWindow::perform);
    addDockWidget(Qt::RightDockWidgetArea, m_faults);
    addToDocks(m_faults);
    QAction *action = m_faults->toggleViewAction();
    action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+F")));
    m_viewMenu->addAction(action);
}

// The panel at its natural size with a dock beside or below it, if the screen has room for both.
void PanelWindow::setInitialSize()
{
    constexpr QSize Dock(70 * theme::Grid, 30 * theme::Grid);
    constexpr int MinDock = 40 * theme::Grid;
    constexpr int Frame = 4 * theme::Grid; // of the window manager
    const QSize free = screen() ? screen()->availableSize() - QSize(0, Frame) : QSize();
    QSize wanted = m_panel->naturalSize() + size() - roomForPanelAndDocks();
    if (free.width() >= wanted.width() + MinDock)
        wanted.rwidth() += Dock.width();
    else if (free.height() >= wanted.height() + Dock.height())
        wanted.rheight() += Dock.height();
    else
        m_journal->hide();
    resize(wanted.boundedTo(free));
}

}
