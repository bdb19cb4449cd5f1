#pragma once

#include "device/faults.h"
#include "scenario/devicenames.h"
#include "scenario/scenario.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// Reads the steps of a scenario.
class StepReader
{
public:
    /// Reads the steps of another file, given by its path.
    using PartLoader = std::function<QVector<Step>(const QString &path, const YamlNode &where)>;

    StepReader(YamlReader &reader, const DeviceNames &deviceNames) : StepReader(reader, deviceNames, {}, m_ownCount) {}
    /// @p count goes up with each step that is read: the readers of one scenario's files share it.
    StepReader(YamlReader &reader, const DeviceNames &deviceNames, const PartLoader &loadPart, int &count)
        : m_reader(reader), m_deviceNames(deviceNames), m_loadPart(loadPart), m_count(count)
    {
    }

    /// The names of all steps, in the order in which messages list them.
    static QStringList stepNames();

    QVector<Step> steps(const YamlNode &list);
    /// One fault to be switched, as a step or the device's description tells it.
    std::optional<OperatorAction> fault(const YamlNode &node);
    /// One fault that is on from the start.
    std::optional<Session::InitialFault> initialFault(const YamlNode &node);
    /// One action for each port named. @p ports is what may be named.
    QVector<OperatorAction> portActions(const YamlNode &node, OperatorAction::Kind kind, const QStringList &ports);

private:
    struct Form;
    static const QVector<Form> &forms();
    static const Form *formOf(const YamlNode &step);

    void step(const YamlNode &node, QVector<Step> &steps);
    void readOptions(const YamlReader::Entries &entries, const Form &form, Step &step);
    std::optional<int> key(const YamlNode &node);

    void navigate(const YamlNode &value, Step &step);
    void soft(const YamlNode &value, Step &step);
    void press(const YamlNode &value, Step &step);
    void hold(const YamlNode &value, Step &step);
    void release(const YamlNode &value, Step &step);
    void tbar(const YamlNode &value, Step &step);
    void plug(const YamlNode &value, Step &step);
    void unplug(const YamlNode &value, Step &step);
    void block(const YamlNode &value, Step &step);
    void unblock(const YamlNode &value, Step &step);
    void switchFault(const YamlNode &value, Step &step);
    void language(const YamlNode &value, Step &step);
    void factoryMode(const YamlNode &value, Step &step);
    void touch(const YamlNode &value, Step &step);
    void open(const YamlNode &value, Step &step);
    void walkKeys(const YamlNode &value, Step &step);
    void wait(const YamlNode &value, Step &step);
    void expect(const YamlNode &value, Step &step);
    void screenshot(const YamlNode &value, Step &step);
    void repeat(const YamlNode &value, Step &step);
    void use(const YamlNode &value, Step &step);
    void note(const YamlNode &value, Step &step);
    void mark(const YamlNode &value, Step &step);
    void keyActions(const YamlNode &value, OperatorAction::Kind kind, Step &step);
    void faultArgument(const FaultInfo &fault, const YamlReader::Entry &entry, QVariantMap &arguments);

    YamlReader &m_reader;
    const DeviceNames &m_deviceNames;
    PartLoader m_loadPart;
    QStringList m_screenshots;
    int m_depth = 0;
    int &m_count;
    int m_ownCount = 0;
};

}
