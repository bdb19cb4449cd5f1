#include "operator/action.h"

namespace panelhost {

namespace {

constexpr struct
{
    Action::Kind kind;
    const char *name;
} actionNames[] = {
    {Action::Kind::Navigate, "navigate"},
    {Action::Kind::Press, "press"},
    {Action::Kind::Hold, "hold"},
    {Action::Kind::Release, "release"},
    {Action::Kind::Soft, "soft"},
    {Action::Kind::Touch, "touch"},
    {Action::Kind::TBar, "tbar"},
    {Action::Kind::Plug, "plug"},
    {Action::Kind::Unplug, "unplug"},
    {Action::Kind::Block, "block"},
    {Action::Kind::Unblock, "unblock"},
    {Action::Kind::Fault, "fault"},
    {Action::Kind::Language, "language"},
    {Action::Kind::EnterFactoryMode, "enter-factory-mode"},
    {Action::Kind::ExitFactoryMode, "exit-factory-mode"},
};

}

QString actionName(Action::Kind kind)
{
    for (const auto &known : actionNames) {
        if (known.kind == kind)
            return QString::fromLatin1(known.name);
    }
    return {};
}

std::optional<Action::Kind> actionKind(const QString &name)
{
    for (const auto &known : actionNames) {
        if (name == QLatin1String(known.name))
            return known.kind;
    }
    return std::nullopt;
}

}
