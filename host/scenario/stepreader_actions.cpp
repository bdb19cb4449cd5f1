// The steps of StepReader that perform operator actions.

#include "device/device.h"
#include "operator/sendinput.h"
#include "operator/unitnumber.h"
#include "scenario/stepreader.h"
#include "yaml/limits.h"

#include <algorithm>

namespace panelhost {

namespace {

const QStringList Sides{QStringLiteral("left"), QStringLiteral("right")};

bool hasKeys(const YamlNode &map, const QStringList &names)
{
    const auto entries = map.entries();
    return std::all_of(names.begin(), names.end(), [&entries](const QString &name) {
        return std::any_of(entries.begin(), entries.end(),
                           [&name](const auto &entry) { return YamlReader::scalar(entry.first) == name; });
    });
}

/// Reads a single value, or each of a list.
template <class Read>
void forEach(const YamlNode &value, Read &&read)
{
    if (!value.isSequence())
        return read(value);
    for (const auto &node : value.items())
        read(node);
}

}

std::optional<int> StepReader::key(const YamlNode &node)
{
    const auto halKey = node.isScalar() ? m_deviceNames.halKey(YamlReader::scalar(node)) : std::nullopt;
    if (!halKey)
        m_reader.errorExpected(node,
                               QStringLiteral("a key, by name or hal key: one of ")
                                   + QStringList(m_deviceNames.keys.keys()).join(QStringLiteral(", ")),
                               m_deviceNames.keys.keys());
    return halKey;
}

void StepReader::navigate(const YamlNode &value, Step &step)
{
    forEach(value, [&](const YamlNode &node) {
        if (const auto key = m_reader.word(node, navigationKeys()))
            step.actions.append({OperatorAction::Kind::Navigate, {{QStringLiteral("key"), *key}}});
    });
}

void StepReader::soft(const YamlNode &value, Step &step)
{
    if (const auto side = m_reader.word(value, Sides))
        step.actions.append({OperatorAction::Kind::Soft, {{QStringLiteral("side"), *side}}});
}

void StepReader::keyActions(const YamlNode &value, OperatorAction::Kind kind, Step &step)
{
    forEach(value, [&](const YamlNode &node) {
        if (const auto halKey = key(node))
            step.actions.append({kind, {{QStringLiteral("key"), *halKey}}});
    });
}

void StepReader::press(const YamlNode &value, Step &step)
{
    keyActions(value, OperatorAction::Kind::Press, step);
}

void StepReader::hold(const YamlNode &value, Step &step)
{
    keyActions(value, OperatorAction::Kind::Hold, step);
}

void StepReader::release(const YamlNode &value, Step &step)
{
    keyActions(value, OperatorAction::Kind::Release, step);
}

void StepReader::touchAt(const YamlNode &value, OperatorAction::Kind kind, Step &step)
{
    QVariantMap arguments;
    for (const auto &entry : m_reader.map(value, {QStringLiteral("x"), QStringLiteral("y")})) {
        if (const auto pixel = m_reader.integer(entry.second, 0, limits::TouchPixel))
            arguments.insert(YamlReader::scalar(entry.first), *pixel);
    }
    if (value.isMap() && value.entries().size() < 2)
        m_reader.error(value, QStringLiteral("a touch needs x and y"));
    step.actions.append({kind, arguments});
}

void StepReader::touch(const YamlNode &value, Step &step)
{
    touchAt(value, OperatorAction::Kind::Touch, step);
}

void StepReader::touchDown(const YamlNode &value, Step &step)
{
    touchAt(value, OperatorAction::Kind::TouchDown, step);
}

void StepReader::touchMove(const YamlNode &value, Step &step)
{
    forEach(value, [&](const YamlNode &node) { touchAt(node, OperatorAction::Kind::TouchMove, step); });
}

void StepReader::touchUp(const YamlNode &value, Step &step)
{
    if (!value.isNull())
        return m_reader.errorExpected(value, QStringLiteral("no value"));
    step.actions.append({OperatorAction::Kind::TouchUp, {}});
}

void StepReader::tbar(const YamlNode &value, Step &step)
{
    static const QMap<QString, double> ends{{QStringLiteral("bottom"), 0.0}, {QStringLiteral("top"), 1.0}};
    const auto end = value.isScalar() ? ends.constFind(YamlReader::scalar(value)) : ends.constEnd();
    const auto position = end != ends.constEnd() ? std::optional<double>(*end) : m_reader.number(value, 0, 1);
    if (position)
        step.actions.append({OperatorAction::Kind::TBar, {{QStringLiteral("position"), *position}}});
}

QVector<OperatorAction> StepReader::portActions(const YamlNode &node, OperatorAction::Kind kind,
                                                const QStringList &ports)
{
    QVector<OperatorAction> actions;
    forEach(node, [&](const YamlNode &one) {
        if (const auto port = m_reader.word(one, ports))
            actions.append({kind, {{QStringLiteral("port"), *port}}});
    });
    return actions;
}

// A USB device with its speed, or ports.
void StepReader::plug(const YamlNode &value, Step &step)
{
    if (value.isMap())
        return plugUsb(value, step);
    step.actions = portActions(value, OperatorAction::Kind::Plug, m_deviceNames.ports());
}

void StepReader::plugUsb(const YamlNode &value, Step &step)
{
    const QStringList names{QStringLiteral("port"), QStringLiteral("speed")};
    QVariantMap arguments;
    for (const auto &entry : m_reader.map(value, names)) {
        const QString name = YamlReader::scalar(entry.first);
        if (name == names.at(1)) {
            if (const auto speed = m_reader.number(entry.second, 0, limits::UsbSpeed))
                arguments.insert(name, *speed);
        } else if (const auto port = m_reader.word(entry.second, m_deviceNames.usbPorts)) {
            arguments.insert(name, *port);
        }
    }
    if (!hasKeys(value, names))
        m_reader.error(value, QStringLiteral("a plug with a speed needs port and speed"));
    step.actions.append({OperatorAction::Kind::Plug, arguments});
}

void StepReader::unplug(const YamlNode &value, Step &step)
{
    step.actions = portActions(value, OperatorAction::Kind::Unplug, m_deviceNames.ports());
}

void StepReader::block(const YamlNode &value, Step &step)
{
    step.actions = portActions(value, OperatorAction::Kind::Block, m_deviceNames.usbPorts);
}

void StepReader::unblock(const YamlNode &value, Step &step)
{
    step.actions = portActions(value, OperatorAction::Kind::Unblock, m_deviceNames.usbPorts);
}

void StepReader::calibration(const YamlNode &value, Step &step)
{
    const QStringList names{QStringLiteral("command"), QStringLiteral("ok"), QStringLiteral("message")};
    QVariantMap arguments{{names.at(2), QString()}};
    for (const auto &entry : m_reader.map(value, names)) {
        const QString name = YamlReader::scalar(entry.first);
        if (name == names.at(0)) {
            if (const auto command = m_reader.integer(entry.second, 0, limits::CalibrationCommand))
                arguments.insert(name, *command);
        } else if (name == names.at(1)) {
            if (const auto ok = m_reader.flag(entry.second))
                arguments.insert(name, *ok);
        } else if (const auto message = m_reader.text(entry.second, QStringLiteral("a text"))) {
            arguments.insert(name, *message);
        }
    }
    if (value.isMap() && !hasKeys(value, {names.at(0), names.at(1)}))
        m_reader.error(value, QStringLiteral("a calibration needs command and ok"));
    step.actions.append({OperatorAction::Kind::Calibration, arguments});
}

void StepReader::part(const YamlNode &value, Step &step)
{
    const QStringList names{QStringLiteral("name"), QStringLiteral("present")};
    QVariantMap arguments;
    for (const auto &entry : m_reader.map(value, names)) {
        const QString name = YamlReader::scalar(entry.first);
        if (name == names.at(1)) {
            if (const auto present = m_reader.flag(entry.second))
                arguments.insert(name, *present);
        } else if (const auto part = m_reader.word(entry.second, boardParts())) {
            arguments.insert(name, *part);
        }
    }
    if (value.isMap() && !hasKeys(value, names))
        m_reader.error(value, QStringLiteral("a part needs name and present"));
    step.actions.append({OperatorAction::Kind::Part, arguments});
}

void StepReader::language(const YamlNode &value, Step &step)
{
    if (const auto code = m_reader.word(value, m_deviceNames.languages))
        step.actions.append({OperatorAction::Kind::Language, {{QStringLiteral("code"), *code}}});
}

std::optional<QString> readUnitNumber(YamlReader &reader, const YamlNode &value)
{
    const auto number = reader.text(value, QStringLiteral("the serial number of a unit"));
    const QString problem = number ? unitNumberProblem(*number) : QString();
    if (!problem.isEmpty())
        reader.error(value, problem);
    return problem.isEmpty() ? number : std::nullopt;
}

void StepReader::unit(const YamlNode &value, Step &step)
{
    if (const auto number = readUnitNumber(m_reader, value))
        step.actions.append({OperatorAction::Kind::Unit, {{QStringLiteral("unit"), *number}}});
}

void StepReader::factoryMode(const YamlNode &value, Step &step)
{
    const auto way = m_reader.word(value, {QStringLiteral("enter"), QStringLiteral("exit")});
    if (way)
        step.actions.append({*way == QLatin1String("enter") ? OperatorAction::Kind::EnterFactoryMode
                                                            : OperatorAction::Kind::ExitFactoryMode,
                             {}});
}

}
