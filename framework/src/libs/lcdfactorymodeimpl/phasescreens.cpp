#include "phasescreens.h"

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

// The end of a run: one line and the re-test button.
CompleteMachinePhaseInfo resultScreen(const char *titleKey, const char *lineKey, const QColor &color)
{
    CompleteMachinePhaseInfo info;
    info.title = translated(QLatin1String(titleKey));
    info.stepTitle = translated(QLatin1String("FCTestComplete"));
    info.steps << translated(QLatin1String(lineKey));
    info.stepColors << color;
    info.leftBtnText = translated(QLatin1String("FCReTest"));
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

CompleteMachinePhaseInfo phaseScreen(Phase phase, const QString &titleSuffix)
{
    CompleteMachinePhaseInfo info = phaseHeading(phase);
    info.title += titleSuffix;
    info.stepTitle = translated(QLatin1String("TestStep"));
    for (const char *key : phaseRow(phase).stepKeys) {
        if (key)
            info.steps << translated(QLatin1String(key));
    }
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
    info.stepTitle = translated(QLatin1String("FCTestComplete"));
    info.steps << translated(QLatin1String("FCPleaseJudgePass"));
    setVerdictButtons(info);
    return info;
}

CompleteMachinePhaseInfo failScreen()
{
    CompleteMachinePhaseInfo info = resultScreen("MachineMode", "FCNoPass", failRed());
    info.titleIcon = QStringLiteral("MachineMode");
    return info;
}

// Without an icon of its own: that of the last phase stays on the page.
CompleteMachinePhaseInfo passScreen()
{
    return resultScreen("FCTestComplete", "FCTestPass", passGreen());
}

void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons)
{
    info.leftBtnVisible = buttons == PhaseButtons::Fail || buttons == PhaseButtons::Verdict;
    info.rightBtnVisible = buttons != PhaseButtons::None && buttons != PhaseButtons::Fail;
    info.focusLeftBtn = buttons == PhaseButtons::Fail ? 1 : 0;
    if (info.leftBtnVisible)
        info.leftBtnText = translated(QLatin1String("FCNoPass"));
    if (buttons == PhaseButtons::Next)
        info.rightBtnText = translated(QLatin1String("FCNextStep"));
    else if (buttons == PhaseButtons::Start)
        info.rightBtnText = translated(QLatin1String("FCAgeModeStartTest"));
    else if (buttons == PhaseButtons::Verdict)
        info.rightBtnText = translated(QLatin1String("FCPass"));
}

void setVerdictButtons(CompleteMachinePhaseInfo &info)
{
    setButtons(info, PhaseButtons::Verdict);
    info.panelMode = PanelModeVerdict;
}

}
