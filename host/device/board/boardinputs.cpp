#include "device/board/boardinputs.h"

#include "diagnostics/reporterror.h"

#include <algorithm>

namespace panelhost {

namespace {

const QString TBarPart = QStringLiteral("tbar");
const QString NetPart = QStringLiteral("net");
const QString UsbPart = QStringLiteral("usb");

QVariantMap portArgument(const QString &kind, int port)
{
    return {{QStringLiteral("port"), kind + QString::number(port + 1)}};
}

QVariantMap plugArguments(int port, double speed)
{
    QVariantMap arguments = portArgument(UsbPart, port);
    if (speed > 0)
        arguments.insert(QStringLiteral("speed"), speed);
    return arguments;
}

// The axis of the T-Bar is one more user of an input device.
std::vector<InputConfiguration> usersOf(const BoardConfiguration &board)
{
    std::vector<InputConfiguration> users(board.inputs.begin(), board.inputs.end());
    if (board.isReal(TBarPart) && !board.tbar.slider.iio)
        users.push_back({TBarPart, board.tbar.where, board.tbar.input});
    return users;
}

void merge(EvdevInput::Configuration &all, const EvdevInput::Configuration &more)
{
    all.device = more.device;
    for (auto key = more.keys.begin(); key != more.keys.end(); ++key)
        all.keys.insert(key.key(), key.value());
    all.navigation += more.navigation;
    if (more.axis)
        all.axis = more.axis;
}

}

BoardInputs::BoardInputs(const BoardConfiguration &board, HardwareHandler handler)
    : m_board(board), m_handler(std::move(handler))
{
}

BoardInputs::~BoardInputs()
{
    m_loop.run([this] { destroyParts(); });
}

bool BoardInputs::start(QString *error)
{
    QStringList sentences;
    m_loop.run([&] {
        createParts();
        startParts();
        for (const auto &part : qAsConst(m_problems)) {
            for (auto problem = part.begin(); problem != part.end(); ++problem)
                sentences << QStringLiteral("%1: %2").arg(problem.key(), problem.value());
        }
        if (!sentences.isEmpty())
            return destroyParts();
        m_isStarted = true;
    });
    sentences.removeDuplicates();
    *error = sentences.join(QLatin1Char('\n'));
    return sentences.isEmpty();
}

void BoardInputs::setGrabbed(bool grabbed)
{
    m_loop.post([this, grabbed] {
        for (const InputDevice &device : m_devices)
            device.input->setGrabbed(grabbed);
    });
}

void BoardInputs::calibrate(int command)
{
    m_loop.post([this, command] {
        const QString problem = m_tbar ? m_tbar->calibrate(command) : QStringLiteral("the board has no T-Bar");
        send("calibration",
             {{QStringLiteral("command"), command},
              {QStringLiteral("ok"), problem.isEmpty()},
              {QStringLiteral("message"), problem}});
    });
}

void BoardInputs::createParts()
{
    createInputDevices();
    if (m_board.isReal(TBarPart))
        createTBar();
    if (m_board.isReal(NetPart))
        createNet();
    if (m_board.isReal(UsbPart))
        createUsb();
}

// An input device can be grabbed only once, so there is one object for all parts that use it.
void BoardInputs::createInputDevices()
{
    for (const InputConfiguration &user : usersOf(m_board)) {
        auto device = std::find_if(m_devices.begin(), m_devices.end(), [&user](const InputDevice &each) {
            return each.configuration.device == user.input.device;
        });
        if (device == m_devices.end())
            device = m_devices.insert(m_devices.end(), InputDevice());
        merge(device->configuration, user.input);
        device->users.push_back(user);
    }
    for (InputDevice &device : m_devices) {
        EvdevInput::Callbacks callbacks;
        callbacks.key = [this](int halKey, bool down) {
            send(down ? "hold" : "release", {{QStringLiteral("key"), halKey}});
        };
        callbacks.navigate = [this](const QString &key) { send("navigate", {{QStringLiteral("key"), key}}); };
        callbacks.axis = [this](int value, int minimum, int maximum) { m_tbar->setRaw(value, minimum, maximum); };
        callbacks.status = [this, &device](const QString &problem) { deviceStatus(device, problem); };
        device.input = std::make_unique<EvdevInput>(device.configuration, callbacks);
        addSources(device.input->sources());
    }
}

void BoardInputs::createTBar()
{
    SliderInput::Callbacks callbacks;
    callbacks.moved = [this](double position) { send("tbar", {{QStringLiteral("position"), position}}); };
    callbacks.status = [this](const QString &problem) { setProblem(TBarPart, m_board.tbar.where, problem); };
    m_tbar = std::make_unique<SliderInput>(m_board.tbar.slider, callbacks);
    addSources(m_tbar->sources());
}

void BoardInputs::createNet()
{
    NetLinks::Callbacks callbacks;
    callbacks.changed = [this](int port, bool linked) {
        send(linked ? "plug" : "unplug", portArgument(NetPart, port));
    };
    callbacks.status = [this](int port, const QString &problem) {
        setProblem(NetPart, m_board.netWhere.at(port), problem);
    };
    m_net = std::make_unique<NetLinks>(m_board.net, callbacks);
    addSources(m_net->sources());
}

void BoardInputs::createUsb()
{
    m_usbStates.resize(static_cast<std::size_t>(m_board.usb.ports.size()));
    UsbPorts::Callbacks callbacks;
    callbacks.changed = [this](int port, const UsbPorts::State &state) { usbChanged(port, state); };
    m_usb = std::make_unique<UsbPorts>(m_board.usb, callbacks);
    addSources(m_usb->sources());
}

// A stored calibration that can't be used is no reason not to start: it is the next calibration that repairs it.
void BoardInputs::startParts()
{
    QString error;
    if (m_tbar)
        m_tbar->start(&error);
    if (!error.isEmpty())
        reportError(error);
    for (const InputDevice &device : m_devices)
        device.input->start();
    if (m_net && !m_net->start(&error))
        setProblem(NetPart, m_board.file, error);
    if (m_usb && !m_usb->start(&error))
        setProblem(UsbPart, m_board.file, error);
}

void BoardInputs::destroyParts()
{
    for (EventSource *source : qAsConst(m_sources))
        m_loop.remove(*source);
    m_sources.clear();
    m_usb.reset();
    m_net.reset();
    m_devices.clear();
    m_tbar.reset();
}

void BoardInputs::addSources(const QList<EventSource *> &sources)
{
    for (EventSource *source : sources)
        m_loop.add(*source);
    m_sources += sources;
}

// The T-Bar is there again when its axis has a value.
void BoardInputs::deviceStatus(const InputDevice &device, const QString &problem)
{
    for (const InputConfiguration &user : device.users) {
        if (user.part != TBarPart)
            setProblem(user.part, user.where, problem);
        else if (!problem.isEmpty())
            m_tbar->setMissing(problem);
    }
}

void BoardInputs::setProblem(const QString &part, const QString &where, const QString &problem)
{
    QMap<QString, QString> &problems = m_problems[part];
    const bool wasPresent = problems.isEmpty();
    if (problem.isEmpty())
        problems.remove(where);
    else
        problems.insert(where, problem);
    if (!m_isStarted)
        return;
    if (!problem.isEmpty())
        reportError(QStringLiteral("%1: %2").arg(where, problem));
    if (problems.isEmpty() != wasPresent)
        send("part", {{QStringLiteral("name"), part}, {QStringLiteral("present"), problems.isEmpty()}});
}

// A port that is blocked must not seem to be linked in between. A device that is plugged in with another speed, such
// as the one on the other bus of a USB 3 port, is a plug, too.
void BoardInputs::usbChanged(int port, const UsbPorts::State &state)
{
    const UsbPorts::State before = std::exchange(m_usbStates[static_cast<std::size_t>(port)], state);
    if (state.isBlocked && !before.isBlocked)
        send("block", portArgument(UsbPart, port));
    const bool hasOtherSpeed = state.isPlugged && state.speed != before.speed;
    if (state.isPlugged != before.isPlugged || hasOtherSpeed)
        send(state.isPlugged ? "plug" : "unplug", plugArguments(port, state.speed));
    if (!state.isBlocked && before.isBlocked)
        send("unblock", portArgument(UsbPart, port));
}

void BoardInputs::send(const char *action, const QVariantMap &arguments)
{
    m_handler({QString::fromLatin1(action), arguments});
}

}
