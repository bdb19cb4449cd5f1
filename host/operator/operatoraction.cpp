#include "operator/operatoraction.h"

namespace panelhost {

namespace {

constexpr struct
{
    OperatorAction::Kind kind;
    const char *name;
} actionNames[] = {
    {OperatorAction::Kind::Navigate, "navigate"},
    {OperatorAction::Kind::Press, "press"},
    {OperatorAction::Kind::Hold, "hold"},
    {OperatorAction::Kind::Release, "release"},
    {OperatorAction::Kind::Soft, "soft"},
    {OperatorAction::Kind::Touch, "touch"},
    {OperatorAction::Kind::TouchDown, "touch-down"},
    {OperatorAction::Kind::TouchMove, "touch-move"},
    {OperatorAction::Kind::TouchUp, "touch-up"},
    {OperatorAction::Kind::TBar, "tbar"},
    {OperatorAction::Kind::Plug, "plug"},
    {OperatorAction::Kind::Unplug, "unplug"},
    {OperatorAction::Kind::Block, "block"},
    {OperatorAction::Kind::Unblock, "unblock"},
    {OperatorAction::Kind::Calibration, "calibration"},
    {OperatorAction::Kind::Part, "part"},
    {OperatorAction::Kind::Fault, "fault"},
    {OperatorAction::Kind::Language, "language"},
    {OperatorAction::Kind::Unit, "unit"},
    {OperatorAction::Kind::EnterFactoryMode, "enter-factory-mode"},
    {OperatorAction::Kind::ExitFactoryMode, "exit-factory-mode"},
};

}

QString actionName(OperatorAction::Kind kind)
{
    for (const auto &known : actionNames) {
        if (known.kind == kind)
            return QString::fromLatin1(known.name);
    }
    return {};
}

std::optional<OperatorAction::Kind> actionKind(const QString &name)
{
    for (const auto &known : actionNames) {
        if (name == QLatin1String(known.name))
            return known.kind;
    }
    return std::nullopt;
}

OperatorAction navigationAction(const QString &key)
{
    return {OperatorAction::Kind::Navigate, {{QStringLiteral("key"), key}}};
}

}
