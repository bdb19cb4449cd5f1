#include "device/board/slidercalibration.h"

#include "device/calibrationcommand.h"
#include "output/replacefile.h"
#include "output/systemfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace panelhost {

namespace {

// The part of the range, at each side, in which an end can be.
constexpr double EndZone = 0.25;

QString percent(double position)
{
    return QStringLiteral("%1 %").arg(qRound(position * 100));
}

QString endName(bool isTop)
{
    return tbarEndName(isTop ? TBarEnd::Top : TBarEnd::Bottom);
}

std::optional<int> integer(const QJsonValue &value)
{
    const double number = value.toDouble(NAN);
    if (!(std::abs(number) <= 1e9) || number != std::floor(number))
        return std::nullopt;
    return static_cast<int>(number);
}

}

double sliderPosition(const SliderEnds &ends, int value)
{
    if (ends.top == ends.bottom)
        return 0;
    const double travel = static_cast<double>(ends.top) - ends.bottom;
    return std::clamp((static_cast<double>(value) - ends.bottom) / travel, 0.0, 1.0);
}

std::optional<SliderEnds> loadSliderEnds(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.exists())
        return std::nullopt;
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    const auto bottom = integer(object.value(QStringLiteral("bottom")));
    const auto top = integer(object.value(QStringLiteral("top")));
    if (bottom && top && *bottom != *top)
        return SliderEnds{*bottom, *top};
    *error = QStringLiteral("%1: expected {\"bottom\": NUMBER, \"top\": NUMBER} with two different whole numbers. "
                            "Calibrate the T-Bar to write the file anew.")
                 .arg(path);
    return std::nullopt;
}

bool saveSliderEnds(const QString &path, const SliderEnds &ends, QString *error)
{
    const QString directory = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(directory)) {
        *error = fileError(directory, errno);
        return false;
    }
    const QJsonObject object = {{QStringLiteral("bottom"), ends.bottom}, {QStringLiteral("top"), ends.top}};
    return replaceFileDurably(path, QJsonDocument(object).toJson(), error);
}

QString SliderCalibration::step(int command, int value)
{
    switch (command) {
    case BeginCalibration:
        m_top.reset();
        m_bottom.reset();
        m_result.reset();
        return {};
    case 1:
        return measure(&SliderCalibration::m_top, true, value);
    case 0:
        return measure(&SliderCalibration::m_bottom, false, value);
    case 4:
        return finish(value);
    default:
        return {};
    }
}

// Returns the distance in units of position.
double SliderCalibration::distance(int left, int right) const
{
    const double travel = static_cast<double>(m_range.top) - m_range.bottom;
    return std::abs((static_cast<double>(left) - right) / travel);
}

QString SliderCalibration::measure(std::optional<int> SliderCalibration::*end, bool isTop, int value)
{
    const double position = sliderPosition(m_range, value);
    if (isTop ? position < 1 - EndZone : position > EndZone)
        return QStringLiteral("the T-Bar is at %1 of its range, it must be at the %2 (%3 to %4)")
            .arg(percent(position), endName(isTop), percent(isTop ? 1 - EndZone : 0), percent(isTop ? 1 : EndZone));
    std::optional<int> &measured = this->*end;
    if (measured && distance(*measured, value) > m_tolerance)
        return QStringLiteral("the %1 was measured at %2 and is at %3 now")
            .arg(endName(isTop))
            .arg(*measured)
            .arg(value);
    measured = value;
    return {};
}

QString SliderCalibration::finish(int value)
{
    if (!m_top || !m_bottom)
        return QStringLiteral("the %1 was not measured").arg(endName(!m_top));
    if (distance(*m_bottom, value) > m_tolerance)
        return QStringLiteral("the T-Bar has left the bottom: it was measured at %1 and is at %2 now")
            .arg(*m_bottom)
            .arg(value);
    m_result = SliderEnds{*m_bottom, *m_top};
    return {};
}

}
