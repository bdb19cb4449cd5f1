#include "device/board/iiothresholds.h"

#include "device/board/attributefile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/iio/events.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace panelhost {

namespace {

// A descriptor without waiting; -1 if the device has none or another program has it.
int openEvents(const QString &node)
{
    const int device = ::open(QFile::encodeName(node).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (device < 0)
        return -1;
    int events = -1;
    const bool isOpen = ioctl(device, IIO_GET_EVENT_FD_IOCTL, &events) == 0 && events >= 0;
    ::close(device);
    if (!isOpen)
        return -1;
    fcntl(events, F_SETFL, fcntl(events, F_GETFL) | O_NONBLOCK);
    return events;
}

}

IioThresholds::IioThresholds(const QString &device, const QString &channel)
    : m_prefix(QStringLiteral("%1/events/in_%2_thresh_").arg(device, channel)), m_low(path("falling_value")),
      m_high(path("rising_value"))
{
    // Some drivers switch both thresholds together.
    if (QFileInfo::exists(path("either_en")))
        m_enable = {path("either_en")};
    else
        m_enable = {path("falling_en"), path("rising_en")};
}

std::unique_ptr<IioThresholds> IioThresholds::open(const QString &device, const QString &node, const QString &channel)
{
    std::unique_ptr<IioThresholds> thresholds(new IioThresholds(device, channel));
    if (!thresholds->isComplete() || !thresholds->save())
        return nullptr;
    thresholds->m_events = openEvents(node);
    return thresholds->m_events < 0 ? nullptr : std::move(thresholds);
}

// Without an event descriptor nothing was written.
IioThresholds::~IioThresholds()
{
    if (m_events < 0)
        return;
    for (const auto &[path, value] : m_saved)
        set(path, value);
    ::close(m_events);
}

QString IioThresholds::path(const char *attribute) const
{
    return m_prefix + QLatin1String(attribute);
}

bool IioThresholds::isComplete() const
{
    const auto isWritable = [](const QString &path) { return QFileInfo(path).isWritable(); };
    return isWritable(m_low) && isWritable(m_high) && std::all_of(m_enable.begin(), m_enable.end(), isWritable);
}

// Events are restored before their thresholds, so that restoring raises none.
bool IioThresholds::save()
{
    std::vector<QString> paths = m_enable;
    paths.insert(paths.end(), {m_low, m_high});
    for (const QString &each : paths) {
        int number = 0;
        const QByteArray value = readAttribute(each, &number);
        if (number != 0)
            return false;
        m_saved.emplace_back(each, value);
    }
    return true;
}

bool IioThresholds::set(const QString &path, const QByteArray &value) const
{
    return writeAttribute(path, value) == 0;
}

bool IioThresholds::takeEvents()
{
    std::array<iio_event_data, 16> events;
    ssize_t size = 0;
    do {
        size = ::read(m_events, events.data(), sizeof events);
    } while (size > 0 || (size < 0 && errno == EINTR));
    return size < 0 && errno == EAGAIN;
}

bool IioThresholds::setRange(int low, int high)
{
    const std::pair range(low, high);
    if (m_range == range)
        return true;
    const bool isFirst = !m_range;
    m_range.reset();
    const auto setLow = [&] { return set(m_low, QByteArray::number(low)); };
    const auto setHigh = [&] { return set(m_high, QByteArray::number(high)); };
    // The driver may refuse a lower threshold that is above the upper one, even for a moment.
    if (!(setLow() && setHigh()) && !(setHigh() && setLow()))
        return false;
    for (const QString &each : m_enable) {
        if (isFirst && !set(each, "1"))
            return false;
    }
    m_range = range;
    return true;
}

}
