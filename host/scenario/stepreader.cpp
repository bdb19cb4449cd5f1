#include "scenario/stepreader.h"

#include "yaml/limits.h"
#include "yaml/yamldocument.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

/// The syntax of a step.
struct StepReader::Form
{
    QString name;
    Step::Kind kind;
    void (StepReader::*read)(const YamlNode &value, Step &step);
    QStringList options; ///< further keys that are allowed
};

const QVector<StepReader::Form> &StepReader::forms()
{
    using Kind = Step::Kind;
    const QStringList none;
    const QStringList times{QStringLiteral("times")};
    const QStringList within{QStringLiteral("within")};
    static const QVector<Form> all{{QStringLiteral("factory-mode"), Kind::Act, &StepReader::factoryMode, none},
                                   {QStringLiteral("open"), Kind::Open, &StepReader::open, none},
                                   {QStringLiteral("navigate"), Kind::Act, &StepReader::navigate, times},
                                   {QStringLiteral("soft"), Kind::Act, &StepReader::soft, times},
                                   {QStringLiteral("press"), Kind::Act, &StepReader::press, times},
                                   {QStringLiteral("hold"), Kind::Act, &StepReader::hold, none},
                                   {QStringLiteral("release"), Kind::Act, &StepReader::release, none},
                                   {QStringLiteral("touch"), Kind::Act, &StepReader::touch, times},
                                   {QStringLiteral("touch-down"), Kind::Act, &StepReader::touchDown, none},
                                   {QStringLiteral("touch-move"), Kind::Act, &StepReader::touchMove, none},
                                   {QStringLiteral("touch-up"), Kind::Act, &StepReader::touchUp, none},
                                   {QStringLiteral("walk-keys"), Kind::WalkKeys, &StepReader::walkKeys, none},
                                   {QStringLiteral("tbar"), Kind::Act, &StepReader::tbar, none},
                                   {QStringLiteral("plug"), Kind::Act, &StepReader::plug, none},
                                   {QStringLiteral("unplug"), Kind::Act, &StepReader::unplug, none},
                                   {QStringLiteral("block"), Kind::Act, &StepReader::block, none},
                                   {QStringLiteral("unblock"), Kind::Act, &StepReader::unblock, none},
                                   {QStringLiteral("fault"), Kind::Act, &StepReader::switchFault, none},
                                   {QStringLiteral("calibration"), Kind::Act, &StepReader::calibration, none},
                                   {QStringLiteral("part"), Kind::Act, &StepReader::part, none},
                                   {QStringLiteral("language"), Kind::Act, &StepReader::language, none},
                                   {QStringLiteral("unit"), Kind::Act, &StepReader::unit, none},
                                   {QStringLiteral("wait"), Kind::Wait, &StepReader::wait, none},
                                   {QStringLiteral("expect"), Kind::Expect, &StepReader::expect, within},
                                   {QStringLiteral("screenshot"), Kind::Screenshot, &StepReader::screenshot, none},
                                   {QStringLiteral("repeat"), Kind::Repeat, &StepReader::repeat, none},
                                   {QStringLiteral("use"), Kind::Repeat, &StepReader::use, none},
                                   {QStringLiteral("mark"), Kind::Mark, &StepReader::mark, none},
                                   {QStringLiteral("note"), Kind::Note, &StepReader::note, none}};
    return all;
}

QStringList StepReader::stepNames()
{
    QStringList names;
    for (const auto &form : forms())
        names.append(form.name);
    return names;
}

const StepReader::Form *StepReader::formOf(const YamlNode &step)
{
    const auto entries = step.entries();
    for (const auto &form : forms()) {
        for (const auto &entry : entries) {
            if (entry.first.isScalar() && YamlReader::scalar(entry.first) == form.name)
                return &form;
        }
    }
    return nullptr;
}

QVector<Step> StepReader::steps(const YamlNode &list)
{
    QVector<Step> steps;
    if (!list.isSequence()) {
        m_reader.errorExpected(list, QStringLiteral("a list of steps"));
        return steps;
    }
    for (const auto &node : list.items()) {
        if (++m_count > limits::Steps) {
            if (m_count == limits::Steps + 1)
                m_reader.error(node, QStringLiteral("more than %1 steps in all files").arg(limits::Steps));
            return steps;
        }
        step(node, steps);
    }
    return steps;
}

void StepReader::step(const YamlNode &node, QVector<Step> &steps)
{
    if (!node.isMap())
        return m_reader.errorExpected(node, QStringLiteral("a step, such as \"soft: right\""));
    const auto form = formOf(node);
    const auto entries = node.entries();
    if (!form && !entries.isEmpty())
        return m_reader.errorExpected(entries.constFirst().first,
                                      QStringLiteral("a step: one of ") + stepNames().join(QStringLiteral(", ")),
                                      stepNames());
    if (!form)
        return m_reader.errorExpected(node, QStringLiteral("a step"));
    static const QRegularExpression braces(QStringLiteral("^\\{|(: ~)?\\}$"));
    Step step;
    step.kind = form->kind;
    step.file = m_reader.file();
    step.where = node.definition();
    if (step.kind != Step::Kind::Repeat)
        step.text = yamlLine(node).remove(braces);
    readOptions(m_reader.map(node, QStringList{form->name} + form->options), *form, step);
    steps.append(step);
}

void StepReader::readOptions(const YamlReader::Entries &entries, const Form &form, Step &step)
{
    for (const auto &entry : entries) {
        const auto name = YamlReader::scalar(entry.first);
        if (name == form.name)
            (this->*form.read)(entry.second, step);
        else if (name == QLatin1String("times"))
            step.times = m_reader.integer(entry.second, 1, limits::Times).value_or(1);
        else
            step.within = m_reader.duration(entry.second);
    }
}

}
