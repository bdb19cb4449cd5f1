#include "lcd/widget/factorytestframe.h"

using namespace LCD::Widget;

FactoryTestFrame::FactoryTestFrame(QWidget *parent) : QWidget(parent)
{
}

FactoryTestFrame::~FactoryTestFrame() = default;

void FactoryTestFrame::setFactoryTestKeyMode(const QString &)
{
}

void FactoryTestFrame::setTitle(const QString &)
{
}

void FactoryTestFrame::setTitleIcon(const QString &, const QString &)
{
}

void FactoryTestFrame::setStepTitle(const QString &, const QColor &)
{
}

void FactoryTestFrame::setStepTitleVisible(bool)
{
}

void FactoryTestFrame::addTestSteps(const QStringList &)
{
}

void FactoryTestFrame::addTestStep(const QString &, const QColor &, bool)
{
}

void FactoryTestFrame::clearAllSteps()
{
}

void FactoryTestFrame::setStepIcon(int, LCD::Widget::IconType)
{
}

void FactoryTestFrame::setLeftBtnText(const QString &)
{
}

void FactoryTestFrame::setRightBtnText(const QString &)
{
}

void FactoryTestFrame::setLeftBtnVisible(bool)
{
}

void FactoryTestFrame::setRighttBtnVisible(bool)
{
}

void FactoryTestFrame::setNoPassButtonCanClicked(bool)
{
}

void FactoryTestFrame::setKeyEventsEnabled(bool)
{
}

void FactoryTestFrame::setStatusIcon(const QString &)
{
}

void FactoryTestFrame::setStatusIconVisible(bool)
{
}

void FactoryTestFrame::setControlFocus(LCD::Widget::FocusType)
{
}

void FactoryTestFrame::setIsReponseEvent(bool)
{
}

void FactoryTestFrame::setContentFontSize(int)
{
}

void FactoryTestFrame::log(const QString &, LCD::Widget::FactoryTestRightFrame::FactoryTestLogType,
                           LCD::Widget::FactoryTestRightFrame::FactoryTestLogLevel) const
{
}
