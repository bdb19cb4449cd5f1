#include "device/board/sliderinput.h"

#include "device/board/attributefile.h"
#include "device/board/iiothresholds.h"
#include "device/calibrationcommand.h"
#include "output/systemfile.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <sys/timerfd.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr double PositionSteps = 1000;

constexpr long NanosecondsPerSecond = 1'000'000'000;

}

// Reads the channel as long as the device is there: when the kernel reports that the value has left a range around the
// last one, or at a fixed rate if there are no such events. As long as the T-Bar moves, it is always read at that rate.
class SliderInput::IioReader final : public EventSource
{
public:
    explicit IioReader(SliderInput &slider)
        : m_slider(slider), m_channel(*slider.m_configuration.iio),
          m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
          m_monitor("iio", {[this](const QString &, udev_device &) { find(); }, [this] { find(); }})
    {
    }
    ~IioReader() override { ::close(m_timer); }

    UdevMonitor &monitor() { return m_monitor; }
    void find();

    int fd() const override { return m_isAtRest ? m_thresholds->fd() : m_timer; }
    void ready() override;
    /// Reads the channel now if the device is there.
    void refresh();

private:
    void begin(const QString &directory, const QString &node);
    void read();
    std::optional<int> readValue();
    void waitForMovement(int value);
    void setAtRest(bool isAtRest);
    void stopUsingEvents();
    void lose(const QString &problem);
    void setRate(int readingsPerSecond);

    SliderInput &m_slider;
    const IioChannel m_channel;
    const int m_timer;
    UdevMonitor m_monitor;
    QString m_attribute; // path; empty as long as the device is missing
    std::unique_ptr<IioThresholds> m_thresholds;
    bool m_isAtRest = false; // an event comes when that changes
};

void SliderInput::IioReader::find()
{
    QString directory;
    QString node;
    visitDevices(m_monitor.context(), "iio", [&](udev_device &device) {
        if (!directory.isEmpty() || deviceAttribute(device, "name") != m_channel.device)
            return;
        directory = QString::fromLocal8Bit(udev_device_get_syspath(&device));
        node = QString::fromLocal8Bit(udev_device_get_devnode(&device));
    });
    if (directory.isEmpty())
        return lose(
            QStringLiteral("There is no IIO device named \"%1\". \"panelhost probe\" lists those that there are.")
                .arg(m_channel.device));
    if (m_attribute.isEmpty())
        begin(directory, node);
    read();
}

void SliderInput::IioReader::begin(const QString &directory, const QString &node)
{
    m_attribute = QStringLiteral("%1/in_%2_raw").arg(directory, m_channel.channel);
    if (m_channel.usesEvents)
        m_thresholds = IioThresholds::open(directory, node, m_channel.channel);
    setRate(m_channel.readingsPerSecond);
}

void SliderInput::IioReader::refresh()
{
    if (!m_attribute.isEmpty())
        read();
}

void SliderInput::IioReader::ready()
{
    quint64 expirations = 0;
    if (m_isAtRest && !m_thresholds->takeEvents()) {
        stopUsingEvents();
        return find();
    }
    if (!m_isAtRest && ::read(m_timer, &expirations, sizeof expirations) != sizeof expirations)
        return;
    refresh();
}

void SliderInput::IioReader::read()
{
    const std::optional<int> value = readValue();
    if (!value && !m_attribute.isEmpty())
        return setAtRest(false);
    if (!value)
        return;
    m_slider.setProblem({});
    m_slider.update(*value);
    if (m_thresholds)
        waitForMovement(*value);
}

// Returns nothing if the channel can't be read; the T-Bar has a problem then.
std::optional<int> SliderInput::IioReader::readValue()
{
    int number = 0;
    const QByteArray text = readAttribute(m_attribute, &number);
    if (number == ENOENT || number == ENODEV || number == ENXIO) {
        lose(fileError(m_attribute, number) + QLatin1Char('.'));
        return std::nullopt;
    }
    if (number != 0) {
        m_slider.setProblem(fileError(m_attribute, number) + QLatin1Char('.'));
        return std::nullopt;
    }
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (isNumber)
        return value;
    m_slider.setProblem(
        QStringLiteral("%1: found \"%2\", expected a whole number.").arg(m_attribute, QString::fromLatin1(text)));
    return std::nullopt;
}

// The value may have left the range before the range was set, so it is read once more. A driver may refuse the range.
void SliderInput::IioReader::waitForMovement(int value)
{
    const auto [low, high] = m_slider.restingRange(value);
    if (!m_thresholds->setRange(low, high))
        return stopUsingEvents();
    const std::optional<int> now = readValue();
    if (!m_attribute.isEmpty())
        setAtRest(now && *now >= low && *now <= high);
}

void SliderInput::IioReader::setAtRest(bool isAtRest)
{
    if (std::exchange(m_isAtRest, isAtRest) != isAtRest)
        setRate(isAtRest ? 0 : m_channel.readingsPerSecond);
}

void SliderInput::IioReader::stopUsingEvents()
{
    setAtRest(false);
    m_thresholds.reset();
}

void SliderInput::IioReader::lose(const QString &problem)
{
    m_attribute.clear();
    m_isAtRest = false;
    m_thresholds.reset();
    setRate(0);
    m_slider.setMissing(problem);
}

// With 0 the timer never fires.
void SliderInput::IioReader::setRate(int readingsPerSecond)
{
    itimerspec times = {};
    if (readingsPerSecond == 1)
        times.it_interval.tv_sec = 1;
    else if (readingsPerSecond > 1)
        times.it_interval.tv_nsec = NanosecondsPerSecond / readingsPerSecond;
    times.it_value = times.it_interval;
    timerfd_settime(m_timer, 0, &times, nullptr);
}

SliderInput::SliderInput(const Configuration &configuration, Callbacks callbacks)
    : m_configuration(configuration), m_callbacks(std::move(callbacks)),
      m_range(configuration.range.value_or(SliderEnds{}))
{
    if (configuration.iio)
        m_iio = std::make_unique<IioReader>(*this);
}

SliderInput::~SliderInput() = default;

void SliderInput::start(QString *warning)
{
    m_calibrated = loadSliderEnds(m_configuration.stateFile, warning);
    if (m_iio)
        m_iio->find();
}

QList<EventSource *> SliderInput::sources()
{
    if (!m_iio)
        return {};
    return {m_iio.get(), &m_iio->monitor()};
}

void SliderInput::setRaw(int value, int minimum, int maximum)
{
    if (!m_configuration.range)
        m_range = {minimum, maximum};
    setProblem({});
    update(value);
}

void SliderInput::setMissing(const QString &problem)
{
    m_value.reset();
    setProblem(problem);
}

SliderEnds SliderInput::ends() const
{
    return m_calibrated.value_or(m_range);
}

// Within this range around @p value no movement has to be reported. A threshold can't be beyond the range of the
// driver.
std::pair<int, int> SliderInput::restingRange(int value) const
{
    const auto [least, most] = std::minmax(m_range.bottom, m_range.top);
    const SliderEnds travel = ends();
    const int step = qMax(1, static_cast<int>(std::abs(travel.top - travel.bottom) * m_configuration.resolution));
    return {qMax(value - step, qMin(value, least)), qMin(value + step, qMax(value, most))};
}

void SliderInput::update(int value)
{
    m_value = value;
    report(sliderPosition(ends(), value));
}

// An end is always reported, however small the movement was. Rounded positions are easier to read in a recording.
void SliderInput::report(double exactPosition)
{
    const double position = std::round(exactPosition * PositionSteps) / PositionSteps;
    const bool isAtEnd = position <= 0 || position >= 1;
    if (m_position
        && (*m_position == position || (!isAtEnd && std::abs(*m_position - position) < m_configuration.resolution)))
        return;
    m_position = position;
    m_callbacks.moved(position);
}

// As long as the T-Bar rests, its value may be a little different from the one that was read last.
QString SliderInput::calibrate(int command)
{
    if (m_iio)
        m_iio->refresh();
    if (!m_value)
        return QStringLiteral("the T-Bar is missing");
    if (m_range.bottom == m_range.top)
        return QStringLiteral("the driver states no range for the T-Bar; add \"range\" to the profile");
    if (!m_calibration)
        m_calibration.emplace(m_range, m_configuration.tolerance);
    const QString problem = m_calibration->step(command, *m_value);
    return problem.isEmpty() && m_calibration->result() ? store() : problem;
}

// Without the file, the ends that were valid before stay valid.
QString SliderInput::store()
{
    const SliderEnds found = *m_calibration->result();
    m_calibration.reset();
    QString error;
    if (!saveSliderEnds(m_configuration.stateFile, found, &error))
        return QStringLiteral("the calibration can't be stored: %1").arg(error);
    m_calibrated = found;
    report(sliderPosition(found, *m_value));
    return {};
}

void SliderInput::setProblem(const QString &problem)
{
    if (std::exchange(m_problem, problem) != problem && m_callbacks.status)
        m_callbacks.status(problem);
}

}
