#include "singletestmodels.h"

#include <QtCore/QRegularExpression>

QString ModelHost::translated(const QString &key) const
{
    return QLatin1Char('[') + (language.isEmpty() ? QString() : language + QLatin1Char(':')) + key + QLatin1Char(']');
}

QString ModelHost::expanded(const QString &text) const
{
    static const QRegularExpression key(QStringLiteral("\\{([^}]*)\\}"));
    QString result;
    int end = 0;
    for (auto matches = key.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        result += text.mid(end, match.capturedStart() - end) + translated(match.captured(1));
        end = match.capturedEnd();
    }
    return result + text.mid(end);
}

void LevelModel::enter()
{
    host.call(host.hasFactoryBiz, QStringLiteral("factoryBiz.setFactoryTestType(%1)").arg(kind == Screens ? 0 : 2));
    reset();
}

void LevelModel::startTest()
{
    state = 10;
    show(10);
    announce(10);
}

void LevelModel::nextStep()
{
    static const QMap<int, int> higher = {{10, 30}, {30, 50}, {50, 70}, {70, 100}};
    if (higher.contains(state)) {
        state = higher[state];
        show(state);
    } else if (state == 100 && trips == 0) {
        trips = 1;
        state = 10;
        show(10);
    } else if (state == 100) {
        trips = 0;
        state = 101;
        if (kind == Keys)
            host.call(host.hasKeyboard, QStringLiteral("keyboard.setAllButtonBrightness(0)"));
        announce(101);
    }
}

void LevelModel::finish(int code)
{
    state = code;
    announce(code);
}

void LevelModel::reset()
{
    trips = 0;
    finish(0);
}

void LevelModel::restore()
{
    show(100);
}

void LevelModel::show(int level)
{
    if (kind == Keys) {
        host.lines << QStringLiteral("debug|updateButtonLightBiz 1111111111111111111111111111: : %1").arg(level);
        host.call(host.hasKeyboard, QStringLiteral("keyboard.setAllButtonBrightness(%1)").arg(level));
        return;
    }
    for (int screen = 0; screen < 3; ++screen)
        host.call(host.hasKeyboard, QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screen).arg(level));
}

void PatternModel::enter()
{
    host.call(host.hasFactoryBiz, QStringLiteral("factoryBiz.setFactoryTestType(1)"));
    state = 0;
    pattern = 0;
    active = true;
    announce(0);
}

void PatternModel::startTest()
{
    state = 1;
    pattern = 0;
    active = true;
    show();
    announce(1);
}

void PatternModel::nextStep()
{
    ++pattern;
    if (pattern < 12)
        return show();
    state = 101;
    active = false;
    show();
    announce(101);
}

void PatternModel::finish(int code)
{
    state = code;
    pattern = 0;
    active = false;
    show();
    announce(code);
}

void PatternModel::show()
{
    struct Pattern
    {
        int type, index, level;
    };
    static const Pattern patterns[12] = {{1, 1, 0},   {1, 2, 0},   {1, 3, 0},   {1, 4, 0},   {3, 1, 128}, {3, 1, 255},
                                         {3, 2, 128}, {3, 2, 255}, {3, 3, 128}, {3, 3, 255}, {3, 4, 128}, {3, 4, 255}};
    const Pattern shown = active ? patterns[pattern] : Pattern{0, 0, 0};
    host.call(host.hasKeyboard, QStringLiteral("keyboard.setLcdTestPattern(%1, %2)").arg(shown.type).arg(shown.index));
    host.call(host.hasMenu, QStringLiteral("pattern(%1, %2, %3)").arg(shown.type).arg(shown.index).arg(shown.level));
}

void KeyModel::enter()
{
    state = 0;
    waiting.clear();
    current = {-1, QString()};
    host.call(host.hasKeyboard, QStringLiteral("keyboard.registerKeyCallback(listener)"));
    listening = host.hasKeyboard;
}

void KeyModel::startTest()
{
    if (!host.hasKeyboard)
        return;
    if (!host.hasMenu) {
        host.lines << QStringLiteral(
            "warning|[ButtonFunctionBiz] FactoryModeWidget not found, cannot get key check list");
        return;
    }
    host.lines << QStringLiteral("keyboard.setAllButtonBrightness(0)");
    current.first = -1;
    waiting = host.keys;
    for (int i = waiting.size() - 1; i >= 0; --i) {
        if (waiting[i].second == QLatin1String("CUT"))
            cutKey = waiting[i].first;
    }
    lastKey = waiting.last().first;
    next();
}

void KeyModel::next()
{
    if (waiting.isEmpty()) {
        current = {-1, QString()};
        return;
    }
    current = waiting.takeFirst();
    host.lines << QStringLiteral("debug|[ButtonFunctionBiz] Blinking light: halKey= %1 name= \"%2\"")
                      .arg(current.first)
                      .arg(current.second);
    announceKey(current.first);
    light(1, current.second == QLatin1String("CUT") ? 0 : 2);
}

void KeyModel::light(int mode, int color)
{
    if (!host.hasKeyboard || current.first == -1)
        return;
    host.lines << QStringLiteral("keyboard.setKeyLedUpdating(true)")
               << QStringLiteral("keyboard.setKeyLed(%1, {color %2, mode %3, brightness 100, period 800})")
                      .arg(current.first)
                      .arg(color)
                      .arg(mode)
               << QStringLiteral("keyboard.setKeyLedUpdating(false)");
}

void KeyModel::press(int key)
{
    if (!listening || current.first == -1)
        return;
    if (waiting.isEmpty() && current.first == lastKey) {
        light(0, 2);
        current = {-1, QString()};
        state = 101;
        return announce(101);
    }
    if (key != current.first)
        return;
    host.lines << QStringLiteral("debug|[ButtonFunctionBiz] Pressed key: halKey= %1 name= \"%2\"")
                      .arg(key)
                      .arg(current.second);
    light(0, current.first == cutKey ? 0 : 2);
    next();
}

void KeyModel::fail()
{
    state = 102;
    announce(102);
    host.call(host.hasKeyboard, QStringLiteral("keyboard.registerKeyCallback(empty)"));
    listening = false;
}

void TBarModel::enter()
{
    host.call(host.hasFactoryBiz, QStringLiteral("factoryBiz.setFactoryTestType(6)"));
    step = 0;
    finish(0);
}

void TBarModel::startTest()
{
    if (!host.hasKeyboard) {
        host.lines << QStringLiteral("warning|[TbarTestBiz] KeyboardEvent not found");
        return;
    }
    step = 0;
    finish(1);
    announceLastSteps(false);
    host.call(host.hasTBar, QStringLiteral("tbar.registerBarCalibrationCallback(TbarTestBiz)"));
}

void TBarModel::nextStep()
{
    static const int commands[7] = {2, 1, 0, 1, 0, 1, 4};
    if (!host.hasTBar)
        return;
    host.lines << QStringLiteral("debug|[TbarTestBiz] requestNextStep: cur= %1").arg(step);
    const int present = step++;
    announceLastSteps(present >= 5);
    if (present == 6) {
        announce(state);
        step = 0;
        state = 103;
    }
    latest = present == 6 ? LastCommand : Command;
    host.lines << QStringLiteral("tbar.setBarCalibration(0, %1, 0)").arg(commands[present]);
}

void TBarModel::finish(int code)
{
    state = code;
    announce(code);
}

void TBarModel::answer(bool ok)
{
    if (latest == LastCommand)
        host.lines << (ok ? QStringLiteral("debug|[TbarTestBiz] T-Bar calibration completed")
                          : QStringLiteral("warning|[TbarTestBiz] T-Bar calibration end failed"));
}

void LinkModel::enter()
{
    state = 0;
    seen.clear();
    host.call(host.hasFactoryBiz, QStringLiteral("factoryBiz.setFactoryTestType(%1)").arg(kind == Net ? 10 : 9));
    announce(0);
}

void LinkModel::startTest()
{
    if (state != 0)
        return;
    state = 1;
    announce(1);
    if (!(kind == Net ? host.hasNetworkPort : host.hasUsb)) {
        host.lines << (kind == Net ? QStringLiteral("warning|NetPortTestBiz: INetworkPort is null, cannot start test")
                                   : QStringLiteral("warning|UsbPortTestBiz: IUSB is null, cannot start test"));
        return;
    }
    const QString service = kind == Net ? QStringLiteral("networkPort") : QStringLiteral("usb");
    const QString subscriber = kind == Net ? QStringLiteral("NetPortTestBiz") : QStringLiteral("UsbPortTestBiz");
    for (const bool changed : {false, true}) {
        host.lines << QStringLiteral("%1.register%2Callback(%3, 2)")
                          .arg(service, changed ? QStringLiteral("Changed") : QStringLiteral("Report"), subscriber);
        subscribed = true;
        if (const auto answer = kind == Net ? host.netAnswer : host.usbAnswer)
            deliver(*answer, changed);
    }
}

void LinkModel::pass()
{
    if (state != 1)
        return;
    state = 103;
    announce(103);
}

void LinkModel::fail()
{
    if (state != 1)
        return;
    state = 102;
    announce(102);
}

void LinkModel::reset()
{
    state = 0;
    seen.clear();
    announce(0);
    announceLinks({});
}

void LinkModel::deliver(const ModelPayload &payload, bool changed)
{
    static const char *const arrays[2] = {"NetPortTestBiz: need type std::shared_ptr<s_NetworkPortLinkArray>, got %1",
                                          "UsbPortTestBiz: need type std::shared_ptr<s_NodeUSBArray>, got %1"};
    static const char *const pointers[2] = {"NetPortTestBiz: s_NetworkPortLinkArray ptr is nullptr",
                                            "UsbPortTestBiz: s_NodeUSBArray ptr is nullptr"};
    if (!subscribed || (!changed && !takesReports))
        return;
    const QString warning = QStringLiteral("warning|");
    switch (payload.kind) {
    case ModelPayload::OtherType: // an int
        host.lines << warning + QString::fromLatin1(arrays[kind]).arg(QLatin1Char('i'));
        return;
    case ModelPayload::Nothing: // void
        host.lines << warning + QString::fromLatin1(arrays[kind]).arg(QLatin1Char('v'));
        return;
    case ModelPayload::NullPointer:
        host.lines << warning + QLatin1String(pointers[kind]);
        return;
    case ModelPayload::Records:
        break;
    }
    if (kind == Usb)
        return announceLinks(usbLinks(payload));
    announce(state);
    announceLinks(netLinks(payload));
}

std::vector<bool> LinkModel::netLinks(const ModelPayload &payload) const
{
    std::vector<bool> links;
    for (const auto &record : payload.records) {
        if (record.port < 0)
            continue;
        while (static_cast<int>(links.size()) <= record.port)
            links.push_back(false);
        if (record.linked)
            links[static_cast<std::size_t>(record.port)] = true;
    }
    return links;
}

std::vector<bool> LinkModel::usbLinks(const ModelPayload &payload)
{
    for (auto &linked : seen)
        linked = false;
    for (const auto &record : payload.records) {
        if (record.nodeType == 26)
            seen[record.port] = seen.value(record.port) || (record.linked && !record.blocked);
    }
    const auto links = seen.values();
    return {links.begin(), links.end()};
}
