#include "agetestwidget.h"
#include "calls.h"
#include "completemachinetestwidget.h"
#include "recordingframe.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <memory>

using LCD::FactoryModeImpl::AgeTestWidget;
using LCD::FactoryModeImpl::CompleteMachineTestWidget;

namespace {

/// While it exists, the frames of this process record their calls in its list.
class FrameCalls
{
public:
    explicit FrameCalls(CallLog &calls) { recordFrameCalls(&calls); }
    ~FrameCalls() { recordFrameCalls(nullptr); }
    FrameCalls(const FrameCalls &) = delete;
    FrameCalls &operator=(const FrameCalls &) = delete;
};

/// Returns the object of @p page that receives the clicks.
QObject *implOf(const QWidget &page)
{
    for (QObject *child : page.children()) {
        if (QByteArray(child->metaObject()->className()).endsWith("::Impl"))
            return child;
    }
    return nullptr;
}

QList<QByteArray> methodsOf(const QMetaObject &meta)
{
    QList<QByteArray> methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods << (method.methodType() == QMetaMethod::Signal ? "signal " : "slot ") + method.methodSignature();
    }
    return methods;
}

/// Records which objects receive timer events.
class TimerOwners : public QObject
{
public:
    TimerOwners() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Timer && qobject_cast<QTimer *>(watched) && watched->parent())
            owner = watched->parent();
        return false;
    }

    QObject *owner = nullptr;
};

template <class Page>
void aSlotDeletesThePage()
{
    RecordingHost host;
    const FrameCalls frames(host.calls);
    auto *page = new Page(nullptr);
    page->enterWindow();
    QObject::connect(page, &Page::signalBackToFactoryMenu, qApp, [&] {
        host.calls.add(QStringLiteral("deleted"));
        delete page;
    });
    host.calls.clear();
    Q_EMIT frameOf(*page)->signalBackPrevious();
    const QStringList made = host.calls.take();
    QCOMPARE(made.first(), QStringLiteral("deleted"));
    QCOMPARE(made.last(), QStringLiteral("keyboard.setFactoryPanelMode(3)"));
}

template <class Page>
void theClicksHaveTheirSlots()
{
    RecordingHost host;
    const Page page(nullptr);
    const QObject *impl = implOf(page);
    QVERIFY(impl);
    QCOMPARE(methodsOf(*impl->metaObject()),
             (QList<QByteArray>{"slot slotLeftBtnClicked()", "slot slotRightBtnClicked()"}));
}

/// Returns the methods of the object whose timer runs during the test of the page.
template <class Page>
QList<QByteArray> methodsBehindTheTimer()
{
    RecordingHost host;
    Page page(nullptr);
    const TimerOwners timers;
    page.enterWindow();
    Q_EMIT frameOf(page)->signalRightBtnClicked(false);
    VirtualTime::advance(2000);
    return timers.owner ? methodsOf(*timers.owner->metaObject()) : QList<QByteArray>();
}

/// Opens a page, runs its test for @p seconds and leaves the page. Returns the last calls. The page must have made the
/// call @p landmark before it is left.
template <class Page>
QStringList runWithoutHost(int seconds, const char *landmark)
{
    CallLog calls;
    const FrameCalls frames(calls);
    const LogCapture log;
    Page page(nullptr);
    QObject::connect(&page, &Page::signalBackToFactoryMenu, &page, [&] { calls.add(QStringLiteral("left")); });
    page.setContentFontSize(30);
    page.enterWindow();
    Q_EMIT frameOf(page)->signalRightBtnClicked(false);
    VirtualTime::advance(seconds * 1000);
    if (!calls.all().contains(QString::fromUtf8(landmark)))
        return {QStringLiteral("not found: ") + QString::fromUtf8(landmark)};
    Q_EMIT frameOf(page)->signalLeftBtnClicked(false);
    Q_EMIT frameOf(page)->signalRightBtnClicked(false);
    calls.clear();
    Q_EMIT frameOf(page)->signalBackPrevious();
    return calls.take();
}

}

/// Behavior that both test pages share.
class TestPagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSlotMayDeleteTheAgingPageWhileItAsksForTheMenu() { aSlotDeletesThePage<AgeTestWidget>(); }
    void aSlotMayDeleteTheMachinePageWhileItAsksForTheMenu() { aSlotDeletesThePage<CompleteMachineTestWidget>(); }

    void theAgingPageHasItsSlots() { theClicksHaveTheirSlots<AgeTestWidget>(); }
    void theMachinePageHasItsSlots() { theClicksHaveTheirSlots<CompleteMachineTestWidget>(); }

    void theAgingPageRunsWithoutAnyHost()
    {
        QCOMPARE(runWithoutHost<AgeTestWidget>(80, "frame.addTestStep([FCAging][FCNet], #ffffff, false)"),
                 calls({"left"}));
    }

    void theMachinePageRunsWithoutAnyHost()
    {
        QCOMPARE(
            runWithoutHost<CompleteMachineTestWidget>(20, "frame.addTestStep([FCPleaseJudgePass], #ffffff, false)"),
            calls({"left"}));
    }

    void theAgingTestHasItsSignalAndSlots()
    {
        QCOMPARE(methodsBehindTheTimer<AgeTestWidget>(),
                 (QList<QByteArray>{"signal signalNextStep()", "slot onBadPixelTimer()", "slot onScreenLightTimer()",
                                    "slot onBtnLightTimer()", "slot slotNextStep()"}));
    }

    void theMachineTestHasItsSlot()
    {
        QCOMPARE(methodsBehindTheTimer<CompleteMachineTestWidget>(), (QList<QByteArray>{"slot onTimer()"}));
    }
};

VIRTUAL_TIME_TEST_MAIN(TestPagesTest)
#include "tst_testpages.moc"
