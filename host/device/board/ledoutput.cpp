#include "device/board/ledoutput.h"

#include "device/board/savedoutputs.h"

namespace panelhost {

namespace {

constexpr char timer[] = "timer"; // the trigger

bool isSame(const LedOutputState &left, const LedOutputState &right)
{
    return left.percent == right.percent && left.period == right.period && left.red == right.red
        && left.green == right.green && left.blue == right.blue;
}

}

LedOutput::LedOutput(const QString &name, bool isMulticolor)
    : m_device(QStringLiteral("leds"), name), m_isMulticolor(isMulticolor)
{
}

bool LedOutput::open(QString *error)
{
    m_max = 0;
    if (!m_device.checkExists(error))
        return false;
    const auto max = m_device.readNumber("max_brightness", 1, error);
    if (!max || !m_device.checkWritable("brightness", error) || !m_device.checkWritable("trigger", error)
        || !checkTriggers(error) || (m_isMulticolor && !openMulticolor(error)))
        return false;
    m_max = *max;
    return true;
}

// The kernel lists all triggers and marks the active one with brackets.
bool LedOutput::checkTriggers(QString *error) const
{
    const auto triggers = m_device.read("trigger", error);
    if (!triggers)
        return false;
    const QByteArray words = ' ' + QByteArray(*triggers).replace('[', ' ').replace(']', ' ') + ' ';
    if (!triggers->contains('[') || words.contains(QByteArray(" ") + timer + ' '))
        return true;
    *error = QStringLiteral("%1 has no \"timer\", which makes the LED blink; load the kernel module ledtrig-timer")
                 .arg(m_device.path("trigger"));
    return false;
}

bool LedOutput::openMulticolor(QString *error)
{
    const auto order = m_device.read("multi_index", error);
    if (!order || !m_device.checkWritable("multi_intensity", error))
        return false;
    m_components = order->simplified().split(' ');
    return true;
}

void LedOutput::reset()
{
    m_max = 0;
    m_shown.reset();
}

bool LedOutput::show(const LedOutputState &state, QString *error)
{
    if (m_shown && isSame(*m_shown, state))
        return true;
    if ((m_max > 0 || open(error)) && writeAll(state, error)) {
        m_shown = state;
        return true;
    }
    reset();
    return false;
}

bool LedOutput::writeAll(const LedOutputState &state, QString *error)
{
    return writeColor(state, error) && (state.period > 0 ? writeBlink(state, error) : writeSteady(state, error));
}

bool LedOutput::writeColor(const LedOutputState &state, QString *error)
{
    if (!m_isMulticolor)
        return true;
    QList<QByteArray> values;
    for (const QByteArray &component : qAsConst(m_components)) {
        const bool isLit = (component == "red" && state.red) || (component == "green" && state.green)
            || (component == "blue" && state.blue);
        values << QByteArray::number(isLit ? m_max : 0);
    }
    return m_device.write("multi_intensity", values.join(' '), error);
}

bool LedOutput::hasTimer() const
{
    QString error;
    const auto triggers = m_device.read("trigger", &error);
    return triggers && activeTrigger(QString::fromUtf8(*triggers)) == QLatin1String(timer);
}

// The trigger blinks with the brightness that is set when it begins, and has the times as attributes of its own. It
// isn't set again, because its attributes would be new ones, for which the udev rule has to give the permission first.
bool LedOutput::writeBlink(const LedOutputState &state, QString *error)
{
    const int on = state.period / 2;
    return m_device.write("brightness", QByteArray::number(scaled(state.percent, m_max)), error)
        && (hasTimer() || m_device.write("trigger", timer, error))
        && m_device.write("delay_on", QByteArray::number(on), error)
        && m_device.write("delay_off", QByteArray::number(state.period - on), error);
}

bool LedOutput::writeSteady(const LedOutputState &state, QString *error)
{
    const bool hasNoTrigger = m_shown && m_shown->period == 0;
    return (hasNoTrigger || m_device.write("trigger", "none", error))
        && m_device.write("brightness", QByteArray::number(scaled(state.percent, m_max)), error);
}

BacklightOutput::BacklightOutput(const QString &name) : m_device(QStringLiteral("backlight"), name)
{
}

bool BacklightOutput::open(QString *error)
{
    if (!m_device.checkExists(error))
        return false;
    const auto max = m_device.readNumber("max_brightness", 1, error);
    m_max = max && m_device.checkWritable("brightness", error) ? *max : 0;
    return m_max > 0;
}

bool BacklightOutput::show(int percent, QString *error)
{
    if (m_shown == percent)
        return true;
    if ((m_max > 0 || open(error)) && m_device.write("brightness", QByteArray::number(scaled(percent, m_max)), error)) {
        m_shown = percent;
        return true;
    }
    reset();
    return false;
}

void BacklightOutput::reset()
{
    m_max = 0;
    m_shown.reset();
}

}
