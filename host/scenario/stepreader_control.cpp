// All other steps of StepReader.

#include "expectations/expectationreader.h"
#include "scenario/stepreader.h"
#include "yaml/limits.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace panelhost {

void StepReader::open(const YamlNode &value, Step &step)
{
    const auto path = m_reader.text(value, QStringLiteral("a menu path such as \"RepairMode/T-Bar\""));
    if (!path)
        return;
    step.path = path->split(QLatin1Char('/'));
    if (step.path.size() > 2 || step.path.contains(QString()))
        m_reader.errorExpected(value, QStringLiteral("one or two menu entries, such as \"RepairMode/T-Bar\""));
}

void StepReader::walkKeys(const YamlNode &value, Step &step)
{
    if (value.isNull())
        return;
    for (const auto &entry :
         m_reader.map(value, {QStringLiteral("max"), QStringLiteral("wrong-first"), QStringLiteral("pace")})) {
        if (YamlReader::scalar(entry.first) == QLatin1String("max"))
            step.walk.max = m_reader.integer(entry.second, 1, limits::Times).value_or(step.walk.max);
        else if (YamlReader::scalar(entry.first) == QLatin1String("pace"))
            step.walk.pace = m_reader.duration(entry.second).value_or(step.walk.pace);
        else
            step.walk.wrongKey = key(entry.second);
    }
}

void StepReader::wait(const YamlNode &value, Step &step)
{
    step.duration = m_reader.duration(value).value_or(0);
}

void StepReader::expect(const YamlNode &value, Step &step)
{
    step.expectations = ExpectationReader(m_reader, m_deviceNames).expectations(value);
}

void StepReader::screenshot(const YamlNode &value, Step &step)
{
    static const QRegularExpression form(
        QStringLiteral("^[A-Za-z0-9][A-Za-z0-9_-]{0,%1}$").arg(limits::NameLength - 1));
    const auto name = m_reader.text(value, QStringLiteral("a name"));
    if (!name)
        return;
    step.name = *name;
    if (!form.match(*name).hasMatch())
        m_reader.errorExpected(value,
                               QStringLiteral("a name of at most %1 letters, digits, - and _").arg(limits::NameLength));
    if (m_screenshots.contains(*name))
        m_reader.error(value, QStringLiteral("the name \"%1\" is already used by another screenshot").arg(*name));
    m_screenshots.append(*name);
}

void StepReader::repeat(const YamlNode &value, Step &step)
{
    if (m_depth >= limits::RepeatDepth)
        return m_reader.error(value, QStringLiteral("more than %1 nested repeats").arg(limits::RepeatDepth));
    ++m_depth;
    bool hasSteps = false;
    for (const auto &entry : m_reader.map(value, {QStringLiteral("times"), QStringLiteral("steps")})) {
        hasSteps = hasSteps || YamlReader::scalar(entry.first) == QLatin1String("steps");
        if (YamlReader::scalar(entry.first) == QLatin1String("times"))
            step.times = m_reader.integer(entry.second, 1, limits::Times).value_or(1);
        else
            step.steps = steps(entry.second);
    }
    if (value.isMap() && !hasSteps)
        m_reader.error(value, QStringLiteral("repeat needs steps"));
    step.text = QStringLiteral("repeat %1 times").arg(step.times);
    --m_depth;
}

void StepReader::use(const YamlNode &value, Step &step)
{
    const auto path = m_reader.text(value, QStringLiteral("the path of a file with steps"));
    if (path && m_loadPart)
        step.steps = m_loadPart(QDir::cleanPath(QFileInfo(m_reader.file()).dir().filePath(*path)), value);
}

void StepReader::note(const YamlNode &value, Step &step)
{
    step.name = m_reader.text(value, QStringLiteral("a text")).value_or(QString());
}

void StepReader::mark(const YamlNode &value, Step &step)
{
    note(value, step);
}

}
