#include "calls.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

namespace {

QString tbarStep(const QString &caption)
{
    return QStringLiteral("phase title=T-Bar; icon=fc_tbar_slider; stepTitle=[TestStep]; "
                          "steps=1.[Push T-Bar to Top] | 2.[Push T-Bar to Bottom] | 3.[Push T-Bar to Top] | "
                          "4.[Push T-Bar to Bottom] | 5.[Push T-Bar to Top] | 6.[Push T-Bar to Bottom]; "
                          "rightText=%1; noStepTitle; keepSteps; mode=12")
        .arg(caption);
}

/// A host that returns no keyboard service to the driver, which looks it up after its single tests.
class HostThatLosesTheKeyboard final : public mirel::IHost
{
public:
    explicit HostThatLosesTheKeyboard(RecordingHost &behind) : m_behind(behind) { mirel::api::get().setHost(this); }
    ~HostThatLosesTheKeyboard() { mirel::api::get().setHost(&m_behind); }
    void *getComponent(const char *name) override
    {
        const bool keyboard = std::string(name) == "lcdKeyboardEvent";
        return keyboard && ++m_asked == 6 ? nullptr : m_behind.getComponent(name);
    }

private:
    RecordingHost &m_behind;
    int m_asked = 0;
};

}

/// Calls a function once, when the T-Bar test begins.
class InterruptingFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    void setFactoryTestType(int type) override
    {
        constexpr int TBarTest = 6;
        if (const auto action = type == TBarTest ? std::exchange(atTBar, nullptr) : nullptr)
            action();
    }
    void setMachineTestKind(int) override {}

    std::function<void()> atTBar;
};

/// The T-Bar phase: its screen, its step lines and their marks.
class CompleteMachineTBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTBarPressByPress()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(4);
        const QString next = tbarStep(QStringLiteral("[FCNextStep]"));
        const QString complete = tbarStep(QStringLiteral("[FCTestComplete]"));
        const QList<QPair<QStringList, int>> presses = {
            {{next}, 2},
            {{next, QStringLiteral("icon 0")}, 1},
            {{next, QStringLiteral("icon 1")}, 0},
            {{next, QStringLiteral("icon 2")}, 1},
            {{next, QStringLiteral("icon 3")}, 0},
            {{complete, QStringLiteral("icon 4")}, 1},
            {{complete, QStringLiteral("icon 5")}, 4},
        };
        for (const auto &[told, command] : presses) {
            fixture.right();
            QCOMPARE(fixture.take(),
                     (calls({"keyboard.getTBarType()"}) + told
                      << QStringLiteral("tbar.setBarCalibration(0, %1, 0)").arg(command)));
        }
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 5);
        QCOMPARE(fixture.told().filter(QStringLiteral("log ")), QStringList());
    }

    void aDriverWithoutAKeyboardServiceTakesTheBarForAFader()
    {
        MachineTestFixture fixture;
        HostThatLosesTheKeyboard host(fixture.host);
        fixture.make();
        fixture.startAndPassTo(3);
        fixture.pressKeys();
        QVERIFY(!fixture.take().contains(QStringLiteral("keyboard.setAllButtonBrightness(0)")));
        fixture.right();
        const QStringList made = fixture.take();
        QCOMPARE(made.filter(QStringLiteral("getTBarType")), QStringList());
        QVERIFY(made.last().startsWith(QStringLiteral("phase title=T-Bar; icon=fc_tbar_fader;")));
    }

    // The new run is in its first phase when the T-Bar test announces that it is ready for its first step.
    void aRunThatIsStartedWhileTheTBarTestBeginsGetsNoStepLines()
    {
        InterruptingFactoryBiz service; // lives longer than the test that uses it
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        fixture.startAndPassTo(3);
        fixture.pressKeys();
        fixture.take();
        service.atTBar = [&] { fixture.biz->start(); };
        fixture.right();
        QVERIFY(!service.atTBar);
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        const QStringList told = fixture.told();
        QCOMPARE(told.filter(QStringLiteral("phase title=[FCScreenLight] 10%")).size(), 1);
        QCOMPARE(told.filter(QStringLiteral("keepSteps")), QStringList());
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineTBarTest)
#include "tst_completemachinetbar.moc"
