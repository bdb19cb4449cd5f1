#pragma once

#include "device/faults.h"
#include "scenario/scenario.h"
#include "session/devicenames.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// Reads the steps of a scenario.
class StepReader
{
public:
    /// Reads the steps of the file at @p path, which the value @p where uses.
    using PartLoader = std::function<QVector<Step>(const QString &path, const YamlNode &where)>;

    StepReader(YamlReader &reader, const DeviceNames &deviceNames) : StepReader(reader, deviceNames, {}, m_ownCount) {}
    /// @p count is incremented for each step that is read. The readers of all files of a scenario share it.
    StepReader(YamlReader &reader, const DeviceNames &deviceNames, const PartLoader &loadPart, int &count)
        : m_reader(reader), m_deviceNames(deviceNames), m_loadPart(loadPart), m_count(count)
    {
    }

    /// Returns the names of all steps in the order in which messages list them.
    static QStringList stepNames();

    QVector<Step> steps(const YamlNode &list);
    /// Reads a fault to switch, in a step or in the description of the device.
    std::optional<OperatorAction> fault(const YamlNode &node);
    /// Reads a fault that is on from the beginning.
    std::optional<Session::InitialFault> initialFault(const YamlNode &node);
    /// Returns one action for each port in @p node. @p ports are the allowed names.
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
    void plugUsb(const YamlNode &value, Step &step);
    void unplug(const YamlNode &value, Step &step);
    void block(const YamlNode &value, Step &step);
    void unblock(const YamlNode &value, Step &step);
    void switchFault(const YamlNode &value, Step &step);
    void calibration(const YamlNode &value, Step &step);
    void part(const YamlNode &value, Step &step);
    void language(const YamlNode &value, Step &step);
    void unit(const YamlNode &value, Step &step);
    void factoryMode(const YamlNode &value, Step &step);
    void touch(const YamlNode &value, Step &step);
    void touchDown(const YamlNode &value, Step &step);
    void touchMove(const YamlNode &value, Step &step);
    void touchUp(const YamlNode &value, Step &step);
    void touchAt(const YamlNode &value, OperatorAction::Kind kind, Step &step);
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

/// Reads the serial number of a unit. Reports an error and returns nullopt if it can't be one.
std::optional<QString> readUnitNumber(YamlReader &reader, const YamlNode &value);

}
