#include "completemachinescreens.h"

#include "translation.h"

namespace LCD::FactoryModeImpl {

namespace {

QColor passGreen()
{
    return {18, 154, 55};
}

QColor failRed()
{
    return {255, 72, 60};
}

const char *rightCaptionKey(PhaseButtons buttons)
{
    switch (buttons) {
    case PhaseButtons::Next:
        return "FCNextStep";
    case PhaseButtons::Start:
        return "FCAgeModeStartTest";
    case PhaseButtons::Verdict:
        return "FCPass";
    case PhaseButtons::None:
    case PhaseButtons::Fail:
        break;
    }
    return nullptr;
}

// The screen at the end of a run: one line and the button for a re-test.
CompleteMachinePhaseInfo endScreen(const char *titleKey, const char *lineKey, const QColor &color)
{
    CompleteMachinePhaseInfo info;
    info.title = translated(QLatin1String(titleKey));
    info.stepTitle = translated(QStringLiteral("FCTestComplete"));
    info.steps << translated(QLatin1String(lineKey));
    info.stepColors << color;
    info.leftBtnText = translated(QStringLiteral("FCReTest"));
    info.leftBtnVisible = true;
    info.rightBtnVisible = false;
    info.focusLeftBtn = 1;
    info.panelMode = PanelModeFinished;
    return info;
}

}

CompleteMachinePhaseInfo phaseHeading(Phase phase)
{
    CompleteMachinePhaseInfo info;
    info.title = translated(QLatin1String(phaseRow(phase).titleKey));
    info.titleIcon = QLatin1String(phaseRow(phase).titleIcon);
    return info;
}

CompleteMachinePhaseInfo phaseInstructions(Phase phase)
{
    CompleteMachinePhaseInfo info = phaseHeading(phase);
    info.stepTitle = translated(QStringLiteral("TestStep"));
    for (const char *key : phaseRow(phase).stepKeys) {
        if (key)
            info.steps << translated(QLatin1String(key));
    }
    return info;
}

CompleteMachinePhaseInfo phaseScreen(Phase phase, const QString &titleSuffix)
{
    CompleteMachinePhaseInfo info = phaseInstructions(phase);
    info.title += titleSuffix;
    setButtons(info, phaseRow(phase).buttons);
    info.panelMode = phaseRow(phase).panelMode;
    return info;
}

CompleteMachinePhaseInfo firstPortScreen(Phase phase)
{
    CompleteMachinePhaseInfo info = phaseScreen(phase);
    info.statusIcon = QLatin1String(phaseRow(phase).statusIcon);
    return info;
}

CompleteMachinePhaseInfo buttonFunctionScreen()
{
    CompleteMachinePhaseInfo info = phaseScreen(PhaseButtonFunction);
    info.keyEventsEnabled = false;
    return info;
}

CompleteMachinePhaseInfo judgeScreen(Phase phase)
{
    CompleteMachinePhaseInfo info = phaseHeading(phase);
    info.stepTitle = translated(QStringLiteral("FCTestComplete"));
    info.steps << translated(QStringLiteral("FCPleaseJudgePass"));
    setVerdictButtons(info);
    return info;
}

CompleteMachinePhaseInfo failScreen()
{
    CompleteMachinePhaseInfo info = endScreen("MachineMode", "FCNoPass", failRed());
    info.titleIcon = QStringLiteral("MachineMode");
    return info;
}

// Sets no title icon, so the page keeps that of the last phase.
CompleteMachinePhaseInfo passScreen()
{
    return endScreen("FCTestComplete", "FCTestPass", passGreen());
}

void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons)
{
    setButtons(info, buttons, rightCaptionKey(buttons));
}

void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons, const char *rightBtnKey)
{
    info.leftBtnVisible = buttons == PhaseButtons::Fail || buttons == PhaseButtons::Verdict;
    info.rightBtnVisible = buttons != PhaseButtons::None && buttons != PhaseButtons::Fail;
    info.focusLeftBtn = buttons == PhaseButtons::Fail ? 1 : 0;
    if (info.leftBtnVisible)
        info.leftBtnText = translated(QStringLiteral("FCNoPass"));
    if (rightBtnKey)
        info.rightBtnText = translated(QLatin1String(rightBtnKey));
}

void setVerdictButtons(CompleteMachinePhaseInfo &info)
{
    setButtons(info, PhaseButtons::Verdict);
    info.panelMode = PanelModeVerdict;
}

}
