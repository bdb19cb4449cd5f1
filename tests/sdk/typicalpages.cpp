#include "typicalpages.h"

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

using namespace LCD::Widget;

namespace {

const QColor PassGreen(18, 154, 55);
const QColor FailRed(255, 72, 60);

enum Buttons {
    NoButton,
    RightButton,
    LeftButton,
    BothButtons,
};

void showButtons(FactoryTestFrame &frame, Buttons buttons, const char *left, const char *right)
{
    frame.setLeftBtnText(word(left));
    frame.setRightBtnText(word(right));
    frame.setLeftBtnVisible(buttons == LeftButton || buttons == BothButtons);
    frame.setRighttBtnVisible(buttons == RightButton || buttons == BothButtons);
    frame.setControlFocus(buttons == LeftButton ? FocusLeftButton : FocusRightButton);
}

void showHead(FactoryTestFrame &frame, const QString &title, const char *icon, const char *heading)
{
    frame.setContentFontSize(30);
    frame.setTitle(title);
    frame.setTitleIcon(QStringLiteral("FactoryIconLabel"), QString::fromLatin1(icon));
    frame.setStepTitle(heading ? word(heading) : QString(), Qt::white);
    frame.clearAllSteps();
}

void showSteps(FactoryTestFrame &frame, const std::vector<const char *> &keys, const QColor &color = Qt::white)
{
    for (const char *key : keys)
        frame.addTestStep(word(key), color, false);
}

void showLog(FactoryTestFrame &frame)
{
    for (const char *line : {"Screen brightness done", "Screen bad pixel pass", "Button light done",
                             "Button function pass", "T-bar pass", "Net port pass", "USB port pass",
                             "Type-C USB communication pass", "Type-C power port pass", "Net port 1 POE power pass"})
        frame.log(QString::fromLatin1(line), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
}

void agingPrepared(FactoryTestFrame &frame)
{
    showHead(frame, word("FCAgeMode"), "AgingMode", nullptr);
    frame.addTestSteps({word("FCAgeModeTestPreparation"), word("FCAgeModeStartTips")});
    showButtons(frame, RightButton, "FCAgeModeRecount", "FCAgeModeStartTest");
}

void agingFailing(FactoryTestFrame &frame)
{
    showHead(frame, word("FCAgeMode"), "AgingMode", nullptr);
    frame.addTestStep(word("FCAging") + word("FCScreenLight") + QStringLiteral(" 100%"), Qt::white, false);
    frame.addTestStep(QStringLiteral(" %1、%2").arg(word("FCAgeNetNoPass"), word("FCAgeUSBNoPass")), Qt::red, false);
    showButtons(frame, BothButtons, "FCAgeModeRecount", "FCAgeModeStopTest");
}

void agingFourLines(FactoryTestFrame &frame)
{
    agingFailing(frame);
    showSteps(frame, {"FCAgeModeTestPreparation", "FCAgeModeStartTips"});
}

void levels(FactoryTestFrame &frame)
{
    showHead(frame, word("FCScreenLight") + QStringLiteral(" 100%"), "ScreenLight", "TestStep");
    showSteps(frame, {"FCScreenBrightnessStep"});
    showButtons(frame, NoButton, "FCNoPass", "FCPass");
}

void patterns(FactoryTestFrame &frame)
{
    showHead(frame, word("FCScreenBadPixel"), "ScreenBadPixel", "TestStep");
    showSteps(frame, {"FCObserveScreenShowStep1", "FCObserveScreenShowStep2"});
    showButtons(frame, RightButton, "FCNoPass", "FCNextStep");
}

void buttonWalk(FactoryTestFrame &frame)
{
    showHead(frame, word("ButtonFunction"), "ButtonFunction", "TestStep");
    showSteps(frame, {"FCClickGreenFlashingBtn"});
    showButtons(frame, LeftButton, "FCNoPass", "FCPass");
    frame.setNoPassButtonCanClicked(false);
    frame.setKeyEventsEnabled(false);
}

void tbar(FactoryTestFrame &frame)
{
    showHead(frame, QStringLiteral("T-Bar"), "fc_tbar_slider", "TestStep");
    frame.setStepTitleVisible(false);
    for (int i = 0; i < 6; ++i) {
        const char *key = i % 2 ? "Push T-Bar to Bottom" : "Push T-Bar to Top";
        frame.addTestStep(QStringLiteral("%1.%2").arg(QString::number(i + 1), word(key)), Qt::white, false);
    }
    for (int i = 0; i < 3; ++i)
        frame.setStepIcon(i, IconPass);
    frame.setStepIcon(3, IconNotPass);
    showButtons(frame, RightButton, "FCNoPass", "FCNextStep");
    showLog(frame);
}

void netResult(FactoryTestFrame &frame)
{
    showHead(frame, word("FCNet"), "NetTest", "FCTestComplete");
    frame.setStatusIcon(QStringLiteral("NetPass"));
    frame.setStatusIconVisible(true);
    showButtons(frame, BothButtons, "FCNoPass", "FCPass");
    showLog(frame);
}

void usbResult(FactoryTestFrame &frame)
{
    showHead(frame, word("USBA"), "UsbTest", "TestStep");
    showSteps(frame, {"FCUSB30TestStep"});
    frame.setStatusIcon(QStringLiteral("UsbNoPass"));
    frame.setStatusIconVisible(true);
    showButtons(frame, BothButtons, "FCNoPass", "FCPass");
}

void instructions(FactoryTestFrame &frame, const char *title, const char *icon, const char *first, const char *second)
{
    showHead(frame, word(title), icon, "TestStep");
    showSteps(frame, {first, second, "FCPleaseJudgePass"});
    showButtons(frame, BothButtons, "FCNoPass", "FCPass");
    showLog(frame);
}

void verdict(FactoryTestFrame &frame, const char *title, const char *line, const QColor &color)
{
    showHead(frame, word(title), "MachineMode", "FCTestComplete");
    showSteps(frame, {line}, color);
    showButtons(frame, LeftButton, "FCReTest", "FCPass");
    showLog(frame);
}

void failedWithReasons(FactoryTestFrame &frame)
{
    showHead(frame, word("RepairTBar"), "fc_tbar_slider", "FCTestComplete");
    frame.addTestStep(word("FCNoPass") + QStringLiteral(" (1)"), FailRed, false);
    frame.setStepIcon(0, IconNotPass);
    frame.addTestStep(word("RepairTBarNotTop"), FailRed, false);
    showButtons(frame, RightButton, "FCNoPass", "FCReTest");
}

}

QString word(const char *key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), QString::fromLatin1(key));
}

const std::vector<TypicalPage> &typicalPages()
{
    static const std::vector<TypicalPage> pages = {
        {"aging-prepared", agingPrepared},
        {"aging-failing", agingFailing},
        {"aging-four-lines", agingFourLines},
        {"levels", levels},
        {"patterns", patterns},
        {"button-walk", buttonWalk},
        {"tbar", tbar},
        {"net-result", netResult},
        {"usb-result", usbResult},
        {"typec-data",
         [](FactoryTestFrame &frame) {
             instructions(frame, "TypecCommuication", "TypecTest", "FCTypecCommStep1", "FCTypecCommStep2");
         }},
        {"typec-power",
         [](FactoryTestFrame &frame) {
             instructions(frame, "TypecPower", "TypecTest", "FCTypecPowerStep1", "FCTypecPowerStep2");
         }},
        {"net-poe",
         [](FactoryTestFrame &frame) {
             instructions(frame, "NET1POE", "NetTest", "FCNetPort1PowerStep1", "FCNetPort1PowerStep2");
         }},
        {"passed", [](FactoryTestFrame &frame) { verdict(frame, "FCTestComplete", "FCTestPass", PassGreen); }},
        {"failed-with-reasons", failedWithReasons},
        {"failed", [](FactoryTestFrame &frame) { verdict(frame, "MachineMode", "FCNoPass", FailRed); }},
    };
    return pages;
}
