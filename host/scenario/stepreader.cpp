#include "scenario/stepreader.h"

#include "scenario/expectationreader.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

constexpr int MaxTimes = 100000;
constexpr int MaxRepeatDepth = 8;
constexpr int MaxSteps = 100000;

const QStringList NavigationKeys{QStringLiteral("up"),    QStringLiteral("down"),  QStringLiteral("left"),
                                 QStringLiteral("right"), QStringLiteral("enter"), QStringLiteral("back")};
const QStringList Sides{QStringLiteral("left"), QStringLiteral("right")};

QString word(const YAML::Node &node)
{
    return QString::fromStdString(node.Scalar());
}

}

/// How one kind of step is written.
struct StepReader::Form
{
    QString name;
    Step::Kind kind;
    void (StepReader::*read)(const YAML::Node &value, Step &step);
    QStringList options; ///< keys that may stand beside the step's own
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
                                   {QStringLiteral("walk-keys"), Kind::WalkKeys, &StepReader::walkKeys, none},
                                   {QStringLiteral("tbar"), Kind::Act, &StepReader::tbar, none},
                                   {QStringLiteral("plug"), Kind::Act, &StepReader::plug, none},
                                   {QStringLiteral("unplug"), Kind::Act, &StepReader::unplug, none},
                                   {QStringLiteral("block"), Kind::Act, &StepReader::block, none},
                                   {QStringLiteral("unblock"), Kind::Act, &StepReader::unblock, none},
                                   {QStringLiteral("fault"), Kind::Act, &StepReader::switchFault, none},
                                   {QStringLiteral("language"), Kind::Act, &StepReader::language, none},
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

const StepReader::Form *StepReader::formOf(const YAML::Node &step)
{
    for (const auto &form : forms()) {
        for (const auto &entry : step) {
            if (entry.first.IsScalar() && word(entry.first) == form.name)
                return &form;
        }
    }
    return nullptr;
}

QVector<Step> StepReader::steps(const YAML::Node &list)
{
    QVector<Step> steps;
    if (!list.IsSequence()) {
        m_reader.problem(list, QStringLiteral("a list of steps"));
        return steps;
    }
    for (const auto &node : list) {
        if (++m_count > MaxSteps) {
            if (m_count == MaxSteps + 1)
                m_reader.complain(node, QStringLiteral("more than %1 steps").arg(MaxSteps));
            return steps;
        }
        step(node, steps);
    }
    return steps;
}

void StepReader::step(const YAML::Node &node, QVector<Step> &steps)
{
    if (!node.IsMap())
        return m_reader.problem(node, QStringLiteral("a step, such as \"soft: right\""));
    const auto form = formOf(node);
    if (!form && node.size() > 0)
        return m_reader.problem(node.begin()->first,
                                QStringLiteral("a step: one of ") + stepNames().join(QStringLiteral(", ")));
    if (!form)
        return m_reader.problem(node, QStringLiteral("a step"));
    Step step;
    step.kind = form->kind;
    step.file = m_reader.file();
    step.where = m_reader.placeOf(node);
    if (step.kind != Step::Kind::Repeat)
        step.text = YamlReader::oneLine(node).remove(QRegularExpression(QStringLiteral("^\\{|(: ~)?\\}$")));
    readOptions(m_reader.map(node, QStringList{form->name} + form->options), *form, step);
    steps.append(step);
}

void StepReader::readOptions(const YamlReader::Entries &entries, const Form &form, Step &step)
{
    for (const auto &entry : entries) {
        const auto name = word(entry.first);
        if (name == form.name)
            (this->*form.read)(entry.second, step);
        else if (name == QLatin1String("times"))
            step.times = m_reader.integer(entry.second, 1, MaxTimes).value_or(1);
        else
            step.within = m_reader.duration(entry.second);
    }
}

std::optional<int> StepReader::key(const YAML::Node &node)
{
    const auto halKey = node.IsScalar() ? m_vocabulary.halKey(word(node)) : std::nullopt;
    if (!halKey)
        m_reader.problem(node,
                         QStringLiteral("a key, by name or hal key: one of ")
                             + QStringList(m_vocabulary.keys.keys()).join(QStringLiteral(", ")));
    return halKey;
}

void StepReader::navigate(const YAML::Node &value, Step &step)
{
    const auto read = [&](const YAML::Node &node) {
        if (const auto key = m_reader.word(node, NavigationKeys))
            step.actions.append({Action::Kind::Navigate, {{QStringLiteral("key"), *key}}});
    };
    if (!value.IsSequence())
        return read(value);
    for (const auto &node : value)
        read(node);
}

void StepReader::soft(const YAML::Node &value, Step &step)
{
    if (const auto side = m_reader.word(value, Sides))
        step.actions.append({Action::Kind::Soft, {{QStringLiteral("side"), *side}}});
}

void StepReader::keyActions(const YAML::Node &value, Action::Kind kind, Step &step)
{
    const auto read = [&](const YAML::Node &node) {
        if (const auto halKey = key(node))
            step.actions.append({kind, {{QStringLiteral("key"), *halKey}}});
    };
    if (!value.IsSequence())
        return read(value);
    for (const auto &node : value)
        read(node);
}

void StepReader::press(const YAML::Node &value, Step &step)
{
    keyActions(value, Action::Kind::Press, step);
}

void StepReader::hold(const YAML::Node &value, Step &step)
{
    keyActions(value, Action::Kind::Hold, step);
}

void StepReader::release(const YAML::Node &value, Step &step)
{
    keyActions(value, Action::Kind::Release, step);
}

void StepReader::touch(const YAML::Node &value, Step &step)
{
    QVariantMap arguments;
    for (const auto &entry : m_reader.map(value, {QStringLiteral("x"), QStringLiteral("y")})) {
        if (const auto pixel = m_reader.integer(entry.second, 0, 10000))
            arguments.insert(word(entry.first), *pixel);
    }
    if (value.IsMap() && value.size() < 2)
        m_reader.complain(value, QStringLiteral("a touch needs x and y"));
    step.actions.append({Action::Kind::Touch, arguments});
}

void StepReader::tbar(const YAML::Node &value, Step &step)
{
    static const QMap<QString, double> ends{{QStringLiteral("bottom"), 0.0}, {QStringLiteral("top"), 1.0}};
    const auto end = value.IsScalar() ? ends.constFind(word(value)) : ends.constEnd();
    const auto position = end != ends.constEnd() ? std::optional<double>(*end) : m_reader.number(value, 0, 1);
    if (position)
        step.actions.append({Action::Kind::TBar, {{QStringLiteral("position"), *position}}});
}

QVector<Action> StepReader::portActions(const YAML::Node &node, Action::Kind kind, const QStringList &ports)
{
    QVector<Action> actions;
    const auto read = [&](const YAML::Node &one) {
        if (const auto port = m_reader.word(one, ports))
            actions.append({kind, {{QStringLiteral("port"), *port}}});
    };
    if (!node.IsSequence()) {
        read(node);
        return actions;
    }
    for (const auto &one : node)
        read(one);
    return actions;
}

void StepReader::plug(const YAML::Node &value, Step &step)
{
    step.actions = portActions(value, Action::Kind::Plug, m_vocabulary.ports());
}

void StepReader::unplug(const YAML::Node &value, Step &step)
{
    step.actions = portActions(value, Action::Kind::Unplug, m_vocabulary.ports());
}

void StepReader::block(const YAML::Node &value, Step &step)
{
    step.actions = portActions(value, Action::Kind::Block, m_vocabulary.usbPorts);
}

void StepReader::unblock(const YAML::Node &value, Step &step)
{
    step.actions = portActions(value, Action::Kind::Unblock, m_vocabulary.usbPorts);
}

void StepReader::language(const YAML::Node &value, Step &step)
{
    if (const auto code = m_reader.word(value, m_vocabulary.languages))
        step.actions.append({Action::Kind::Language, {{QStringLiteral("code"), *code}}});
}

void StepReader::factoryMode(const YAML::Node &value, Step &step)
{
    const auto way = m_reader.word(value, {QStringLiteral("enter"), QStringLiteral("exit")});
    if (way)
        step.actions.append(
            {*way == QLatin1String("enter") ? Action::Kind::EnterFactoryMode : Action::Kind::ExitFactoryMode, {}});
}

void StepReader::open(const YAML::Node &value, Step &step)
{
    const auto path = m_reader.text(value, QStringLiteral("a menu path such as \"RepairMode/T-Bar\""));
    if (!path)
        return;
    step.path = path->split(QLatin1Char('/'));
    if (step.path.size() > 2 || step.path.contains(QString()))
        m_reader.problem(value, QStringLiteral("one or two menu entries, such as \"RepairMode/T-Bar\""));
}

void StepReader::walkKeys(const YAML::Node &value, Step &step)
{
    if (value.IsNull())
        return;
    for (const auto &entry :
         m_reader.map(value, {QStringLiteral("max"), QStringLiteral("wrong-first"), QStringLiteral("pace")})) {
        if (word(entry.first) == QLatin1String("max"))
            step.walk.max = m_reader.integer(entry.second, 1, MaxTimes).value_or(step.walk.max);
        else if (word(entry.first) == QLatin1String("pace"))
            step.walk.pace = m_reader.duration(entry.second).value_or(step.walk.pace);
        else
            step.walk.wrongKey = key(entry.second);
    }
}

void StepReader::wait(const YAML::Node &value, Step &step)
{
    step.duration = m_reader.duration(value).value_or(0);
}

void StepReader::expect(const YAML::Node &value, Step &step)
{
    step.expectations = ExpectationReader(m_reader, m_vocabulary).expectations(value);
}

void StepReader::screenshot(const YAML::Node &value, Step &step)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9][A-Za-z0-9_-]{0,63}$"));
    const auto name = m_reader.text(value, QStringLiteral("a name"));
    if (!name)
        return;
    step.name = *name;
    if (!form.match(*name).hasMatch())
        m_reader.problem(value, QStringLiteral("a name of letters, digits, - and _"));
    if (m_screenshots.contains(*name))
        m_reader.complain(value, QStringLiteral("a screenshot \"%1\" stands above already").arg(*name));
    m_screenshots.append(*name);
}

void StepReader::repeat(const YAML::Node &value, Step &step)
{
    if (m_depth >= MaxRepeatDepth)
        return m_reader.complain(value, QStringLiteral("more than %1 repeats inside each other").arg(MaxRepeatDepth));
    ++m_depth;
    bool hasSteps = false;
    for (const auto &entry : m_reader.map(value, {QStringLiteral("times"), QStringLiteral("steps")})) {
        hasSteps = hasSteps || word(entry.first) == QLatin1String("steps");
        if (word(entry.first) == QLatin1String("times"))
            step.times = m_reader.integer(entry.second, 1, MaxTimes).value_or(1);
        else
            step.steps = steps(entry.second);
    }
    if (value.IsMap() && !hasSteps)
        m_reader.complain(value, QStringLiteral("repeat needs steps"));
    step.text = QStringLiteral("repeat %1 times").arg(step.times);
    --m_depth;
}

void StepReader::use(const YAML::Node &value, Step &step)
{
    const auto path = m_reader.text(value, QStringLiteral("the path of a file with steps"));
    if (path && m_loadPart)
        step.steps = m_loadPart(QDir::cleanPath(QFileInfo(m_reader.file()).dir().filePath(*path)), value);
}

void StepReader::note(const YAML::Node &value, Step &step)
{
    step.name = m_reader.text(value, QStringLiteral("a text")).value_or(QString());
}

void StepReader::mark(const YAML::Node &value, Step &step)
{
    note(value, step);
}

}
