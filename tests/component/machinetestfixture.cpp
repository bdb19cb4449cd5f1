#include "machinetestfixture.h"

using LCD::FactoryModeImpl::CompleteMachinePhaseInfo;

MachineTestFixture::MachineTestFixture()
{
    make();
}

void MachineTestFixture::make()
{
    biz.emplace();
    biz->registerPhaseCallback("page",
                               [this](const CompleteMachinePhaseInfo &info) { host.calls.add(describe(info)); });
    biz->registerLogCallback("page", [this](const QString &line) { host.calls.add(QStringLiteral("log ") + line); });
    biz->registerStepIconCallback("page", [this](int step) { host.calls.add(QStringLiteral("icon %1").arg(step)); });
}

QStringList MachineTestFixture::told()
{
    return take().filter(QRegularExpression(QStringLiteral("^(phase|log|icon) ")));
}

void MachineTestFixture::startAndPassTo(int phase)
{
    biz->start();
    while (biz->currentPhaseIndex() < phase)
        pass();
    take();
}

QStringList MachineTestFixture::pass()
{
    bringToVerdict();
    take();
    right();
    return take();
}

namespace {

class Description
{
public:
    void text(const char *name, const QString &value)
    {
        if (!value.isEmpty())
            m_fields << QStringLiteral("%1=%2").arg(QLatin1String(name), value);
    }
    void flag(const char *name, bool shown)
    {
        if (shown)
            m_fields << QLatin1String(name);
    }
    QString result() const { return QStringLiteral("phase ") + m_fields.join(QStringLiteral("; ")); }

private:
    QStringList m_fields;
};

}

QString describe(const CompleteMachinePhaseInfo &info)
{
    QStringList colors;
    for (const QColor &color : info.stepColors)
        colors << color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
    Description line;
    line.text("title", info.title);
    line.text("icon", info.titleIcon);
    line.text("stepTitle", info.stepTitle);
    line.text("steps", info.steps.join(QStringLiteral(" | ")));
    line.text("colors", colors.join(QStringLiteral(" | ")));
    line.text("leftText", info.leftBtnText);
    line.text("rightText", info.rightBtnText);
    line.flag("left", info.leftBtnVisible);
    line.flag("noRight", !info.rightBtnVisible);
    line.text("status", info.statusIcon);
    line.flag("statusShown", info.statusIconVisible);
    line.text("focusLeft", info.focusLeftBtn == 0 ? QString() : QString::number(info.focusLeftBtn));
    line.flag("noKeyEvents", !info.keyEventsEnabled);
    line.flag("noPassBlocked", !info.noPassBtnClickable);
    line.flag("noStepTitle", !info.stepTitleVisible);
    line.flag("keepSteps", info.keepSteps);
    line.text("mode", info.panelMode == -1 ? QString() : QString::number(info.panelMode));
    return line.result();
}

QString judgeScreenOf(const QString &title, const QString &icon)
{
    return QStringLiteral("phase title=%1; icon=%2; stepTitle=[FCTestComplete]; steps=[FCPleaseJudgePass]; "
                          "leftText=[FCNoPass]; rightText=[FCPass]; left; mode=9")
        .arg(title, icon);
}

QString failScreen()
{
    return QStringLiteral("phase title=[MachineMode]; icon=MachineMode; stepTitle=[FCTestComplete]; steps=[FCNoPass]; "
                          "colors=#ff483c; leftText=[FCReTest]; left; noRight; focusLeft=1; mode=8");
}

QString passScreen()
{
    return QStringLiteral("phase title=[FCTestComplete]; stepTitle=[FCTestComplete]; steps=[FCTestPass]; "
                          "colors=#129a37; leftText=[FCReTest]; left; noRight; focusLeft=1; mode=8");
}

QStringList failure()
{
    return {QStringLiteral("log Test failed"), failScreen()};
}
