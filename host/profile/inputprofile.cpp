// The parts "keys" and "navigation" of a board profile.

#include "profile/profilereader.h"

#include "operator/sendinput.h"

#include <algorithm>
#include <libevdev/libevdev.h>

namespace panelhost {

namespace {

const QString Device = QStringLiteral("device");
const QString Events = QStringLiteral("events");

using Selectors = QMap<QString, InputDeviceSelector::By>;

const Selectors &selectors()
{
    static const Selectors names = {{QStringLiteral("name"), InputDeviceSelector::By::Name},
                                    {QStringLiteral("path"), InputDeviceSelector::By::Path},
                                    {QStringLiteral("property"), InputDeviceSelector::By::Property}};
    return names;
}

bool isValid(const InputDeviceSelector &selector)
{
    if (selector.by == InputDeviceSelector::By::Path)
        return selector.value.startsWith(QLatin1Char('/'));
    return selector.by == InputDeviceSelector::By::Name ? !selector.value.isEmpty()
                                                        : selector.value.indexOf(QLatin1Char('=')) > 0;
}

// Reads one device and calls @p readEvent for each of its events.
template <class ReadEvent>
void readDevice(ProfileReader &reader, const QString &part, const YamlNode &node, ReadEvent readEvent)
{
    InputConfiguration input;
    input.part = part;
    input.where = reader.where(node);
    bool hasDevice = false;
    bool hasEvents = false;
    const auto entries = reader.yaml.map(node, {Device, Events});
    for (const auto &[key, value] : entries) {
        if (YamlReader::scalar(key) == Device) {
            hasDevice = true;
            input.input.device = readInputDevice(reader, value).value_or(InputDeviceSelector());
            continue;
        }
        hasEvents = true;
        const auto events = reader.yaml.freeMap(value);
        for (const auto &[event, meaning] : events)
            readEvent(input.input, event, meaning);
    }
    if (node.isMap() && entries.size() == node.entries().size() && !(hasDevice && hasEvents))
        reader.yaml.error(node, QStringLiteral("an input device needs \"device\" and \"events\""));
    reader.board.inputs << input;
}

// A part is one device or a list of them.
template <class ReadEvent>
void readDevices(ProfileReader &reader, const QString &part, const YamlNode &value, ReadEvent readEvent)
{
    if (!value.isSequence())
        return readDevice(reader, part, value, readEvent);
    const QVector<YamlNode> nodes = value.items();
    if (nodes.isEmpty())
        reader.yaml.errorExpected(value, QStringLiteral("an input device or a list of them"));
    for (const YamlNode &node : nodes)
        readDevice(reader, part, node, readEvent);
}

bool isKeyUsed(const ProfileReader &reader, const EvdevInput::Configuration &input, int halKey)
{
    const auto uses = [halKey](const EvdevInput::Configuration &each) {
        return std::find(each.keys.begin(), each.keys.end(), halKey) != each.keys.end();
    };
    return uses(input) || std::any_of(reader.board.inputs.begin(), reader.board.inputs.end(), [&](const auto &each) {
               return uses(each.input);
           });
}

void readNavigationEvent(ProfileReader &reader, EvdevInput::Configuration &input, const YamlNode &event,
                         const YamlNode &meaning)
{
    QString name = YamlReader::scalar(event);
    EvdevInput::Navigation navigation = {EV_KEY, 0, 0, {}};
    if (name.endsWith(QLatin1Char('+')) || name.endsWith(QLatin1Char('-'))) {
        navigation.direction = name.endsWith(QLatin1Char('+')) ? 1 : -1;
        name.chop(1);
        navigation.type = name.startsWith(QLatin1String("ABS_")) ? EV_ABS : EV_REL;
    }
    const int code = libevdev_event_code_from_name(navigation.type, name.toUtf8().constData());
    const auto key = reader.yaml.word(meaning, navigationKeys());
    if (code < 0)
        return reader.yaml.errorExpected(
            event, QStringLiteral("an event such as KEY_ENTER, REL_DIAL+, REL_DIAL-, ABS_HAT0X+ or ABS_HAT0X-"));
    navigation.code = static_cast<unsigned>(code);
    navigation.key = key.value_or(QString());
    input.navigation << navigation;
}

}

std::optional<InputDeviceSelector> readInputDevice(ProfileReader &reader, const YamlNode &node)
{
    const QString expected = QStringLiteral(
        "a device such as {name: \"gpio-keys\"}, {path: /dev/input/event3} or {property: \"ID_PATH=platform-keys\"}");
    const auto entries = node.isMap() ? node.entries() : YamlNode::Entries();
    if (entries.size() == 1 && selectors().contains(YamlReader::scalar(entries.first().first))) {
        const InputDeviceSelector selector = {selectors().value(YamlReader::scalar(entries.first().first)),
                                              YamlReader::scalar(entries.first().second)};
        if (isValid(selector))
            return selector;
    }
    reader.yaml.errorExpected(node, expected);
    return std::nullopt;
}

std::optional<unsigned> readEventCode(ProfileReader &reader, const YamlNode &node, unsigned type)
{
    const QString text = YamlReader::scalar(node);
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const int code = isNumber ? number : libevdev_event_code_from_name(type, text.toUtf8().constData());
    if (code >= 0 && code <= libevdev_event_type_get_max(type))
        return static_cast<unsigned>(code);
    reader.yaml.errorExpected(node,
                              type == EV_KEY ? QStringLiteral("a key code such as KEY_F1, or its number")
                                             : QStringLiteral("an axis such as ABS_THROTTLE, or its number"));
    return std::nullopt;
}

void readKeys(ProfileReader &reader, const YamlNode &value)
{
    readDevices(reader, QStringLiteral("keys"), value,
                [&reader](EvdevInput::Configuration &input, const YamlNode &event, const YamlNode &meaning) {
                    const auto code = readEventCode(reader, event, EV_KEY);
                    const auto halKey = reader.key(meaning);
                    if (!code || !halKey)
                        return;
                    if (isKeyUsed(reader, input, *halKey))
                        reader.yaml.error(meaning, QStringLiteral("the key %1 has two codes").arg(meaning.text()));
                    input.keys.insert(*code, *halKey);
                });
}

void readNavigation(ProfileReader &reader, const YamlNode &value)
{
    readDevices(reader, QStringLiteral("navigation"), value,
                [&reader](EvdevInput::Configuration &input, const YamlNode &event, const YamlNode &meaning) {
                    readNavigationEvent(reader, input, event, meaning);
                });
}

}
