#include "lcd/widget/factorytestframe.h"

#include "frameimpl.h"

#include <QtCore/QVariant>

namespace LCD::Widget {

FactoryTestFrame::FactoryTestFrame(QWidget *parent) : QWidget(parent), d(new Impl(this))
{
}

FactoryTestFrame::~FactoryTestFrame()
{
    delete d;
}

void FactoryTestFrame::setFactoryTestKeyMode(const QString &mode)
{
    d->publish("keyMode", mode);
}

void FactoryTestFrame::setTitle(const QString &title)
{
    d->setTitle(title);
}

void FactoryTestFrame::setTitleIcon(const QString &objectName, const QString &iconName)
{
    d->setTitleIcon(objectName, iconName);
}

void FactoryTestFrame::setStepTitle(const QString &text, const QColor &color)
{
    d->setHeading(text, color);
}

void FactoryTestFrame::setStepTitleVisible(bool visible)
{
    d->setHeadingVisible(visible);
}

void FactoryTestFrame::addTestSteps(const QStringList &steps)
{
    QVector<TestStep> lines;
    for (const QString &text : steps)
        lines << TestStep{text, Qt::white, IconNone};
    d->setSteps(lines);
}

void FactoryTestFrame::addTestStep(const QString &text, const QColor &color, bool)
{
    d->appendStep({text, color, IconNone});
}

void FactoryTestFrame::clearAllSteps()
{
    d->setSteps({});
}

void FactoryTestFrame::setStepIcon(int stepIndex, LCD::Widget::IconType icon)
{
    d->queuedCalls().post([impl = d, stepIndex, icon] { impl->markStep(stepIndex, icon); });
}

void FactoryTestFrame::setLeftBtnText(const QString &text)
{
    d->setCaption(d->left(), "leftText", text);
}

void FactoryTestFrame::setRightBtnText(const QString &text)
{
    d->setCaption(d->right(), "rightText", text);
}

void FactoryTestFrame::setLeftBtnVisible(bool visible)
{
    d->setButtonVisible(d->left(), "leftVisible", visible);
}

void FactoryTestFrame::setRighttBtnVisible(bool visible)
{
    d->setButtonVisible(d->right(), "rightVisible", visible);
}

void FactoryTestFrame::setNoPassButtonCanClicked(bool clickable)
{
    d->setLeftButtonEnabled(clickable);
}

void FactoryTestFrame::setKeyEventsEnabled(bool enabled)
{
    d->setKeyEventsEnabled(enabled);
}

void FactoryTestFrame::setStatusIcon(const QString &iconKey)
{
    d->setStatusIcon(iconKey);
}

void FactoryTestFrame::setStatusIconVisible(bool visible)
{
    d->setStatusIconVisible(visible);
}

void FactoryTestFrame::setControlFocus(LCD::Widget::FocusType focus)
{
    d->setWantedFocus(focus);
}

void FactoryTestFrame::setIsReponseEvent(bool respond)
{
    d->setRespondsToBack(respond);
}

void FactoryTestFrame::setContentFontSize(int size)
{
    d->setContentFontSize(size);
}

void FactoryTestFrame::log(const QString &text, FactoryTestRightFrame::FactoryTestLogType type,
                           FactoryTestRightFrame::FactoryTestLogLevel level) const
{
    d->queuedCalls().post([impl = d, text, type, level] { impl->appendLog(text, type, level); });
}

}
