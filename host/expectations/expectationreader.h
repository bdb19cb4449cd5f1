#pragma once

#include "expectations/expectation.h"
#include "session/devicenames.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// Reads the expectations of an expect step.
class ExpectationReader
{
public:
    ExpectationReader(YamlReader &reader, const DeviceNames &deviceNames) : m_reader(reader), m_deviceNames(deviceNames)
    {
    }

    Expectations expectations(const YamlNode &node);

private:
    void seen(const YamlNode &value, Expectation &expectation);
    void journal(const YamlNode &value, Expectation &expectation);
    void journalEntry(const YamlReader::Entry &entry, Expectation &expectation);
    void conditions(const YamlNode &node, bool isNegated, QVector<Condition> &conditions);
    void condition(const YamlNode &node, Condition::Comparison comparison, bool isNegated,
                   QVector<Condition> &conditions);

    YamlReader &m_reader;
    const DeviceNames &m_deviceNames;
    int m_depth = 0;
};

}
