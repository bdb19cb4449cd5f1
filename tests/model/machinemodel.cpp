#include "machinemodel.h"

#include <algorithm>

MachineModel::MachineModel(ModelHost &host)
    : keys{host, [this](int state) { onKeyState(state); },
           [this](int key) {
               if (phase == 3)
                   show(key == 27 ? QStringLiteral("noPassBlocked") : QString());
           }},
      tbar{host, [this](int state) { onState(state); }, [this](bool last) { onLastSteps(last); }},
      net{host, LinkModel::Net, heard(), [this](const auto &links) { onNetLinks(links); }},
      usb{host, LinkModel::Usb, heard(), [this](const auto &links) { onUsbLinks(links); }},
      m_host(host), m_screens{host, LevelModel::Screens, heard()}, m_patterns{host, heard()}, m_lights{host,
                                                                                                       LevelModel::Keys,
                                                                                                       heard()}
{
}

// The driver hears these tests only once the first phase has started.
Announce MachineModel::heard()
{
    return [this](int state) {
        if (m_hears)
            onState(state);
    };
}

void MachineModel::start()
{
    phase = 0;
    result = 0;
    m_tickDue.reset();
    startPhase();
    m_hears = true;
    net.takesReports = true;
    usb.takesReports = true;
}

void MachineModel::destroy()
{
    m_host.call(m_host.hasKeyboard, QStringLiteral("keyboard.registerKeyCallback(empty)"));
}

void MachineModel::advance(int milliseconds)
{
    const qint64 until = m_now + milliseconds;
    while (m_tickDue && *m_tickDue <= until) {
        m_now = *m_tickDue;
        *m_tickDue += 2000;
        tick();
    }
    m_now = until;
}

void MachineModel::tick()
{
    if (phase != 0 && phase != 2)
        return;
    LevelModel &test = phase == 0 ? m_screens : m_lights;
    test.nextStep();
    if (test.state <= 100)
        showLevel(test);
}

void MachineModel::showLevel(const LevelModel &test)
{
    const QString level = test.state >= 10 && test.state <= 100 ? QStringLiteral(" %1%").arg(test.state) : QString();
    if (test.kind == LevelModel::Screens)
        show(QStringLiteral("title={FCScreenLight}%1; icon=ScreenLight; stepTitle={TestStep}; "
                            "steps={FCScreenBrightnessStep}; noRight; mode=15")
                 .arg(level));
    else
        show(
            QStringLiteral("title={FCBtnLight}%1; icon=ButtonLight; stepTitle={TestStep}; steps={FCBtnBrightnessStep}; "
                           "noRight; mode=16")
                .arg(level));
}

void MachineModel::showVerdict(const char *title, const char *icon)
{
    show(QStringLiteral("title={%1}; icon=%2; stepTitle={FCTestComplete}; steps={FCPleaseJudgePass}; "
                        "leftText={FCNoPass}; rightText={FCPass}; left; mode=9")
             .arg(QLatin1String(title), QLatin1String(icon)));
}

void MachineModel::showTBar(const char *caption, bool keepSteps)
{
    if (m_host.hasKeyboard)
        m_host.lines << QStringLiteral("keyboard.getTBarType()");
    const bool slider = m_host.hasKeyboard && m_host.tbarType == 1;
    show(QStringLiteral("title=T-Bar; icon=%1; stepTitle={TestStep}; "
                        "steps=1.{Push T-Bar to Top} | 2.{Push T-Bar to Bottom} | 3.{Push T-Bar to Top} | "
                        "4.{Push T-Bar to Bottom} | 5.{Push T-Bar to Top} | 6.{Push T-Bar to Bottom}; "
                        "rightText={%2}; noStepTitle; %3mode=12")
             .arg(slider ? QStringLiteral("fc_tbar_slider") : QStringLiteral("fc_tbar_fader"), QLatin1String(caption),
                  keepSteps ? QStringLiteral("keepSteps; ") : QString()));
}

void MachineModel::showNetButtons(const char *caption)
{
    show(QStringLiteral("title={FCNet}; icon=NetTest; stepTitle={TestStep}; steps={FCNetConnectPort1Port2}; "
                        "leftText={FCNoPass}; rightText={%1}; left; mode=9")
             .arg(QLatin1String(caption)));
}

void MachineModel::startPhase()
{
    // The screens of the phases that show nothing of their single test.
    static const QMap<int, const char *> screens = {
        {1,
         "title={FCScreenBadPixel}; icon=ScreenBadPixel; stepTitle={TestStep}; "
         "steps={FCObserveScreenShowStep1} | {FCObserveScreenShowStep2}; rightText={FCNextStep}; mode=14"},
        {3,
         "title={ButtonFunction}; icon=ButtonFunction; stepTitle={TestStep}; steps={FCClickGreenFlashingBtn}; "
         "leftText={FCNoPass}; left; noRight; focusLeft=1; noKeyEvents; mode=10"},
        {5,
         "title={FCNet}; icon=NetTest; stepTitle={TestStep}; steps={FCNetConnectPort1Port2}; "
         "rightText={FCAgeModeStartTest}; status=NetNormal; mode=13"},
        {6,
         "title={USBA}; icon=UsbTest; stepTitle={TestStep}; steps={FCUSB30TestStep}; leftText={FCNoPass}; "
         "rightText={FCPass}; left; status=UsbNoPass; mode=9"},
        {7,
         "title={TypecCommuication}; icon=TypecTest; stepTitle={TestStep}; "
         "steps={FCTypecCommStep1} | {FCTypecCommStep2} | {FCPleaseJudgePass}; leftText={FCNoPass}; "
         "rightText={FCPass}; left; mode=9"},
        {9,
         "title={TypecPower}; icon=TypecTest; stepTitle={TestStep}; "
         "steps={FCTypecPowerStep1} | {FCTypecPowerStep2} | {FCPleaseJudgePass}; leftText={FCNoPass}; "
         "rightText={FCPass}; left; mode=9"},
        {10,
         "title={NET1POE}; icon=NetTest; stepTitle={TestStep}; "
         "steps={FCNetPort1PowerStep1} | {FCNetPort1PowerStep2} | {FCPleaseJudgePass}; leftText={FCNoPass}; "
         "rightText={FCPass}; left; mode=9"}};
    switch (phase) {
    case 0:
        return startLevels(m_screens);
    case 2:
        return startLevels(m_lights);
    case 3:
        show(QLatin1String(screens[3]));
        return startKeys();
    case 4:
        tbar.enter();
        tbar.startTest();
        return showTBar("FCAgeModeStartTest", false);
    case 8:
        return nextPhase();
    case 1:
        m_patterns.enter();
        m_patterns.startTest();
        break;
    case 5:
        net.enter();
        break;
    case 6:
        usb.enter();
        usb.startTest();
        break;
    default:
        break;
    }
    show(QLatin1String(screens[phase]));
}

void MachineModel::startLevels(LevelModel &test)
{
    test.enter();
    test.startTest();
    m_tickDue = m_now + 2000;
    showLevel(test);
}

void MachineModel::startKeys()
{
    keys.enter();
    keys.startTest();
}

void MachineModel::nextPhase()
{
    if (++phase <= 10)
        return startPhase();
    phase = 11;
    result = 1;
    show(QStringLiteral("title={FCTestComplete}; stepTitle={FCTestComplete}; steps={FCTestPass}; colors=#129a37; "
                        "leftText={FCReTest}; left; noRight; focusLeft=1; mode=8"));
}

void MachineModel::fail()
{
    m_tickDue.reset();
    result = 2;
    log("Test failed");
    show(QStringLiteral("title={MachineMode}; icon=MachineMode; stepTitle={FCTestComplete}; steps={FCNoPass}; "
                        "colors=#ff483c; leftText={FCReTest}; left; noRight; focusLeft=1; mode=8"));
}

void MachineModel::onState(int state)
{
    struct Passing
    {
        int phase;
        const char *line;
        bool advances;
    };
    static const Passing passing[] = {{1, "Screen bad pixel pass", true},
                                      {4, "T-bar pass", false},
                                      {5, "Net port pass", true},
                                      {6, "USB port pass", true}};
    struct Verdict
    {
        int phase;
        const char *line, *title, *icon;
    };
    static const Verdict verdicts[] = {{0, "Screen brightness done", "FCScreenLight", "ScreenLight"},
                                       {1, nullptr, "FCScreenBadPixel", "ScreenBadPixel"},
                                       {2, "Button light done", "FCBtnLight", "ButtonLight"}};
    if (state == 102)
        return fail();
    for (const Verdict &verdict : verdicts) {
        if (state != 101 || verdict.phase != phase)
            continue;
        m_tickDue.reset();
        if (verdict.line)
            log(verdict.line);
        return showVerdict(verdict.title, verdict.icon);
    }
    for (const Passing &row : passing) {
        if (state != 103 || row.phase != phase)
            continue;
        log(row.line);
        if (row.advances)
            nextPhase();
        return;
    }
}

void MachineModel::onKeyState(int state)
{
    if (phase != 3 || state < 101)
        return;
    m_host.call(m_host.hasKeyboard, QStringLiteral("keyboard.setAllButtonBrightness(0)"));
    if (state == 102)
        return fail();
    m_keysJudged = true;
    showVerdict("ButtonFunction", "ButtonFunction");
}

void MachineModel::onLastSteps(bool last)
{
    if (phase != 4)
        return;
    showTBar(last ? "FCTestComplete" : "FCNextStep", true);
    if (tbar.step >= 2)
        m_host.lines << QStringLiteral("icon %1").arg(tbar.step - 2);
}

void MachineModel::onNetLinks(const std::vector<bool> &links)
{
    if (!m_hears || phase != 5 || links.empty())
        return;
    const bool pass = links.size() > 1 && links[0] && links[1];
    show(QStringLiteral("title={FCNet}; icon=NetTest; stepTitle={FCTestComplete}; leftText={FCNoPass}; "
                        "rightText={FCPass}; left; status=%1; statusShown; mode=9")
             .arg(pass ? QStringLiteral("NetPass") : QStringLiteral("NetNoPass")));
}

void MachineModel::onUsbLinks(const std::vector<bool> &links)
{
    if (!m_hears || phase != 6 || links.empty())
        return;
    const bool pass = std::count(links.begin(), links.end(), false) == 0;
    show(QStringLiteral("title={USBA}; icon=UsbTest; stepTitle={TestStep}; steps={FCUSB30TestStep}; "
                        "leftText={FCNoPass}; rightText={FCPass}; left; status=%1; statusShown; mode=9")
             .arg(pass ? QStringLiteral("UsbPass") : QStringLiteral("UsbNoPass")));
}

void MachineModel::left()
{
    if (phase < 0 || phase > 10)
        return;
    m_tickDue.reset();
    failSingleTest();
    fail();
}

void MachineModel::failSingleTest()
{
    switch (phase) {
    case 0:
        return m_screens.finish(102);
    case 1:
        return m_patterns.finish(102);
    case 2:
        return m_lights.finish(102);
    case 3:
        if (!m_keysJudged)
            keys.fail();
        m_keysJudged = false;
        return;
    case 4:
        return tbar.finish(102);
    case 5:
        return net.fail();
    case 6:
        return usb.fail();
    default:
        return;
    }
}

void MachineModel::right()
{
    static const QMap<int, const char *> lines = {
        {7, "Type-C USB communication pass"}, {9, "Type-C power port pass"}, {10, "Net port 1 POE power pass"}};
    switch (phase) {
    case 0:
    case 2:
        if ((phase == 0 ? m_screens : m_lights).state == 101)
            nextPhase();
        return;
    case 1:
        return m_patterns.state == 101 ? m_patterns.finish(103) : m_patterns.nextStep();
    case 3:
        if (!m_keysJudged)
            return;
        m_keysJudged = false;
        log("Button function pass");
        return nextPhase();
    case 4:
        return tbar.state == 103 ? nextPhase() : tbar.nextStep();
    case 5:
        return rightInNetPhase();
    case 6:
        return usb.pass();
    default:
        if (!lines.contains(phase))
            return;
        log(lines[phase]);
        return nextPhase();
    }
}

void MachineModel::rightInNetPhase()
{
    switch (net.state) {
    case 0:
        net.startTest();
        return showNetButtons("FCPass");
    case 1:
        return net.pass();
    case 102:
        net.reset();
        return showNetButtons("FCAgeModeStartTest");
    default:
        return nextPhase();
    }
}
