#include "device/board/evdevinput.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

namespace panelhost {

namespace {

// More steps in one event are a broken device, not a hand at the knob.
constexpr int MaxSteps = 32;

// How far a stick is pushed to count as pushed, and to count as released again; 1 is the end.
constexpr double PushedAt = 0.5;
constexpr double ReleasedAt = 0.25;

constexpr int KeyRepeat = 2; // value of a key event

QString openProblem(const QString &node, int number)
{
    QString problem = QStringLiteral("%1 can't be opened: %2.").arg(node, qt_error_string(number));
    if (number != EACCES && number != EPERM)
        return problem;
    return problem
        + QStringLiteral(" Install the udev rule 60-panelhost.rules and add the user to the group panelhost, or run "
                         "panelhost as root.");
}

}

void EvdevInput::DeviceDeleter::operator()(libevdev *device) const
{
    libevdev_free(device);
}

EvdevInput::EvdevInput(const Configuration &configuration, Callbacks callbacks)
    : m_configuration(configuration), m_callbacks(std::move(callbacks)),
      m_monitor(
          "input",
          {[this](const QString &action, udev_device &device) { deviceChanged(action, device); }, [this] { reopen(); }})
{
}

EvdevInput::~EvdevInput()
{
    m_device.reset();
    if (m_fd >= 0)
        ::close(m_fd);
}

void EvdevInput::start()
{
    openIfThere();
}

void EvdevInput::openIfThere()
{
    if (isOpen())
        return;
    const QString node = findInputDevice(m_monitor.context(), m_configuration.device);
    if (node.isEmpty())
        setProblem(QStringLiteral("There is no %1. \"panelhost probe\" lists those that there are.")
                       .arg(m_configuration.device.description()));
    else
        open(node);
}

// The report that the device is gone may be among those that were lost.
void EvdevInput::reopen()
{
    if (isOpen())
        closeIfHungUp();
    openIfThere();
}

void EvdevInput::open(const QString &node)
{
    m_fd = ::open(QFile::encodeName(node).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (m_fd < 0)
        return setProblem(openProblem(node, errno));
    libevdev *device = nullptr;
    const int result = libevdev_new_from_fd(m_fd, &device);
    if (result != 0) {
        ::close(std::exchange(m_fd, -1));
        return setProblem(QStringLiteral("%1 isn't an input device: %2.").arg(node, qt_error_string(-result)));
    }
    m_device.reset(device);
    m_node = node;
    m_isSynchronizing = false;
    const QString problem = m_isGrabbed ? grab() : QString();
    setProblem(problem.isEmpty() ? missingCodes() : problem);
    reportAxis();
}

// What is down counts as released.
void EvdevInput::close()
{
    m_device.reset();
    ::close(std::exchange(m_fd, -1));
    setProblem(QStringLiteral("The %1 was disconnected.").arg(m_configuration.device.description()));
    m_zones.clear();
    const QSet<int> released = std::exchange(m_down, {});
    for (const int halKey : released)
        m_callbacks.key(halKey, false);
}

// Reading usually fails before udev reports that the device is gone. If it was selected by a link, the link is gone.
void EvdevInput::deviceChanged(const QString &action, udev_device &device)
{
    const QString node = QString::fromLocal8Bit(udev_device_get_devnode(&device));
    if (action == QLatin1String("remove")) {
        if (isOpen() && (node == m_node || !QFile::exists(m_node)))
            close();
    } else if (!isOpen() && m_configuration.device.by == InputDeviceSelector::By::Path) {
        openIfThere();
    } else if (!isOpen() && isSelected(m_configuration.device, device)) {
        open(node);
    }
}

void EvdevInput::setGrabbed(bool grabbed)
{
    if (std::exchange(m_isGrabbed, grabbed) == grabbed || !isOpen())
        return;
    if (grabbed) {
        const QString problem = grab();
        setProblem(problem.isEmpty() ? missingCodes() : problem);
    } else {
        libevdev_grab(m_device.get(), LIBEVDEV_UNGRAB);
    }
}

// Returns why it failed.
QString EvdevInput::grab()
{
    const int result = libevdev_grab(m_device.get(), LIBEVDEV_GRAB);
    if (result == 0)
        return {};
    if (result == -EBUSY)
        return QStringLiteral(
                   "The %1 (%2) is grabbed by another program or by another part of the profile, so it sends "
                   "no events here. Select it in the same way for all parts, and end the other program.")
            .arg(m_configuration.device.description(), m_node);
    return QStringLiteral("%1 can't be grabbed: %2.").arg(m_node, qt_error_string(-result));
}

QString EvdevInput::missingCodes() const
{
    QList<std::pair<unsigned, unsigned>> wanted;
    for (auto key = m_configuration.keys.begin(); key != m_configuration.keys.end(); ++key)
        wanted.append({EV_KEY, key.key()});
    for (const Navigation &each : m_configuration.navigation)
        wanted.append({each.type, each.code});
    if (m_configuration.axis)
        wanted.append({EV_ABS, *m_configuration.axis});
    QStringList missing;
    for (const auto &[type, code] : qAsConst(wanted)) {
        const char *name = libevdev_event_code_get_name(type, code);
        if (!libevdev_has_event_code(m_device.get(), type, code))
            missing << (name ? QString::fromLatin1(name) : QString::number(code));
    }
    missing.removeDuplicates();
    if (missing.isEmpty())
        return {};
    return QStringLiteral("The %1 (%2) has no %3.")
        .arg(m_configuration.device.description(), m_node, missing.join(QStringLiteral(", ")));
}

void EvdevInput::setProblem(const QString &problem)
{
    if (std::exchange(m_problem, problem) != problem && m_callbacks.status)
        m_callbacks.status(problem);
}

void EvdevInput::reportAxis()
{
    const input_absinfo *info =
        m_configuration.axis ? libevdev_get_abs_info(m_device.get(), *m_configuration.axis) : nullptr;
    if (info)
        m_callbacks.axis(info->value, info->minimum, info->maximum);
}

// libevdev keeps events of its own, so everything is read.
void EvdevInput::ready()
{
    while (isOpen()) {
        input_event event = {};
        const unsigned mode = m_isSynchronizing ? LIBEVDEV_READ_FLAG_SYNC : LIBEVDEV_READ_FLAG_NORMAL;
        const int result = libevdev_next_event(m_device.get(), mode, &event);
        if (result == -EAGAIN && !m_isSynchronizing)
            return closeIfHungUp();
        if (result == -EAGAIN)
            m_isSynchronizing = false;
        else if (result == LIBEVDEV_READ_STATUS_SYNC && !m_isSynchronizing)
            m_isSynchronizing = true;
        else if (result >= 0)
            handle(event);
        else if (result != -EINTR)
            close();
    }
}

// libevdev takes an end of the data for a lack of it.
void EvdevInput::closeIfHungUp()
{
    pollfd polled = {m_fd, POLLIN, 0};
    if (poll(&polled, 1, 0) > 0 && (polled.revents & (POLLHUP | POLLERR)) != 0)
        close();
}

void EvdevInput::handle(const input_event &event)
{
    if (event.type == EV_KEY && event.value != KeyRepeat)
        handleKey(event.code, event.value != 0);
    else if (event.type == EV_REL)
        handleRelative(event.code, event.value);
    else if (event.type == EV_ABS)
        handleAbsolute(event.code, event.value);
}

void EvdevInput::handleKey(unsigned code, bool down)
{
    const auto key = m_configuration.keys.find(code);
    if (key != m_configuration.keys.end()) {
        const bool wasDown = m_down.contains(*key);
        if (down)
            m_down.insert(*key);
        else
            m_down.remove(*key);
        if (down != wasDown)
            m_callbacks.key(*key, down);
    }
    if (down)
        navigate(EV_KEY, code, 0);
}

void EvdevInput::handleRelative(unsigned code, int value)
{
    const int steps = std::clamp(value, -MaxSteps, MaxSteps);
    for (int step = 0; step < std::abs(steps); ++step)
        navigate(EV_REL, code, steps > 0 ? 1 : -1);
}

void EvdevInput::handleAbsolute(unsigned code, int value)
{
    if (m_configuration.axis == code)
        reportAxis();
    const int before = m_zones.value(code);
    const int zone = zoneOf(code, value, before);
    m_zones[code] = zone;
    if (zone != 0 && zone != before)
        navigate(EV_ABS, code, zone);
}

// Between the two limits a stick stays in the zone in which it was.
int EvdevInput::zoneOf(unsigned code, int value, int before) const
{
    const double minimum = libevdev_get_abs_minimum(m_device.get(), code);
    const double maximum = libevdev_get_abs_maximum(m_device.get(), code);
    if (maximum <= minimum)
        return 0;
    const double pushed = (value - (minimum + maximum) / 2) / ((maximum - minimum) / 2);
    if (std::abs(pushed) > PushedAt)
        return pushed > 0 ? 1 : -1;
    return std::abs(pushed) > ReleasedAt ? before : 0;
}

void EvdevInput::navigate(unsigned type, unsigned code, int direction)
{
    for (const Navigation &each : m_configuration.navigation) {
        if (each.type == type && each.code == code && (type == EV_KEY || each.direction == direction))
            m_callbacks.navigate(each.key);
    }
}

}
