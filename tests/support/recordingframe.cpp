#include "recordingframe.h"

#include <QtCore/QThread>

#include <atomic>

#if defined(__SANITIZE_ADDRESS__)
// The widget library is loaded, too. This frame hides its frame on purpose.
extern "C" const char *__asan_default_options()
{
    return "detect_odr_violation=0";
}
#endif

namespace {

std::atomic<CallLog *> frameCalls{nullptr};

QString text(const QString &value)
{
    return value;
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString text(int value)
{
    return QString::number(value);
}

QString text(const QColor &value)
{
    return value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

template <class... Values>
void record(const QObject *frame, const char *operation, const Values &...values)
{
    CallLog *calls = frameCalls;
    if (!calls)
        return;
    const QString call = QStringLiteral("frame.%1(%2)")
                             .arg(QLatin1String(operation), QStringList({text(values)...}).join(QStringLiteral(", ")));
    const bool home = QThread::currentThread() == frame->thread();
    calls->add(home ? call : call + QStringLiteral(" on another thread"));
}

}

void recordFrameCalls(CallLog *calls)
{
    frameCalls = calls;
}

LCD::Widget::FactoryTestFrame *frameOf(const QWidget &page)
{
    return page.findChild<LCD::Widget::FactoryTestFrame *>();
}

namespace LCD::Widget {

FactoryTestFrame::FactoryTestFrame(QWidget *parent) : QWidget(parent)
{
    record(this, "FactoryTestFrame");
}

FactoryTestFrame::~FactoryTestFrame() = default;

void FactoryTestFrame::setFactoryTestKeyMode(const QString &mode)
{
    record(this, "setFactoryTestKeyMode", mode);
}

void FactoryTestFrame::setTitle(const QString &title)
{
    record(this, "setTitle", title);
}

void FactoryTestFrame::setTitleIcon(const QString &objectName, const QString &iconName)
{
    record(this, "setTitleIcon", objectName, iconName);
}

void FactoryTestFrame::setStepTitle(const QString &stepTitle, const QColor &color)
{
    record(this, "setStepTitle", stepTitle, color);
}

void FactoryTestFrame::setStepTitleVisible(bool visible)
{
    record(this, "setStepTitleVisible", visible);
}

void FactoryTestFrame::addTestSteps(const QStringList &steps)
{
    record(this, "addTestSteps", steps.join(QStringLiteral(" | ")));
}

void FactoryTestFrame::addTestStep(const QString &step, const QColor &color, bool flag)
{
    record(this, "addTestStep", step, color, flag);
}

void FactoryTestFrame::clearAllSteps()
{
    record(this, "clearAllSteps");
}

void FactoryTestFrame::setStepIcon(int stepIndex, IconType icon)
{
    record(this, "setStepIcon", stepIndex, static_cast<int>(icon));
}

void FactoryTestFrame::setLeftBtnText(const QString &caption)
{
    record(this, "setLeftBtnText", caption);
}

void FactoryTestFrame::setRightBtnText(const QString &caption)
{
    record(this, "setRightBtnText", caption);
}

void FactoryTestFrame::setLeftBtnVisible(bool visible)
{
    record(this, "setLeftBtnVisible", visible);
}

void FactoryTestFrame::setRighttBtnVisible(bool visible)
{
    record(this, "setRighttBtnVisible", visible);
}

void FactoryTestFrame::setNoPassButtonCanClicked(bool clickable)
{
    record(this, "setNoPassButtonCanClicked", clickable);
}

void FactoryTestFrame::setKeyEventsEnabled(bool enabled)
{
    record(this, "setKeyEventsEnabled", enabled);
}

void FactoryTestFrame::setStatusIcon(const QString &iconKey)
{
    record(this, "setStatusIcon", iconKey);
}

void FactoryTestFrame::setStatusIconVisible(bool visible)
{
    record(this, "setStatusIconVisible", visible);
}

void FactoryTestFrame::setControlFocus(FocusType focus)
{
    record(this, "setControlFocus", static_cast<int>(focus));
}

void FactoryTestFrame::setIsReponseEvent(bool respond)
{
    record(this, "setIsReponseEvent", respond);
}

void FactoryTestFrame::setContentFontSize(int size)
{
    record(this, "setContentFontSize", size);
}

void FactoryTestFrame::log(const QString &line, FactoryTestRightFrame::FactoryTestLogType type,
                           FactoryTestRightFrame::FactoryTestLogLevel level) const
{
    record(this, "log", line, static_cast<int>(type), static_cast<int>(level));
}

}
