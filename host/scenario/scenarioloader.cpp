#include "scenario/scenarioloader.h"

#include "scenario/devicereader.h"
#include "scenario/stepreader.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <yaml-cpp/depthguard.h>

namespace panelhost {

namespace {

constexpr qint64 MaxSize = 4 << 20;
constexpr qint64 MaxPlayedSteps = 10000000;
constexpr int MaxDepth = 4;
constexpr int MaxFiles = 200;

std::optional<YAML::Node> parse(const QByteArray &data, Problems &problems)
{
    try {
        const auto documents = YAML::LoadAll(data.toStdString());
        if (documents.size() < 2)
            return documents.empty() ? YAML::Node() : documents.front();
        const auto where = documents.at(1).Mark();
        problems.add({where.line + 1, where.column + 1}, QStringLiteral("a second document; a file holds one"));
        return std::nullopt;
    } catch (const YAML::DeepRecursion &e) {
        problems.add({e.mark.line + 1, e.mark.column + 1}, QStringLiteral("not read: nested too deep"));
        return std::nullopt;
    } catch (const YAML::Exception &e) {
        const auto where = e.mark.is_null() ? Place() : Place{e.mark.line + 1, e.mark.column + 1};
        problems.add(where, QStringLiteral("not YAML: ") + QString::fromStdString(e.msg));
        return std::nullopt;
    }
}

std::optional<QByteArray> contentOf(const QString &path, Problems &problems)
{
    QFile file(path);
    // A pipe in its place would block for ever.
    if (file.exists() && !QFileInfo(file).isFile()) {
        problems.add({}, QStringLiteral("not a file"));
        return std::nullopt;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problems.add({}, file.errorString());
        return std::nullopt;
    }
    const auto data = file.read(MaxSize + 1);
    if (data.size() <= MaxSize)
        return data;
    problems.add({}, QStringLiteral("larger than %1 bytes").arg(MaxSize));
    return std::nullopt;
}

class Loader
{
public:
    explicit Loader(Scenario &scenario) : m_scenario(scenario) {}

    void load();
    QStringList problems() const { return m_problems; }

private:
    void readDevice(YamlReader &reader, const YamlReader::Entries &entries);
    QVector<Step> readSteps(YamlReader &reader, const YAML::Node &root, const YamlReader::Entries &entries);
    QVector<Step> loadPart(const QString &path);
    /// Opens, parses and reads the file at @p path with @p read.
    template <class Read>
    void withFile(const QString &path, Read &&read);

    Scenario &m_scenario;
    Vocabulary m_vocabulary;
    QStringList m_problems;
    int m_depth = 0;
    int m_files = 0;
    int m_steps = 0;
};

template <class Read>
void Loader::withFile(const QString &path, Read &&read)
{
    Problems found(path);
    const auto data = contentOf(path, found);
    const auto root = data ? parse(*data, found) : std::nullopt;
    YamlReader reader(found);
    if (root)
        read(reader, *root);
    m_problems = found.lines() + m_problems;
}

// After the device: its ports and faults are what the steps may name.
void Loader::load()
{
    withFile(m_scenario.file, [this](YamlReader &reader, const YAML::Node &root) {
        const auto entries =
            reader.map(root, {QStringLiteral("title"), QStringLiteral("device"), QStringLiteral("steps")});
        readDevice(reader, entries);
        m_vocabulary = vocabularyOf(m_scenario.device);
        m_scenario.steps = readSteps(reader, root, entries);
        if (playedSteps(m_scenario.steps) > MaxPlayedSteps)
            reader.complain(root, QStringLiteral("more than %1 steps to play").arg(MaxPlayedSteps));
    });
}

void Loader::readDevice(YamlReader &reader, const YamlReader::Entries &entries)
{
    for (const auto &entry : entries) {
        if (entry.first.Scalar() == "title")
            m_scenario.title = reader.text(entry.second, QStringLiteral("a text")).value_or(QString());
        else if (entry.first.Scalar() == "device")
            DeviceReader(reader, m_scenario).read(entry.second);
    }
}

QVector<Step> Loader::readSteps(YamlReader &reader, const YAML::Node &root, const YamlReader::Entries &entries)
{
    const auto loadPart = [this, &reader](const QString &path, const YAML::Node &where) {
        if (m_steps > StepReader::MaxSteps)
            return QVector<Step>();
        if (m_depth < MaxDepth && ++m_files < MaxFiles)
            return this->loadPart(path);
        reader.complain(
            where,
            QStringLiteral("more than %1 files inside each other, or more than %2 in all").arg(MaxDepth).arg(MaxFiles));
        return QVector<Step>();
    };
    for (const auto &entry : entries) {
        if (entry.first.Scalar() == "steps")
            return StepReader(reader, m_vocabulary, loadPart, m_steps).steps(entry.second);
    }
    if (root.IsMap())
        reader.complain(root, QStringLiteral("a scenario needs steps"));
    return {};
}

QVector<Step> Loader::loadPart(const QString &path)
{
    QVector<Step> steps;
    ++m_depth;
    withFile(path, [&](YamlReader &reader, const YAML::Node &root) {
        steps = readSteps(reader, root, reader.map(root, {QStringLiteral("steps")}));
    });
    --m_depth;
    return steps;
}

}

std::optional<Scenario> loadScenario(const QString &path, const Session::Options &base, QStringList *problems)
{
    Scenario scenario;
    scenario.file = path;
    scenario.device = base;
    Loader loader(scenario);
    loader.load();
    *problems = loader.problems();
    problems->removeDuplicates();
    return problems->isEmpty() ? std::optional<Scenario>(scenario) : std::nullopt;
}

}
