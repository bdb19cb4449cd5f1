#pragma once

#include "recordinghost.h"

#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

// The frame of the test pages as the component may know it, and no more, in the place of the widget library's: compiled
// into a test program that exports its symbols, it is what the component finds under these names. Each call goes into
// the log that recordFrameCalls() names. Don't include the SDK's header beside this one.

namespace LCD::Widget {

enum FocusType : int;
enum IconType : int;

class FactoryTestRightFrame
{
public:
    enum FactoryTestLogType : int;
    enum FactoryTestLogLevel : int;
};

class FactoryTestFrame : public QWidget
{
    Q_OBJECT

public:
    explicit FactoryTestFrame(QWidget *parent);
    ~FactoryTestFrame() override;

    void setFactoryTestKeyMode(const QString &mode);
    void setTitle(const QString &title);
    void setTitleIcon(const QString &objectName, const QString &iconName);
    void setStepTitle(const QString &text, const QColor &color);
    void setStepTitleVisible(bool visible);
    void addTestSteps(const QStringList &steps);
    void addTestStep(const QString &text, const QColor &color, bool flag);
    void clearAllSteps();
    void setStepIcon(int stepIndex, LCD::Widget::IconType icon);
    void setLeftBtnText(const QString &text);
    void setRightBtnText(const QString &text);
    void setLeftBtnVisible(bool visible);
    void setRighttBtnVisible(bool visible);
    void setNoPassButtonCanClicked(bool clickable);
    void setKeyEventsEnabled(bool enabled);
    void setStatusIcon(const QString &iconKey);
    void setStatusIconVisible(bool visible);
    void setControlFocus(LCD::Widget::FocusType focus);
    void setIsReponseEvent(bool respond);
    void setContentFontSize(int size);
    void log(const QString &text, LCD::Widget::FactoryTestRightFrame::FactoryTestLogType type,
             LCD::Widget::FactoryTestRightFrame::FactoryTestLogLevel level) const;

Q_SIGNALS:
    void signalBackPrevious();
    void signalLeftBtnClicked(bool checked);
    void signalRightBtnClicked(bool checked);

private:
    [[maybe_unused]] void *m_unused = nullptr;
};

static_assert(sizeof(FactoryTestFrame) == sizeof(QWidget) + sizeof(void *), "the component makes it of this size");

}

/// Where the frames of this process write their calls from now on; nullptr: nowhere. A frame that is called on another
/// thread than its own says so behind the call.
void recordFrameCalls(CallLog *calls);

/// The frame that @p page has made.
LCD::Widget::FactoryTestFrame *frameOf(const QWidget &page);
