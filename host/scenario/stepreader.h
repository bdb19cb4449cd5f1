#pragma once

#include "device/faults.h"
#include "scenario/scenario.h"
#include "scenario/vocabulary.h"
#include "scenario/yamlreader.h"

namespace panelhost {

/// Reads the steps of a scenario.
class StepReader
{
public:
    /// Reads the steps of another file, given by its path.
    using PartLoader = std::function<QVector<Step>(const QString &path, const YAML::Node &where)>;

    /// No scenario has more, with all the files that it uses.
    static constexpr int MaxSteps = 100000;

    StepReader(YamlReader &reader, const Vocabulary &vocabulary) : StepReader(reader, vocabulary, {}, m_ownCount) {}
    /// @p count goes up with each step that is read: the readers of one scenario's files share it.
    StepReader(YamlReader &reader, const Vocabulary &vocabulary, const PartLoader &loadPart, int &count)
        : m_reader(reader), m_vocabulary(vocabulary), m_loadPart(loadPart), m_count(count)
    {
    }

    /// The names of all steps, in the order in which messages list them.
    static QStringList stepNames();

    QVector<Step> steps(const YAML::Node &list);
    /// One fault to be switched, as a step or the device's description tells it.
    std::optional<Action> fault(const YAML::Node &node);
    /// One fault that is on from the start.
    std::optional<Session::InitialFault> initialFault(const YAML::Node &node);
    /// One action for each port named. @p ports is what may be named.
    QVector<Action> portActions(const YAML::Node &node, Action::Kind kind, const QStringList &ports);

private:
    static constexpr int MaxTimes = 100000;

    struct Form;
    static const QVector<Form> &forms();
    static const Form *formOf(const YAML::Node &step);

    void step(const YAML::Node &node, QVector<Step> &steps);
    void readOptions(const YamlReader::Entries &entries, const Form &form, Step &step);
    std::optional<int> key(const YAML::Node &node);

    void navigate(const YAML::Node &value, Step &step);
    void soft(const YAML::Node &value, Step &step);
    void press(const YAML::Node &value, Step &step);
    void hold(const YAML::Node &value, Step &step);
    void release(const YAML::Node &value, Step &step);
    void tbar(const YAML::Node &value, Step &step);
    void plug(const YAML::Node &value, Step &step);
    void unplug(const YAML::Node &value, Step &step);
    void block(const YAML::Node &value, Step &step);
    void unblock(const YAML::Node &value, Step &step);
    void switchFault(const YAML::Node &value, Step &step);
    void language(const YAML::Node &value, Step &step);
    void factoryMode(const YAML::Node &value, Step &step);
    void touch(const YAML::Node &value, Step &step);
    void open(const YAML::Node &value, Step &step);
    void walkKeys(const YAML::Node &value, Step &step);
    void wait(const YAML::Node &value, Step &step);
    void expect(const YAML::Node &value, Step &step);
    void screenshot(const YAML::Node &value, Step &step);
    void repeat(const YAML::Node &value, Step &step);
    void use(const YAML::Node &value, Step &step);
    void note(const YAML::Node &value, Step &step);
    void mark(const YAML::Node &value, Step &step);
    void keyActions(const YAML::Node &value, Action::Kind kind, Step &step);
    void faultArgument(const FaultInfo &fault, const YamlReader::Entry &entry, QVariantMap &arguments);

    YamlReader &m_reader;
    const Vocabulary &m_vocabulary;
    PartLoader m_loadPart;
    QStringList m_screenshots;
    int m_depth = 0;
    int &m_count;
    int m_ownCount = 0;
};

}
