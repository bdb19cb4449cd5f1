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

    Expectations expectations(const YamlNode &node);

private:
    void seen(const YamlNode &value, Expectation &expectation);
    void journal(const YamlNode &value, Expectation &expectation);
    void journalEntry(const YamlReader::Entry &entry, Expectation &expectation);
    void conditions(const YamlNode &node, bool isNegated, QVector<Condition> &conditions);
    void condition(const YamlNode &node, Condition::Operator op, bool isNegated, QVector<Condition> &conditions);

    YamlReader &m_reader;
    const Vocabulary &m_vocabulary;
    int m_depth = 0;
};

}
