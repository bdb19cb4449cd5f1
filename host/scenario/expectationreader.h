#pragma once

#include "scenario/expectation.h"
#include "scenario/vocabulary.h"
#include "scenario/yamlreader.h"

namespace panelhost {

/// Reads what an expect step asks for.
class ExpectationReader
{
public:
    ExpectationReader(YamlReader &reader, const Vocabulary &vocabulary) : m_reader(reader), m_vocabulary(vocabulary) {}

    Expectations expectations(const YAML::Node &node);

private:
    void seen(const YAML::Node &value, Expectation &expectation);
    void journal(const YAML::Node &value, Expectation &expectation);
    void journalEntry(const YamlReader::Entry &entry, Expectation &expectation);
    void conditions(const YAML::Node &node, bool isNegated, QVector<Condition> &conditions);
    void condition(const YAML::Node &node, Condition::Operator op, bool isNegated, QVector<Condition> &conditions);

    YamlReader &m_reader;
    const Vocabulary &m_vocabulary;
    int m_depth = 0;
};

}
