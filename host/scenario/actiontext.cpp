#include "scenario/actiontext.h"

#include <QtCore/QMap>

namespace panelhost {

namespace {

using Kind = Action::Kind;

/// How the actions with one argument are written.
struct Form
{
    QString step;
    QString argument;
};

const QMap<Kind, Form> &forms()
{
    static const QString port = QStringLiteral("port");
    static const QString key = QStringLiteral("key");
    static const QMap<Kind, Form> all{{Kind::Navigate, {QStringLiteral("navigate"), key}},
                                      {Kind::Press, {QStringLiteral("press"), key}},
                                      {Kind::Hold, {QStringLiteral("hold"), key}},
                                      {Kind::Release, {QStringLiteral("release"), key}},
                                      {Kind::Soft, {QStringLiteral("soft"), QStringLiteral("side")}},
                                      {Kind::TBar, {QStringLiteral("tbar"), QStringLiteral("position")}},
                                      {Kind::Plug, {QStringLiteral("plug"), port}},
                                      {Kind::Unplug, {QStringLiteral("unplug"), port}},
                                      {Kind::Block, {QStringLiteral("block"), port}},
                                      {Kind::Unblock, {QStringLiteral("unblock"), port}},
                                      {Kind::Language, {QStringLiteral("language"), QStringLiteral("code")}}};
    return all;
}

// Seventeen digits bring the same number back.
QString valueText(const QVariant &value)
{
    return value.type() == QVariant::Double ? QString::number(value.toDouble(), 'g', 17) : value.toString();
}

QString mapText(const QVariantMap &values)
{
    QStringList entries;
    for (auto it = values.begin(); it != values.end(); ++it)
        entries.append(it.key() + QStringLiteral(": ") + valueText(it.value()));
    return QLatin1Char('{') + entries.join(QStringLiteral(", ")) + QLatin1Char('}');
}

}

QString faultText(const QString &name, QVariantMap arguments)
{
    arguments.insert(QStringLiteral("name"), name);
    return mapText(arguments);
}

QString stepText(const Action &action)
{
    switch (action.kind) {
    case Kind::EnterFactoryMode:
        return QStringLiteral("factory-mode: enter");
    case Kind::ExitFactoryMode:
        return QStringLiteral("factory-mode: exit");
    case Kind::Fault:
        return QStringLiteral("fault: ") + mapText(action.arguments);
    case Kind::Touch:
        return QStringLiteral("touch: ") + mapText(action.arguments);
    default:
        break;
    }
    const auto &form = forms()[action.kind];
    return form.step + QStringLiteral(": ") + valueText(action.arguments.value(form.argument));
}

}
