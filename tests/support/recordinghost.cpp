#include "recordinghost.h"

using namespace LCD;

namespace {

std::mutex captureMutex;
std::vector<LogCapture::Entry> captured;
QtMessageHandler previousHandler = nullptr;

void capture(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const std::lock_guard locker(captureMutex);
    captured.push_back({type, text, context.category, context.file, context.line, context.function});
}

QString text(const std::string &value)
{
    return QString::fromStdString(value);
}

}

void CallLog::add(const QString &call)
{
    {
        const std::lock_guard locker(m_mutex);
        m_calls << call;
    }
    if (afterCall)
        afterCall();
}

QStringList CallLog::all() const
{
    const std::lock_guard locker(m_mutex);
    return m_calls;
}

QStringList CallLog::take()
{
    const std::lock_guard locker(m_mutex);
    return std::exchange(m_calls, {});
}

void RecordingKeyboard::setFactoryPanelMode(int mode)
{
    m_calls.add(QStringLiteral("keyboard.setFactoryPanelMode(%1)").arg(mode));
}

void RecordingKeyboard::setKeyLed(const int &halKey, KeyboardProxy::KeyLedRequest request)
{
    m_calls.add(QStringLiteral("keyboard.setKeyLed(%1, {color %2, mode %3, brightness %4, period %5})")
                    .arg(halKey)
                    .arg(request.color)
                    .arg(request.mode)
                    .arg(request.brightness)
                    .arg(request.period));
}

void RecordingKeyboard::registerKeyCallback(const FactoryMode::KeyListener &listener)
{
    m_calls.add(QStringLiteral("keyboard.registerKeyCallback(%1)")
                    .arg(listener ? QStringLiteral("listener") : QStringLiteral("empty")));
    m_listener.set(listener);
}

void RecordingKeyboard::setAllButtonBrightness(int level)
{
    m_calls.add(QStringLiteral("keyboard.setAllButtonBrightness(%1)").arg(level));
}

void RecordingKeyboard::setScreenBrightness(int screenIndex, int level)
{
    m_calls.add(QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screenIndex).arg(level));
}

void RecordingKeyboard::setKeyLedUpdating(bool updating)
{
    m_calls.add(QStringLiteral("keyboard.setKeyLedUpdating(%1)")
                    .arg(updating ? QStringLiteral("true") : QStringLiteral("false")));
}

void RecordingKeyboard::setLcdTestPattern(int patternType, int patternIndex)
{
    m_calls.add(QStringLiteral("keyboard.setLcdTestPattern(%1, %2)").arg(patternType).arg(patternIndex));
}

int RecordingKeyboard::getTBarType()
{
    m_calls.add(QStringLiteral("keyboard.getTBarType()"));
    return tbarType;
}

bool RecordingKeyboard::press(unsigned halKey) const
{
    return m_listener.fire(halKey, 1.0F, 0U, KeyboardProxy::KeyButtonJoystick(), KeyboardProxy::KeyTouchScreen(),
                           KeyboardProxy::KeyButtonTBar());
}

void RecordingFactoryBiz::setFactoryTestType(int testType)
{
    m_calls.add(QStringLiteral("factoryBiz.setFactoryTestType(%1)").arg(testType));
}

void RecordingFactoryBiz::setMachineTestKind(int kind)
{
    m_calls.add(QStringLiteral("factoryBiz.setMachineTestKind(%1)").arg(kind));
}

void RecordingNetworkPort::registerReportCallback(const std::string &subscriber, int mode,
                                                  const std::function<void(std::any)> &callback)
{
    m_calls.add(QStringLiteral("networkPort.registerReportCallback(%1, %2)").arg(text(subscriber)).arg(mode));
    report.set(callback);
    if (answerAtOnce.has_value())
        callback(answerAtOnce);
}

void RecordingNetworkPort::reserved()
{
    m_calls.add(QStringLiteral("networkPort.reserved()"));
}

void RecordingNetworkPort::registerChangedCallback(const std::string &subscriber, int mode,
                                                   const std::function<void(std::any)> &callback)
{
    m_calls.add(QStringLiteral("networkPort.registerChangedCallback(%1, %2)").arg(text(subscriber)).arg(mode));
    changed.set(callback);
    if (answerAtOnce.has_value())
        callback(answerAtOnce);
}

std::any RecordingNetworkPort::payload(const std::vector<std::pair<int, bool>> &ports)
{
    auto records = std::make_shared<std::vector<ProtocolImpl::s_NetworkPortLink>>();
    for (const auto &[port, linked] : ports) {
        ProtocolImpl::s_NetworkPortLink record;
        record.port = port;
        record.link = linked ? 1 : 0;
        records->push_back(record);
    }
    return records;
}

void RecordingUsb::registerReportCallback(const std::string &subscriber, int mode,
                                          const std::function<void(std::any)> &callback)
{
    m_calls.add(QStringLiteral("usb.registerReportCallback(%1, %2)").arg(text(subscriber)).arg(mode));
    report.set(callback);
    if (answerAtOnce.has_value())
        callback(answerAtOnce);
}

void RecordingUsb::registerChangedCallback(const std::string &subscriber, int mode,
                                           const std::function<void(std::any)> &callback)
{
    m_calls.add(QStringLiteral("usb.registerChangedCallback(%1, %2)").arg(text(subscriber)).arg(mode));
    changed.set(callback);
    if (answerAtOnce.has_value())
        callback(answerAtOnce);
}

std::any RecordingUsb::payload(const std::vector<Node> &nodes)
{
    auto records = std::make_shared<std::vector<ProtocolImpl::s_NodeUSB>>();
    for (const Node &node : nodes) {
        ProtocolImpl::s_NodeUSB record;
        record.portId = node.portId;
        record.nodeType = node.nodeType;
        record.linkActive = node.active;
        record.linkBlocked = node.blocked;
        records->push_back(record);
    }
    return records;
}

void RecordingTBarCalibration::setBarCalibration(const ProtocolImpl::s_BarCalibration &command,
                                                 const std::function<void(bool, const std::string &)> &result)
{
    m_calls.add(QStringLiteral("tbar.setBarCalibration(%1, %2, %3)")
                    .arg(command.target)
                    .arg(command.command)
                    .arg(command.value));
    commands.push_back(command);
    results.push_back(result);
}

void RecordingTBarCalibration::registerBarCalibrationCallback(
    const std::string &subscriber, const std::function<void(const ProtocolImpl::s_BarCalibration &)> &callback)
{
    m_calls.add(QStringLiteral("tbar.registerBarCalibrationCallback(%1)").arg(text(subscriber)));
    listener.set(callback);
}

QString RecordingConfig::getFactoryTestKeyMode()
{
    m_calls.add(QStringLiteral("config.getFactoryTestKeyMode()"));
    return keyMode;
}

RecordingHost::RecordingHost()
{
    // The component doesn't check types: each pointer must be one to exactly the interface.
    offer("lcdKeyboardEvent", static_cast<FactoryMode::IKeyboardEvent *>(&keyboard));
    offer("lcdFactoryModeBiz", static_cast<FactoryMode::IFactoryModeBiz *>(&factoryBiz));
    offer("lcdMemoryCacheNetworkPort", static_cast<FactoryMode::INetworkPort *>(&networkPort));
    offer("lcdMemoryCacheNodeUSB", static_cast<FactoryMode::IUSB *>(&usb));
    offer("lcdTBarCalibration", static_cast<FactoryMode::ITBarCalibration *>(&tbarCalibration));
    offer("lcdConfig", static_cast<FactoryMode::IConfig *>(&config));
    offer("lcdMemoryCacheScreenDetail", &screenDetail);
    mirel::api::get().setHost(static_cast<mirel::IHost *>(this));
}

RecordingHost::~RecordingHost()
{
    mirel::api::get().setHost(nullptr);
}

void *RecordingHost::getComponent(const char *name)
{
    lookups << QString::fromLatin1(name);
    const auto found = m_components.find(name);
    return found == m_components.end() ? nullptr : found->second;
}

LogCapture::LogCapture()
{
    clear();
    previousHandler = qInstallMessageHandler(capture);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(previousHandler);
}

void LogCapture::clear()
{
    const std::lock_guard locker(captureMutex);
    captured.clear();
}

std::vector<LogCapture::Entry> LogCapture::entries() const
{
    const std::lock_guard locker(captureMutex);
    return captured;
}

QStringList LogCapture::lines() const
{
    QStringList result;
    for (const Entry &entry : entries())
        result << (entry.type == QtWarningMsg ? QStringLiteral("warning|") : QStringLiteral("debug|")) + entry.text;
    return result;
}

QStringList LogCapture::warnings() const
{
    QStringList result;
    for (const Entry &entry : entries()) {
        if (entry.type == QtWarningMsg)
            result << entry.text;
    }
    return result;
}
