// The faults in steps and in the description of the device.

#include "device/faults.h"
#include "scenario/stepreader.h"
#include "scenario/steptext.h"

namespace panelhost {

namespace {

QStringList faultNames()
{
    QStringList names;
    for (const auto &fault : Faults::all())
        names.append(fault.name);
    return names;
}

YamlNode entryOf(const YamlNode &map, const char *name)
{
    for (const auto &entry : map.entries()) {
        if (entry.first.isScalar() && entry.first.text() == QLatin1String(name))
            return entry.second;
    }
    return {};
}

}

std::optional<OperatorAction> StepReader::fault(const YamlNode &node)
{
    const auto nameNode = node.isMap() ? entryOf(node, "name") : node;
    if (node.isMap() && !nameNode.isDefined()) {
        m_reader.error(node, QStringLiteral("a fault needs a name: one of ") + faultNames().join(QStringLiteral(", ")));
        return std::nullopt;
    }
    const auto name = m_reader.word(nameNode, faultNames());
    if (!name)
        return std::nullopt;
    const auto &info = *Faults::find(*name);
    QVariantMap arguments{{QStringLiteral("name"), *name}, {QStringLiteral("on"), true}};
    if (node.isMap()) {
        for (const auto &entry : m_reader.map(node, QStringList{QStringLiteral("name"), activeWord()} + info.arguments))
            faultArgument(info, entry, arguments);
    }
    for (const auto &needed : info.arguments) {
        if (arguments[QStringLiteral("on")].toBool() && !arguments.contains(needed))
            m_reader.error(node, QStringLiteral("the fault %1 needs %2").arg(info.name, needed));
    }
    return OperatorAction{OperatorAction::Kind::Fault, arguments};
}

std::optional<Session::InitialFault> StepReader::initialFault(const YamlNode &node)
{
    const auto action = fault(node);
    if (!action)
        return std::nullopt;
    auto arguments = action->arguments;
    const auto name = arguments.take(QStringLiteral("name")).toString();
    arguments.remove(QStringLiteral("on"));
    return Session::InitialFault{name, arguments};
}

void StepReader::faultArgument(const FaultInfo &fault, const YamlReader::Entry &entry, QVariantMap &arguments)
{
    const auto name = YamlReader::scalar(entry.first);
    std::optional<QVariant> value;
    if (name == activeWord()) {
        if (const auto active = m_reader.flag(entry.second))
            arguments.insert(QStringLiteral("on"), *active);
        return;
    }
    if (name == QLatin1String("key"))
        value = key(entry.second);
    else if (name == QLatin1String("port"))
        value = m_reader.word(entry.second, m_deviceNames.ports());
    else if (name == QLatin1String("service"))
        value = m_reader.word(entry.second, Faults::allowedValues(name));
    else if (name == QLatin1String("step"))
        value = m_reader.integer(entry.second, 1, Faults::allowedValues(name).size());
    else if (fault.arguments.contains(name))
        value = m_reader.text(entry.second, QStringLiteral("a value for %1").arg(name));
    arguments.insert(name, value.value_or(arguments.value(name)));
}

void StepReader::switchFault(const YamlNode &value, Step &step)
{
    if (const auto action = fault(value))
        step.actions.append(*action);
}

}
