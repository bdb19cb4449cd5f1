#include "agebench.h"
#include "keytranslation.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <functional>
#include <memory>

using LCD::FactoryModeImpl::AgeTestBiz;

Q_DECLARE_METATYPE(std::function<void(AgeTestBiz &)>)

namespace {

/// Returns all lines that name a step, in order.
QStringList stepLines(const QStringList &calls)
{
    return calls.filter(QRegularExpression(QStringLiteral("^white ")));
}

}

/// The text lines of the aging test.
class AgeTestBizTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        setTestLanguage(QString());
        setTestEnding(QString());
    }

    void theFirstRoundNamesTheLevelFromTheStart()
    {
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(19999);
        QStringList expected;
        for (const int level : {10, 30, 50, 70, 100, 10, 30, 50, 70, 100})
            expected << QStringLiteral("white [FCAging][FCScreenLight] %1%").arg(level);
        QCOMPARE(stepLines(bench.take()), expected);
    }

    void laterRoundsNameNoLevelUntilTheFirstTick()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({});
        bench.take();
        bench.usbChanged({});
        VirtualTime::advance(2000);
        QCOMPARE(stepLines(bench.take()),
                 (QStringList{QStringLiteral("white [FCAging][FCScreenLight]"),
                              QStringLiteral("white [FCAging][FCScreenLight] 30%")}));
    }

    void afterAStopTheFirstLineNamesTenPercentAgain()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runBrightness();
        bench.biz->stop();
        bench.take();
        bench.biz->start();
        QCOMPARE(stepLines(bench.take()), QStringList{QStringLiteral("white [FCAging][FCScreenLight] 10%")});
    }

    void theEndOfTheWalkIsNeverShownAsALevel()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        const QStringList written = bench.take();
        QVERIFY(written.filter(QStringLiteral("101")).isEmpty());
        QCOMPARE(stepLines(written).last(), QStringLiteral("white [FCAging][FCNet]"));
    }

    void noTickOfTheBadPixelStepWrites()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runBrightness();
        bench.take();
        VirtualTime::advance(35999);
        const QStringList written = bench.take();
        QCOMPARE(written.size(), 11);
        QCOMPARE(written.filter(QStringLiteral("keyboard.setLcdTestPattern")).size(), 11);
    }

    void failuresStandInTheRedLine_data()
    {
        QTest::addColumn<bool>("netUp");
        QTest::addColumn<bool>("usbUp");
        QTest::addColumn<QString>("red");
        QTest::newRow("none") << true << true << QStringLiteral("red  ");
        QTest::newRow("net") << false << true << QStringLiteral("red  [FCAgeNetNoPass]");
        QTest::newRow("usb") << true << false << QStringLiteral("red  [FCAgeUSBNoPass]");
        QTest::newRow("both") << false << false << QStringLiteral("red  [FCAgeNetNoPass]、[FCAgeUSBNoPass]");
    }

    void failuresStandInTheRedLine()
    {
        QFETCH(const bool, netUp);
        QFETCH(const bool, usbUp);
        QFETCH(const QString, red);
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, netUp}});
        bench.usbChanged({{3, 26, usbUp ? 1 : 0}});
        bench.runBrightness();
        const QStringList written = bench.take();
        QCOMPARE(written.last(), red);
        QVERIFY(written.contains(QStringLiteral("white [FCAging][FCScreenBadPixel]")));
    }

    void recountForgetsTheFailuresAndWritesNoRedLine()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.usbChanged({});
        bench.take();
        bench.biz->recount();
        QCOMPARE(bench.take(),
                 (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCScreenLight] 10%")}));
        VirtualTime::advance(2000);
        QCOMPARE(bench.take().last(), QStringLiteral("red  "));
    }

    void recountAtEachStepLeavesTheStepAlone_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("next");
        const QString screen = QStringLiteral("keyboard.setScreenBrightness(0, 50)");
        QTest::newRow("brightness") << 3000 << QStringLiteral("white [FCAging][FCScreenLight] 30%") << screen;
        QTest::newRow("bad pixel") << 24000 << QStringLiteral("white [FCAging][FCScreenBadPixel]")
                                   << QStringLiteral("keyboard.setLcdTestPattern(1, 3)");
        QTest::newRow("button light") << 63000 << QStringLiteral("white [FCAging][FCBtnLight] 70%")
                                      << QStringLiteral("keyboard.setAllButtonBrightness(100)");
    }

    void recountAtEachStepLeavesTheStepAlone()
    {
        QFETCH(const int, after);
        QFETCH(const QString, line);
        QFETCH(const QString, next);
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(after);
        bench.take();
        bench.biz->recount();
        QCOMPARE(bench.take(), (QStringList{QStringLiteral("clear"), line}));
        VirtualTime::advance(3000);
        QCOMPARE(bench.take().first(), next);
    }

    void recountAtAPortStepLeavesItWaiting()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        bench.biz->recount();
        QCOMPARE(bench.take(), (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCNet]")}));
        bench.netChanged({});
        QVERIFY(bench.take().contains(QStringLiteral("white [FCAging][FCUSB]")));
    }

    void recountAtTheUsbStepLeavesItWaitingAndForgetsTheNetFailure()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.take();
        bench.biz->recount();
        QCOMPARE(bench.take(), (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCUSB]")}));
        bench.usbChanged({{1}});
        QCOMPARE(bench.take().mid(0, 3), lines(QStringLiteral("[FCScreenLight]")));
    }

    void aNewLanguageShowsAtTheNextUpdate()
    {
        AgeBench bench;
        bench.biz->start();
        bench.take();
        setTestLanguage(QStringLiteral("de"));
        QCOMPARE(bench.take(), QStringList());
        VirtualTime::advance(2000);
        QCOMPARE(stepLines(bench.take()), QStringList{QStringLiteral("white [de:FCAging][de:FCScreenLight] 30%")});
    }

    void aTranslationThatEndsInTheSeparatorKeepsIt()
    {
        AgeBench bench;
        setTestEnding(QStringLiteral("、"));
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        bench.netChanged({{0, false}});
        QVERIFY(bench.take().contains(QStringLiteral("red  [FCAgeNetNoPass]、")));
    }

    void theListenerForTheTextMayReplaceItself()
    {
        AgeBench bench;
        const auto own = std::make_shared<int>(1);
        QStringList first;
        QStringList second;
        bench.biz->registerSetAgeTextInfoCallBack([&, own](const QString &, const QColor &) {
            bench.biz->registerSetAgeTextInfoCallBack([&](const QString &text, const QColor &) { second << text; });
            first << QString::number(*own);
        });
        bench.biz->start();
        QCOMPARE(first, QStringList{QStringLiteral("1")});
        QCOMPARE(second, (QStringList{QStringLiteral("[FCAging][FCScreenLight] 10%"), QStringLiteral(" ")}));
    }

    void theListenerForTheButtonLightMayReplaceItself()
    {
        AgeBench bench;
        const auto own = std::make_shared<int>(1);
        bench.biz->registerOnButtonLightFinishedCallback([&, own] {
            bench.biz->registerOnButtonLightFinishedCallback({});
            bench.host.calls.add(QStringLiteral("own %1").arg(*own));
        });
        bench.biz->start();
        bench.runToNetStep();
        QCOMPARE(bench.take().filter(QRegularExpression(QStringLiteral("^(own|finished)"))),
                 QStringList{QStringLiteral("own 1")});
    }

    void theListenersKeepTheirState()
    {
        AgeBench bench;
        QList<int> texts;
        QList<int> ends;
        bench.biz->registerSetAgeTextInfoCallBack(
            [&texts, n = 0](const QString &, const QColor &) mutable { texts << ++n; });
        bench.biz->registerOnButtonLightFinishedCallback([&ends, n = 0]() mutable { ends << ++n; });
        bench.biz->start();
        QCOMPARE(texts, (QList<int>{1, 2, 3}));
        for (int round = 1; round <= 2; ++round) {
            bench.runToNetStep();
            QCOMPARE(ends.size(), round);
            QCOMPARE(ends.last(), round);
            bench.netChanged({});
            bench.usbChanged({});
        }
    }

    void withoutAListenerForTheTextNothingCanStart_data()
    {
        QTest::addColumn<std::function<void(AgeTestBiz &)>>("operation");
        QTest::newRow("start") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.start(); });
        QTest::newRow("stop") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.stop(); });
        QTest::newRow("recount") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.recount(); });
    }

    void withoutAListenerForTheTextNothingCanStart()
    {
        QFETCH(const std::function<void(AgeTestBiz &)>, operation);
        AgeTestBiz biz;
        QVERIFY_EXCEPTION_THROWN(operation(biz), std::bad_function_call);
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestBizTextTest)
#include "tst_agetestbiztext.moc"
