#include "scenario/steptext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

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

// A serial number or a message may contain anything, such as ": ", "#" or a line break, and may look like a number. A
// text in quotes is the same in JSON and YAML.
QString quoted(const QString &text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

// The shortest text that gives the same number again.
QString valueText(const QVariant &value)
{
    return value.type() == QVariant::Double ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
                                            : value.toString();
}

// Words that YAML doesn't take for something else stay as they are.
QString wordText(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z][A-Za-z0-9_-]*$"));
    return plain.match(text).hasMatch() && text.compare(QLatin1String("null"), Qt::CaseInsensitive) != 0 ? text
                                                                                                         : quoted(text);
}

QString keyText(const QVariant &halKey, const KeyNames &keys)
{
    const QString name = keys.value(halKey.toInt());
    return name.isEmpty() ? valueText(halKey) : wordText(name);
}

QString mapText(const QVariantMap &values)
{
    QStringList entries;
    for (auto it = values.begin(); it != values.end(); ++it)
        entries.append(it.key() + QStringLiteral(": ") + valueText(it.value()));
    return QLatin1Char('{') + entries.join(QStringLiteral(", ")) + QLatin1Char('}');
}

QString calibrationText(const QVariantMap &arguments)
{
    return QStringLiteral("{command: %1, ok: %2, message: %3}")
        .arg(valueText(arguments.value(QStringLiteral("command"))), valueText(arguments.value(QStringLiteral("ok"))),
             quoted(arguments.value(QStringLiteral("message")).toString()));
}

QVariantMap withKeyName(QVariantMap arguments, const KeyNames &keys)
{
    const QString key = QStringLiteral("key");
    if (arguments.contains(key))
        arguments.insert(key, keyText(arguments.value(key), keys));
    return arguments;
}

QString switchText(QVariantMap arguments, const KeyNames &keys)
{
    arguments.insert(activeWord(), arguments.take(QStringLiteral("on")));
    return mapText(withKeyName(arguments, keys));
}

}

QString activeWord()
{
    return QStringLiteral("active");
}

QString faultText(const QString &name, QVariantMap arguments, const KeyNames &keys)
{
    arguments.insert(QStringLiteral("name"), name);
    return mapText(withKeyName(arguments, keys));
}

QString stepText(const OperatorAction &action, const KeyNames &keys)
{
    switch (action.kind) {
    case Kind::EnterFactoryMode:
        return QStringLiteral("factory-mode: enter");
    case Kind::ExitFactoryMode:
        return QStringLiteral("factory-mode: exit");
    case Kind::Fault:
        return actionName(action.kind) + QStringLiteral(": ") + switchText(action.arguments, keys);
    case Kind::Calibration:
        return actionName(action.kind) + QStringLiteral(": ") + calibrationText(action.arguments);
    case Kind::TouchUp:
        return actionName(action.kind) + QLatin1Char(':');
    case Kind::Plug:
        return actionName(action.kind) + QStringLiteral(": ")
            + (action.arguments.size() > 1 ? mapText(action.arguments)
                                           : valueText(action.arguments.value(argumentOf(action.kind))));
    case Kind::Part:
    case Kind::Touch:
    case Kind::TouchDown:
    case Kind::TouchMove:
        return actionName(action.kind) + QStringLiteral(": ") + mapText(action.arguments);
    case Kind::Unit:
        return actionName(action.kind) + QStringLiteral(": ")
            + quoted(action.arguments.value(argumentOf(action.kind)).toString());
    case Kind::Press:
    case Kind::Hold:
    case Kind::Release:
        return actionName(action.kind) + QStringLiteral(": ")
            + keyText(action.arguments.value(argumentOf(action.kind)), keys);
    default:
        return actionName(action.kind) + QStringLiteral(": ")
            + valueText(action.arguments.value(argumentOf(action.kind)));
    }
}

}
