#include "repairpage.h"

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/widget/factorytestframe.h"
#include "mirel/api.h"
#include "pagetable.h"
#include "texts.h"
#include "touchgrid.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace LCD::RepairPages {

namespace {

constexpr int PanelModeMenu = 3;

Widget::IconType iconOf(PageLine::Mark mark)
{
    switch (mark) {
    case PageLine::Mark::Pass:
        return Widget::IconPass;
    case PageLine::Mark::NotPass:
        return Widget::IconNotPass;
    case PageLine::Mark::None:
        break;
    }
    return Widget::IconNone;
}

// As the frame's property says it.
QString nameOf(PageButton button)
{
    switch (button) {
    case PageButton::Left:
        return QStringLiteral("left");
    case PageButton::Right:
        return QStringLiteral("right");
    case PageButton::None:
        break;
    }
    return {};
}

QString orDefault(const QString &words, const char *key)
{
    return words.isEmpty() ? text(key) : words;
}

}

RepairPage::RepairPage(const PageInfo &info, QWidget *parent)
    : QWidget(parent), m_info(info), m_frame(new Widget::FactoryTestFrame(this)), m_grid(new TouchGrid(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_frame);
    connect(m_frame, &Widget::FactoryTestFrame::signalBackPrevious, this, &RepairPage::backRequested);
    connect(m_frame, &Widget::FactoryTestFrame::signalLeftBtnClicked, this, &RepairPage::onLeftButton);
    connect(m_frame, &Widget::FactoryTestFrame::signalRightBtnClicked, this, &RepairPage::onRightButton);
    connect(m_grid, &TouchGrid::touched, this, &RepairPage::onTouch);
}

RepairPage::~RepairPage()
{
    leave();
}

void RepairPage::enter()
{
    beginVisit();
    m_isServiceMissing = !hasServices();
    m_isNewState = true;
    refresh();
    QCoreApplication::instance()->installEventFilter(this);
}

// The test and the page keep the services that they find here.
void RepairPage::beginVisit()
{
    m_keyboard = mirel::api::get().service<FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
    m_test = m_info.makeTest();
    connect(m_test.get(), &PageTest::changed, this, &RepairPage::onTestChanged);
    m_test->enter();
    setPanelMode(m_info.panelMode);
}

void RepairPage::leave()
{
    if (!m_test)
        return;
    QCoreApplication::instance()->removeEventFilter(this);
    m_grid->showCells(nullptr, {});
    m_test->restore();
    m_test.reset();
    setPanelMode(PanelModeMenu);
}

// The widgets of the frame that may have the focus are the frame's own, so their keys are taken from the application.
bool RepairPage::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease
        || event->type() == QEvent::ShortcutOverride;
    const auto *key = isKey ? static_cast<QKeyEvent *>(event) : nullptr;
    if (!key || !takesKeyOf(watched, key->key()))
        return false;
    event->accept();
    if (event->type() == QEvent::KeyPress && !key->isAutoRepeat()) {
        m_test->pressKey(key->key());
        onTestChanged();
    }
    return true;
}

bool RepairPage::takesKeyOf(const QObject *watched, int qtKey) const
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    return widget && (widget == m_frame || m_frame->isAncestorOf(widget)) && m_test
        && m_test->state() == TestState::Running && m_test->takesKey(qtKey);
}

void RepairPage::onTouch(const QPointF &from, const QPointF &to)
{
    if (!m_test || m_test->state() != TestState::Running)
        return;
    m_test->touch(from, to);
    onTestChanged();
}

void RepairPage::resizeEvent(QResizeEvent *)
{
    m_grid->setGeometry(rect());
}

void RepairPage::setPanelMode(int mode) const
{
    if (m_keyboard)
        m_keyboard->setFactoryPanelMode(mode);
}

bool RepairPage::hasServices() const
{
    return std::all_of(m_info.services.begin(), m_info.services.end(),
                       [](const char *name) { return mirel::api::get().service<void>(name) != nullptr; });
}

void RepairPage::start()
{
    const bool isReady = hasServices();
    if (isReady && m_isServiceMissing)
        beginVisit();
    m_isServiceMissing = !isReady;
    if (isReady)
        m_test->start();
}

void RepairPage::onLeftButton()
{
    if (!m_test)
        return;
    if (m_test->state() == TestState::Running)
        m_test->pressLeft();
    else if (m_test->state() == TestState::AllStepsDone)
        m_test->setNotPass();
    onTestChanged();
}

void RepairPage::onRightButton()
{
    if (!m_test)
        return;
    switch (m_test->state()) {
    case TestState::Running:
        m_test->pressRight();
        break;
    case TestState::AllStepsDone:
        m_test->setPass();
        break;
    case TestState::Passed:
    case TestState::Failed:
        m_test->reTest();
        [[fallthrough]];
    case TestState::Idle:
        start();
    }
    onTestChanged();
}

void RepairPage::onTestChanged()
{
    if (!m_test)
        return;
    const TestState state = m_test->state();
    const bool isVerdict = state == TestState::Passed || state == TestState::Failed;
    if (isVerdict && state != m_shownState)
        m_test->restore();
    refresh();
    if (state == TestState::Passed && m_test->leavesWhenPassed())
        QMetaObject::invokeMethod(
            this, [this] { leaveAfterPass(); }, Qt::QueuedConnection);
}

// Later, because the test that has reported its change is deleted.
void RepairPage::leaveAfterPass()
{
    if (m_test && m_test->state() == TestState::Passed)
        Q_EMIT backRequested();
}

void RepairPage::refresh()
{
    const TestState state = m_test->state();
    m_isNewState = m_isNewState || state != m_shownState;
    m_shownState = state;
    const QString icon = m_test->titleIcon();
    m_frame->setTitle(text(m_info.title) + m_test->titleSuffix());
    m_frame->setTitleIcon(QStringLiteral("FactoryIconLabel"), icon.isEmpty() ? QLatin1String(m_info.icon) : icon);
    m_frame->setIsReponseEvent(true);
    m_frame->setStatusIconVisible(false);
    showState();
    showGrid();
    m_isNewState = false;
}

void RepairPage::showState()
{
    switch (m_shownState) {
    case TestState::Idle:
        return showIdle();
    case TestState::Running:
        return showRunning();
    case TestState::AllStepsDone:
        return showJudging();
    case TestState::Passed:
        return showVerdict(true);
    case TestState::Failed:
        return showVerdict(false);
    }
}

// The grid covers the frame, so it shows the lines itself.
void RepairPage::showGrid()
{
    const TouchCells *cells = m_shownState == TestState::Running ? m_test->cells() : nullptr;
    QStringList lines;
    if (cells) {
        for (const PageLine &line : m_test->lines())
            lines << line.text;
    }
    m_grid->showCells(cells, lines);
}

QVector<PageLine> RepairPage::steps() const
{
    QVector<PageLine> lines;
    for (const char *key : m_info.steps)
        lines << PageLine{text(key)};
    return lines;
}

void RepairPage::showLines(const QVector<PageLine> &lines)
{
    const QString heading = m_test->heading();
    m_frame->setStepTitle(heading, QColor(Qt::white));
    m_frame->setStepTitleVisible(!heading.isEmpty());
    m_frame->clearAllSteps();
    for (int index = 0; index < lines.size(); ++index) {
        m_frame->addTestStep(lines.at(index).text, lines.at(index).color, false);
        m_frame->setStepIcon(index, iconOf(lines.at(index).mark));
    }
}

void RepairPage::showButtons(const QString &left, const QString &right)
{
    m_frame->setLeftBtnText(left);
    m_frame->setRightBtnText(right);
    m_frame->setProperty("dangerousButton", nameOf(m_test->dangerousButton()));
    m_frame->setLeftBtnVisible(!left.isEmpty());
    m_frame->setRighttBtnVisible(!right.isEmpty());
    m_frame->setKeyEventsEnabled(m_shownState != TestState::Running || !m_test->takesKeys());
    // Within a state the focus stays where the operator has moved it. A button that is hidden has it when it shows.
    if (m_isNewState)
        m_frame->setControlFocus(Widget::FocusRightButton);
}

void RepairPage::showIdle()
{
    QVector<PageLine> lines = steps();
    if (m_isServiceMissing)
        lines << PageLine{text("RepairServiceMissing"), notPassColor()};
    showLines(lines);
    showButtons({}, orDefault(m_test->startCaption(), "FCAgeModeStartTest"));
}

void RepairPage::showRunning()
{
    const QVector<PageLine> lines = m_test->lines();
    showLines(lines.isEmpty() ? steps() : lines);
    showButtons(m_test->leftCaption(), m_test->rightCaption());
}

void RepairPage::showJudging()
{
    showLines(QVector<PageLine>{{text("FCPleaseJudgePass")}} + m_test->remarks());
    showButtons(text("FCNoPass"), text("FCPass"));
}

void RepairPage::showVerdict(bool passed)
{
    const QString testVerdict =
        passed ? text("FCTestPass") : QStringLiteral("%1 (%2)").arg(text("FCNoPass")).arg(m_test->failCount());
    const QString verdict = m_test->verdictText();
    const PageLine line{verdict.isEmpty() ? testVerdict : verdict, passed ? passColor() : notPassColor(),
                        passed ? PageLine::Mark::Pass : PageLine::Mark::NotPass};
    showLines(QVector<PageLine>{line} + m_test->remarks());
    showButtons({}, orDefault(m_test->againCaption(), "FCReTest"));
}

}
