// The part "tbar" of a board profile.

#include "profile/profilereader.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <libevdev/libevdev.h>

namespace panelhost {

namespace {

constexpr int MaxReadingsPerSecond = 1000;
constexpr double MaxTolerance = 0.5;
constexpr int MaxRaw = 1'000'000'000;

bool has(const YamlReader::Entries &entries, const char *name)
{
    return std::any_of(entries.begin(), entries.end(),
                       [name](const auto &entry) { return entry.first.text() == QLatin1String(name); });
}

std::optional<SliderEnds> readRange(ProfileReader &reader, const YamlNode &node)
{
    const auto items = node.items();
    if (items.size() != 2) {
        reader.yaml.errorExpected(node, QStringLiteral("the values at bottom and top, such as [0, 4095]"));
        return std::nullopt;
    }
    const auto bottom = reader.yaml.integer(items.at(0), -MaxRaw, MaxRaw);
    const auto top = reader.yaml.integer(items.at(1), -MaxRaw, MaxRaw);
    if (!bottom || !top)
        return std::nullopt;
    if (*bottom == *top)
        reader.yaml.error(node, QStringLiteral("the values at bottom and top must be different"));
    return SliderEnds{*bottom, *top};
}

QString readChannelName(ProfileReader &reader, const YamlNode &node)
{
    static const QRegularExpression form(QStringLiteral("^[a-z]+\\d*(-[a-z]+\\d+)?$"));
    if (form.match(YamlReader::scalar(node)).hasMatch())
        return YamlReader::scalar(node);
    reader.yaml.errorExpected(node, QStringLiteral("a channel such as voltage1"));
    return {};
}

void readChannel(ProfileReader &reader, const YamlNode &node, SliderInput::IioChannel &channel)
{
    const auto entries = reader.yaml.map(
        node, {QStringLiteral("device"), QStringLiteral("channel"), QStringLiteral("rate"), QStringLiteral("events")});
    for (const auto &[key, value] : entries) {
        if (key.text() == QLatin1String("device"))
            channel.device = reader.yaml.text(value, QStringLiteral("the name of an IIO device")).value_or(QString());
        else if (key.text() == QLatin1String("channel"))
            channel.channel = readChannelName(reader, value);
        else if (key.text() == QLatin1String("events"))
            channel.usesEvents = reader.yaml.flag(value).value_or(true);
        else
            channel.readingsPerSecond =
                reader.yaml.integer(value, 1, MaxReadingsPerSecond).value_or(channel.readingsPerSecond);
    }
    if (node.isMap() && (!has(entries, "device") || !has(entries, "channel")))
        reader.yaml.error(node, QStringLiteral("an IIO channel needs \"device\" and \"channel\""));
}

void readOption(ProfileReader &reader, const YamlReader::Entry &entry)
{
    TBarConfiguration &tbar = reader.board.tbar;
    SliderInput::Configuration &slider = tbar.slider;
    const auto &[key, value] = entry;
    const std::string name = key.text().toStdString();
    if (name == "type") {
        const auto type = reader.yaml.word(value, {QStringLiteral("slider"), QStringLiteral("fader")});
        tbar.type = type == QStringLiteral("fader") ? TBarType::Fader : TBarType::Slider;
    } else if (name == "device") {
        tbar.input.device = readInputDevice(reader, value).value_or(InputDeviceSelector());
    } else if (name == "axis") {
        tbar.input.axis = readEventCode(reader, value, EV_ABS);
    } else if (name == "iio") {
        slider.iio = SliderInput::IioChannel();
        readChannel(reader, value, *slider.iio);
    } else if (name == "range") {
        slider.range = readRange(reader, value);
    } else if (name == "tolerance") {
        slider.tolerance = reader.yaml.number(value, 0, MaxTolerance).value_or(slider.tolerance);
    } else if (name == "resolution") {
        slider.resolution = reader.yaml.number(value, 0, MaxTolerance).value_or(slider.resolution);
    }
}

}

void readTBar(ProfileReader &reader, const YamlNode &value)
{
    TBarConfiguration &tbar = reader.board.tbar;
    tbar.where = reader.where(value);
    tbar.slider.stateFile = QDir(reader.board.stateDirectory).filePath(QStringLiteral("tbar.json"));
    const auto entries = reader.yaml.map(value,
                                         {QStringLiteral("type"), QStringLiteral("device"), QStringLiteral("axis"),
                                          QStringLiteral("iio"), QStringLiteral("range"), QStringLiteral("tolerance"),
                                          QStringLiteral("resolution")});
    for (const auto &entry : entries)
        readOption(reader, entry);
    const bool hasAxis = has(entries, "device") && has(entries, "axis");
    const bool hasAnyAxis = has(entries, "device") || has(entries, "axis");
    if (!value.isMap() || entries.size() != value.entries().size())
        return;
    if (has(entries, "iio") ? hasAnyAxis : !hasAxis)
        reader.yaml.error(value, QStringLiteral("a T-Bar needs either \"device\" and \"axis\", or \"iio\""));
    else if (has(entries, "iio") && !has(entries, "range"))
        reader.yaml.error(value, QStringLiteral("an IIO channel states no limits; the T-Bar needs \"range\""));
}

}
