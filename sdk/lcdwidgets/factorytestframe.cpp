#include "lcd/widget/factorytestframe.h"

namespace LCD::Widget {

class FactoryTestRightFrame::Impl
{
};

FactoryTestRightFrame::FactoryTestRightFrame(QWidget *parent) : QWidget(parent), d(new Impl)
{
}

FactoryTestRightFrame::~FactoryTestRightFrame()
{
    delete d;
}

class FactoryTestFrame::Impl
{
};

FactoryTestFrame::FactoryTestFrame(QWidget *parent) : QWidget(parent), d(new Impl)
{
}

FactoryTestFrame::~FactoryTestFrame()
{
    delete d;
}

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

void FactoryTestFrame::log(const QString &, FactoryTestRightFrame::FactoryTestLogType,
                           FactoryTestRightFrame::FactoryTestLogLevel) const
{
}

}
