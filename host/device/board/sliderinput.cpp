#include "device/board/sliderinput.h"

#include "device/calibrationcommand.h"
#include "output/systemfile.h"

#include <QtCore/QFile>

#include <array>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr double PositionSteps = 1000;

constexpr long NanosecondsPerSecond = 1'000'000'000;

// Returns the file's content, at most as much as an attribute with a number has; sets @p number to the errno value of a
// failure.
QByteArray readAttribute(const QString &path, int *number)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    std::array<char, 64> buffer = {};
    const ssize_t size = descriptor < 0 ? -1 : ::read(descriptor, buffer.data(), buffer.size());
    *number = size < 0 ? errno : 0;
    if (descriptor >= 0)
        ::close(descriptor);
    return QByteArray(buffer.data(), size < 0 ? 0 : static_cast<int>(size));
}

}

// Reads the channel at a fixed rate as long as the device is there.
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

    int fd() const override { return m_timer; }
    void ready() override;

private:
    void read();
    void lose(const QString &problem);
    void setRate(int readingsPerSecond);

    SliderInput &m_slider;
    const IioChannel m_channel;
    const int m_timer;
    UdevMonitor m_monitor;
    QString m_attribute; // path; empty as long as the device is missing
};

void SliderInput::IioReader::find()
{
    QString directory;
    visitDevices(m_monitor.context(), "iio", [&](udev_device &device) {
        if (directory.isEmpty() && deviceAttribute(device, "name") == m_channel.device)
            directory = QString::fromLocal8Bit(udev_device_get_syspath(&device));
    });
    if (directory.isEmpty())
        return lose(
            QStringLiteral("There is no IIO device named \"%1\". \"panelhost probe\" lists those that there are.")
                .arg(m_channel.device));
    const bool wasMissing = m_attribute.isEmpty();
    m_attribute = QStringLiteral("%1/in_%2_raw").arg(directory, m_channel.channel);
    if (wasMissing)
        setRate(m_channel.readingsPerSecond);
    read();
}

void SliderInput::IioReader::ready()
{
    quint64 expirations = 0;
    if (::read(m_timer, &expirations, sizeof expirations) == sizeof expirations && !m_attribute.isEmpty())
        read();
}

void SliderInput::IioReader::read()
{
    int number = 0;
    const QByteArray text = readAttribute(m_attribute, &number).trimmed();
    if (number == ENOENT || number == ENODEV || number == ENXIO)
        return lose(fileError(m_attribute, number) + QLatin1Char('.'));
    if (number != 0)
        return m_slider.setProblem(fileError(m_attribute, number) + QLatin1Char('.'));
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        return m_slider.setProblem(
            QStringLiteral("%1: found \"%2\", expected a whole number.").arg(m_attribute, QString::fromLatin1(text)));
    m_slider.setProblem({});
    m_slider.update(value);
}

void SliderInput::IioReader::lose(const QString &problem)
{
    m_attribute.clear();
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

QString SliderInput::calibrate(int command)
{
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
