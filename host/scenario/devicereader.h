#pragma once

#include "scenario/scenario.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// Reads the description of the device in a scenario.
class DeviceReader
{
public:
    DeviceReader(YamlReader &reader, Scenario &scenario) : m_reader(reader), m_scenario(scenario) {}

    /// Reads @p node. Changes nothing if @p node is undefined.
    void read(const YamlNode &node);

private:
    void readOption(const YamlReader::Entry &entry);
    void readPreparation(const YamlReader::Entry &entry);
    void readLinkDelay(const YamlNode &node);
    void readSize(const YamlNode &node);
    void readUsbStick(const YamlNode &node);

    YamlReader &m_reader;
    Scenario &m_scenario;
};

}
