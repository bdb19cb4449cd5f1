#pragma once

#include "scenario/scenario.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// Reads the description of the device that a scenario is played on.
class DeviceReader
{
public:
    DeviceReader(YamlReader &reader, Scenario &scenario) : m_reader(reader), m_scenario(scenario) {}

    /// @p node may be undefined: the device is as it comes.
    void read(const YamlNode &node);

private:
    void readOption(const YamlReader::Entry &entry);
    void readPreparation(const YamlReader::Entry &entry);
    void readSize(const YamlNode &node);

    YamlReader &m_reader;
    Scenario &m_scenario;
};

}
