#include "frameimpl.h"

#include "fitlabel.h"
#include "frametheme.h"
#include "iconlabel.h"
#include "softbutton.h"
#include "titlebar.h"

#include <QtCore/QVariant>

namespace LCD::Widget {

namespace {

QString markName(IconType mark)
{
    switch (mark) {
    case IconPass:
        return QStringLiteral("pass");
    case IconNotPass:
        return QStringLiteral("notpass");
    case IconNone:
        break;
    }
    return QStringLiteral("none");
}

QVariantList described(const QVector<TestStep> &steps)
{
    QVariantList list;
    for (const TestStep &step : steps) {
        list << QVariantMap{{QStringLiteral("text"), step.text},
                            {QStringLiteral("color"), step.color.name()},
                            {QStringLiteral("mark"), markName(step.mark)}};
    }
    return list;
}

}

FactoryTestFrame::Impl::Impl(FactoryTestFrame *frame)
    : m_frame(frame), m_titleBar(new TitleBar(frame)), m_heading(new FitLabel(frame)), m_steps(new StepList(frame)),
      m_statusIcon(new IconLabel(frame)),
      m_left(new SoftButton(QStringLiteral("FactoryLeftButton"), QStringLiteral("Left button"), frame)),
      m_right(new SoftButton(QStringLiteral("FactoryRightButton"), QStringLiteral("Right button"), frame)),
      m_log(new FactoryTestRightFrame(frame))
{
    QPalette colors = frame->palette();
    colors.setColor(QPalette::Window, QColor(Theme::Background));
    colors.setColor(QPalette::WindowText, QColor(Theme::Text));
    frame->setPalette(colors);
    frame->setAutoFillBackground(true);
    m_heading->setObjectName(QStringLiteral("FactoryStepTitle"));
    m_heading->setAccessibleName(QStringLiteral("Step title"));
    m_heading->setBold();
    m_statusIcon->setObjectName(QStringLiteral("FactoryStatusIcon"));
    m_statusIcon->setAccessibleName(QStringLiteral("Status icon"));
    for (QWidget *part :
         {static_cast<QWidget *>(m_heading), static_cast<QWidget *>(m_statusIcon), static_cast<QWidget *>(m_left),
          static_cast<QWidget *>(m_right), static_cast<QWidget *>(m_log)})
        part->hide();
    for (QObject *watched :
         {static_cast<QObject *>(frame), static_cast<QObject *>(m_left), static_cast<QObject *>(m_right)})
        watched->installEventFilter(this);
    connectButtons();
    publishDefaults();
}

void FactoryTestFrame::Impl::connectButtons()
{
    connect(m_left, &QPushButton::pressed, this, [this] { setWantedFocus(FocusLeftButton); });
    connect(m_right, &QPushButton::pressed, this, [this] { setWantedFocus(FocusRightButton); });
    connect(m_left, &QPushButton::clicked, this, [this](bool checked) {
        if (m_left->isUsable())
            Q_EMIT m_frame->signalLeftBtnClicked(checked);
    });
    connect(m_right, &QPushButton::clicked, this, [this](bool checked) {
        if (m_right->isUsable())
            Q_EMIT m_frame->signalRightBtnClicked(checked);
    });
}

void FactoryTestFrame::Impl::publishDefaults()
{
    for (const char *text : {"title", "titleIcon", "stepTitle", "statusIcon", "leftText", "rightText", "keyMode"})
        publish(text, QString());
    for (const char *off : {"statusIconVisible", "leftVisible", "rightVisible"})
        publish(off, false);
    for (const char *on : {"stepTitleVisible", "leftEnabled", "keyEventsEnabled", "respondsToBack"})
        publish(on, true);
    publish("stepTitleColor", QColor(Theme::Text).name());
    publish("steps", QVariantList());
    publish("controlFocus", QStringLiteral("none"));
    publish("contentFontSize", m_contentFontSize);
    publish("log", QStringList());
}

void FactoryTestFrame::Impl::publish(const char *property, const QVariant &value)
{
    m_frame->setProperty(property, value);
}

void FactoryTestFrame::Impl::setTitle(const QString &title)
{
    m_titleBar->setTitle(title);
    m_frame->setAccessibleName(title);
    publish("title", title);
    scheduleArrange();
}

void FactoryTestFrame::Impl::setTitleIcon(const QString &objectName, const QString &key)
{
    m_titleBar->setIcon(objectName, key);
    publish("titleIcon", key);
}

void FactoryTestFrame::Impl::setHeading(const QString &text, const QColor &color)
{
    m_heading->setLine(text);
    m_heading->setColor(color);
    m_heading->setAccessibleName(text.isEmpty() ? QStringLiteral("Step title") : text);
    publish("stepTitle", text);
    publish("stepTitleColor", color.name());
    scheduleArrange();
}

void FactoryTestFrame::Impl::setHeadingVisible(bool visible)
{
    m_headingVisible = visible;
    publish("stepTitleVisible", visible);
    scheduleArrange();
}

void FactoryTestFrame::Impl::setSteps(const QVector<TestStep> &steps)
{
    m_queuedCalls.deliver();
    m_steps->setSteps(steps);
    publishSteps();
}

void FactoryTestFrame::Impl::appendStep(const TestStep &step)
{
    m_queuedCalls.deliver();
    m_steps->append(step);
    publishSteps();
}

void FactoryTestFrame::Impl::markStep(int index, IconType mark)
{
    m_steps->setMark(index, mark);
    publishSteps();
}

void FactoryTestFrame::Impl::publishSteps()
{
    publish("steps", described(m_steps->steps()));
    scheduleArrange();
}

void FactoryTestFrame::Impl::setStatusIcon(const QString &key)
{
    m_statusIcon->setKey(key);
    publish("statusIcon", key);
}

void FactoryTestFrame::Impl::setStatusIconVisible(bool visible)
{
    m_statusIcon->setVisible(visible);
    publish("statusIconVisible", visible);
    scheduleArrange();
}

void FactoryTestFrame::Impl::setCaption(SoftButton *button, const char *property, const QString &caption)
{
    button->setCaption(caption);
    publish(property, caption);
}

void FactoryTestFrame::Impl::setButtonVisible(SoftButton *button, const char *property, bool visible)
{
    // Otherwise Qt would move the focus of a hidden button to the next widget of the window.
    if (!visible)
        button->clearFocus();
    button->setVisible(visible);
    publish(property, visible);
    applyFocus();
}

void FactoryTestFrame::Impl::setLeftButtonEnabled(bool enabled)
{
    if (!enabled)
        m_left->clearFocus();
    m_left->setEnabled(enabled);
    publish("leftEnabled", enabled);
    applyFocus();
}

void FactoryTestFrame::Impl::setKeyEventsEnabled(bool enabled)
{
    m_keyEventsEnabled = enabled;
    publish("keyEventsEnabled", enabled);
}

void FactoryTestFrame::Impl::setRespondsToBack(bool responds)
{
    m_respondsToBack = responds;
    publish("respondsToBack", responds);
}

void FactoryTestFrame::Impl::setContentFontSize(int size)
{
    m_contentFontSize = size;
    publish("contentFontSize", size);
    scheduleArrange();
}

void FactoryTestFrame::Impl::appendLog(const QString &text, FactoryTestRightFrame::FactoryTestLogType type,
                                       FactoryTestRightFrame::FactoryTestLogLevel level)
{
    m_log->append(text, type, level);
    publish("log", m_log->lines());
    if (m_log->isHidden())
        scheduleArrange();
}

}
