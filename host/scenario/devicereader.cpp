#include "scenario/devicereader.h"

#include "scenario/stepreader.h"
#include "session/devicenames.h"
#include "yaml/limits.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

constexpr double MaxTbarTolerance = 0.5; // half of the travel: each position is at an end

QStringList optionNames()
{
    return {QStringLiteral("tbar"),
            QStringLiteral("tbar-tolerance"),
            QStringLiteral("lcd"),
            QStringLiteral("language"),
            QStringLiteral("net-ports"),
            QStringLiteral("usb-ports"),
            QStringLiteral("changed-on-subscribe"),
            QStringLiteral("factory-mode"),
            QStringLiteral("link-delay"),
            QStringLiteral("calibration"),
            QStringLiteral("usb-stick")};
}

QStringList preparationNames()
{
    return {QStringLiteral("plugged"), QStringLiteral("blocked"), QStringLiteral("faults")};
}

}

// The numbers of ports are read first, because plugged ports must exist.
void DeviceReader::read(const YamlNode &node)
{
    if (!node.isDefined() || node.isNull())
        return;
    const auto entries = m_reader.map(node, optionNames() + preparationNames());
    for (const auto &entry : entries)
        readOption(entry);
    for (const auto &entry : entries)
        readPreparation(entry);
}

void DeviceReader::readOption(const YamlReader::Entry &entry)
{
    auto &device = m_scenario.device;
    const std::string name = entry.first.text().toStdString();
    const auto &value = entry.second;
    if (name == "tbar") {
        const auto kind = m_reader.word(value, {QStringLiteral("slider"), QStringLiteral("fader")});
        device.tbarType = kind == QStringLiteral("fader") ? TBarType::Fader : TBarType::Slider;
    } else if (name == "tbar-tolerance") {
        device.tbarTolerance = m_reader.number(value, 0, MaxTbarTolerance).value_or(device.tbarTolerance);
    } else if (name == "lcd") {
        readSize(value);
    } else if (name == "language") {
        device.language = m_reader.word(value, deviceNamesOf(device).languages).value_or(device.language);
    } else if (name == "changed-on-subscribe") {
        device.changedOnSubscribe = m_reader.flag(value).value_or(device.changedOnSubscribe);
    } else if (name == "factory-mode") {
        device.startsInFactoryMode = m_reader.flag(value).value_or(device.startsInFactoryMode);
    } else if (name == "link-delay") {
        readLinkDelay(value);
    } else if (name == "calibration") {
        const auto source = m_reader.word(value, {QStringLiteral("simulated"), QStringLiteral("recorded")});
        device.hasCalibrationResults = source == QStringLiteral("recorded");
    } else if (name == "usb-stick") {
        readUsbStick(value);
    } else if (name == "net-ports") {
        device.netPorts = m_reader.integer(value, 0, limits::Ports).value_or(device.netPorts);
    } else if (name == "usb-ports") {
        device.usbPorts = m_reader.integer(value, 0, limits::Ports).value_or(device.usbPorts);
    }
}

void DeviceReader::readPreparation(const YamlReader::Entry &entry)
{
    const auto deviceNames = deviceNamesOf(m_scenario.device);
    StepReader steps(m_reader, deviceNames);
    const std::string name = entry.first.text().toStdString();
    const auto &value = entry.second;
    if (name == "plugged") {
        m_scenario.preparation += steps.portActions(value, OperatorAction::Kind::Plug, deviceNames.ports());
    } else if (name == "blocked") {
        m_scenario.preparation += steps.portActions(value, OperatorAction::Kind::Block, deviceNames.usbPorts);
    } else if (name == "faults") {
        if (!value.isSequence())
            return m_reader.errorExpected(value, QStringLiteral("a list of faults"));
        for (const auto &node : value.items()) {
            if (const auto fault = steps.initialFault(node))
                m_scenario.device.faults.append(*fault);
        }
    }
}

void DeviceReader::readLinkDelay(const YamlNode &node)
{
    const auto delay = m_reader.duration(node);
    if (delay && *delay > limits::LinkDelay)
        m_reader.errorExpected(node, QStringLiteral("at most %1 ms").arg(limits::LinkDelay));
    else if (delay)
        m_scenario.device.linkDelay = static_cast<int>(*delay);
}

// A directory is relative to the scenario.
void DeviceReader::readUsbStick(const YamlNode &node)
{
    const QString text = node.isScalar() ? YamlReader::scalar(node) : QString();
    if (text.isEmpty())
        return m_reader.errorExpected(node, QStringLiteral("none, temporary or a directory"));
    const bool isWord = text == Session::noUsbStick || text == Session::temporaryUsbStick;
    m_scenario.device.usbStick = isWord ? text : QFileInfo(m_reader.file()).absoluteDir().absoluteFilePath(text);
}

void DeviceReader::readSize(const YamlNode &node)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{3,4})x(\\d{3,4})$"));
    const auto match = form.match(node.isScalar() ? YamlReader::scalar(node) : QString());
    if (match.hasMatch())
        m_scenario.device.lcdSize = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    else
        m_reader.errorExpected(node, QStringLiteral("a size in pixels such as 800x480"));
}

}
