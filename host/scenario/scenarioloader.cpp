#include "scenario/scenarioloader.h"

#include "scenario/devicereader.h"
#include "scenario/stepreader.h"
#include "yaml/limits.h"
#include "yaml/yamldocument.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace panelhost {

namespace {

QString readError(const QString &path)
{
    // Opening a pipe would block.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return QStringLiteral("not a file");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    return file.size() > limits::FileSize ? QStringLiteral("larger than %1 bytes").arg(limits::FileSize) : QString();
}

// The name of the standard input as a scenario.
bool isStandardInput(const QString &path)
{
    return path == QLatin1String("-");
}

std::optional<QByteArray> standardInput(QString *error)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        *error = input.errorString();
        return std::nullopt;
    }
    const QByteArray data = input.read(limits::FileSize + 1);
    if (data.size() <= limits::FileSize)
        return data;
    *error = QStringLiteral("larger than %1 bytes").arg(limits::FileSize);
    return std::nullopt;
}

std::optional<QByteArray> contentOf(const QString &path, QString *error)
{
    *error = readError(path);
    QFile file(path);
    if (!error->isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(limits::FileSize);
}

/// A file in the chain of used files, from the scenario to the file that is being read.
struct Link
{
    QString file;
    QString canonical; ///< canonical path
    int useLine = 0;   ///< line of the `use` of the next file
};

class Loader
{
public:
    explicit Loader(Scenario &scenario) : m_scenario(scenario) {}

    void load();
    QStringList errors() const { return m_errors; }

private:
    void readHeader(YamlReader &reader, const YamlReader::Entries &entries);
    QVector<Step> readSteps(YamlReader &reader, const YamlNode &root, const YamlReader::Entries &entries);
    QVector<Step> use(YamlReader &reader, const QString &path, const YamlNode &where);
    /// Returns why the file @p path can't be used; empty if it can.
    QString useError(const QString &path);
    QVector<Step> loadPart(const QString &path, const QByteArray &data);
    /// Parses @p data, the content of the file at @p path, and reads it with @p read.
    template <class Read>
    void withFile(const QString &path, const QByteArray &data, Read &&read);

    Scenario &m_scenario;
    DeviceNames m_deviceNames;
    QStringList m_errors;
    QVector<Link> m_chain;
    int m_files = 0;
    int m_steps = 0;
};

template <class Read>
void Loader::withFile(const QString &path, const QByteArray &data, Read &&read)
{
    DiagnosticCollector found(path);
    m_scenario.files.append(path);
    m_chain.append({path, QFileInfo(path).canonicalFilePath()});
    const auto root = parseYaml(data, found);
    YamlReader reader(found);
    if (root)
        read(reader, *root);
    m_chain.removeLast();
    m_errors = found.lines() + m_errors;
}

// The device is read first, because the steps refer to its ports and faults.
void Loader::load()
{
    QString error;
    const auto data = isStandardInput(m_scenario.file) ? standardInput(&error) : contentOf(m_scenario.file, &error);
    if (!data) {
        DiagnosticCollector found(m_scenario.file);
        found.add({}, error);
        m_errors = found.lines();
        return;
    }
    withFile(m_scenario.file, *data, [this](YamlReader &reader, const YamlNode &root) {
        const auto entries = reader.map(
            root, {QStringLiteral("title"), QStringLiteral("unit"), QStringLiteral("device"), QStringLiteral("steps")});
        readHeader(reader, entries);
        m_deviceNames = deviceNamesOf(m_scenario.device);
        m_scenario.steps = readSteps(reader, root, entries);
        if (playedSteps(m_scenario.steps) > limits::PlayedSteps)
            reader.error(root, QStringLiteral("more than %1 steps to play").arg(limits::PlayedSteps));
    });
}

void Loader::readHeader(YamlReader &reader, const YamlReader::Entries &entries)
{
    for (const auto &entry : entries) {
        if (entry.first.text() == QLatin1String("title"))
            m_scenario.title = reader.text(entry.second, QStringLiteral("a text")).value_or(QString());
        else if (entry.first.text() == QLatin1String("unit"))
            m_scenario.unit = readUnitNumber(reader, entry.second).value_or(QString());
        else if (entry.first.text() == QLatin1String("device"))
            DeviceReader(reader, m_scenario).read(entry.second);
    }
}

QVector<Step> Loader::readSteps(YamlReader &reader, const YamlNode &root, const YamlReader::Entries &entries)
{
    const auto loadPart = [this, &reader](const QString &path, const YamlNode &where) {
        return use(reader, path, where);
    };
    for (const auto &entry : entries) {
        if (entry.first.text() == QLatin1String("steps"))
            return StepReader(reader, m_deviceNames, loadPart, m_steps).steps(entry.second);
    }
    if (root.isMap())
        reader.error(root, QStringLiteral("a scenario needs steps"));
    return {};
}

QString Loader::useError(const QString &path)
{
    const auto canonical = QFileInfo(path).canonicalFilePath();
    const auto isSame = [&canonical](const Link &link) { return link.canonical == canonical; };
    const auto first = std::find_if(m_chain.cbegin(), m_chain.cend(), isSame);
    if (!canonical.isEmpty() && first != m_chain.cend()) {
        QString circle;
        for (auto link = first; link != m_chain.cend(); ++link)
            circle += QStringLiteral("%1:%2 -> ").arg(link->file).arg(link->useLine);
        return QStringLiteral("circular use of files: ") + circle + first->file;
    }
    if (m_chain.size() > limits::UsedDepth)
        return QStringLiteral("more than %1 nested files").arg(limits::UsedDepth);
    if (++m_files > limits::UsedFiles)
        return QStringLiteral("more than %1 used files in all").arg(limits::UsedFiles);
    return {};
}

QVector<Step> Loader::use(YamlReader &reader, const QString &path, const YamlNode &where)
{
    if (m_steps > limits::Steps || m_files > limits::UsedFiles)
        return {};
    m_chain.last().useLine = where.aliases().isEmpty() ? where.definition().line : where.aliases().constLast().line;
    auto error = useError(path);
    if (!error.isEmpty()) {
        reader.error(where, error);
        return {};
    }
    const auto data = contentOf(path, &error);
    if (data)
        return loadPart(path, *data);
    reader.error(where, QStringLiteral("%1: %2").arg(path, error));
    return {};
}

QVector<Step> Loader::loadPart(const QString &path, const QByteArray &data)
{
    QVector<Step> steps;
    withFile(path, data, [&](YamlReader &reader, const YamlNode &root) {
        steps = readSteps(reader, root, reader.map(root, {QStringLiteral("steps")}));
    });
    return steps;
}

}

std::optional<Scenario> loadScenario(const QString &path, const Session::Options &base, QStringList *errors)
{
    Scenario scenario;
    scenario.file = path;
    scenario.device = base;
    Loader loader(scenario);
    loader.load();
    *errors = loader.errors();
    errors->removeDuplicates();
    return errors->isEmpty() ? std::optional<Scenario>(scenario) : std::nullopt;
}

}
