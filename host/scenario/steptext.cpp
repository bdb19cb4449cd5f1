#include "scenario/steptext.h"

#include <QtCore/QLocale>
#include <QtCore/QMap>

namespace panelhost {

namespace {

using Kind = OperatorAction::Kind;

/// Returns the name of the argument of an action that has only one.
QString argumentOf(Kind kind)
{
    static const QString port = QStringLiteral("port");
    static const QString key = QStringLiteral("key");
    static const QMap<Kind, QString> names{{Kind::Navigate, key},
                                           {Kind::Press, key},
                                           {Kind::Hold, key},
                                           {Kind::Release, key},
                                           {Kind::Soft, QStringLiteral("side")},
                                           {Kind::TBar, QStringLiteral("position")},
                                           {Kind::Plug, port},
                                           {Kind::Unplug, port},
                                           {Kind::Block, port},
                                           {Kind::Unblock, port},
                                           {Kind::Language, QStringLiteral("code")},
                                           {Kind::Unit, QStringLiteral("unit")}};
    return names.value(kind);
}

// The shortest text that gives the same number again.
QString valueText(const QVariant &value)
{
    return value.type() == QVariant::Double ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
                                            : value.toString();
}

// A serial number may contain anything, such as ": " or "#", and may look like a number.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString mapText(const QVariantMap &values)
{
    QStringList entries;
    for (auto it = values.begin(); it != values.end(); ++it)
        entries.append(it.key() + QStringLiteral(": ") + valueText(it.value()));
    return QLatin1Char('{') + entries.join(QStringLiteral(", ")) + QLatin1Char('}');
}

QString switchText(QVariantMap arguments)
{
    arguments.insert(activeWord(), arguments.take(QStringLiteral("on")));
    return mapText(arguments);
}

}

QString activeWord()
{
    return QStringLiteral("active");
}

QString faultText(const QString &name, QVariantMap arguments)
{
    arguments.insert(QStringLiteral("name"), name);
    return mapText(arguments);
}

QString stepText(const OperatorAction &action)
{
    switch (action.kind) {
    case Kind::EnterFactoryMode:
        return QStringLiteral("factory-mode: enter");
    case Kind::ExitFactoryMode:
        return QStringLiteral("factory-mode: exit");
    case Kind::Fault:
        return actionName(action.kind) + QStringLiteral(": ") + switchText(action.arguments);
    case Kind::Touch:
        return actionName(action.kind) + QStringLiteral(": ") + mapText(action.arguments);
    case Kind::Unit:
        return actionName(action.kind) + QStringLiteral(": ")
            + quoted(action.arguments.value(argumentOf(action.kind)).toString());
    default:
        return actionName(action.kind) + QStringLiteral(": ")
            + valueText(action.arguments.value(argumentOf(action.kind)));
    }
}

}
