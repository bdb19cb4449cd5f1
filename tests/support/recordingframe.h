#pragma once

#include "recordinghost.h"

#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

// Replaces the frame of the widget library in tests, with exactly the declarations that the component knows. Compile it
// into a test program that exports its symbols; the component then uses this frame. Each call is added to the log that
// was passed to recordFrameCalls(). Don't include the SDK's header together with this one.

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

static_assert(sizeof(FactoryTestFrame) == sizeof(QWidget) + sizeof(void *), "the component allocates this size");

}

/// Makes all frames of the process add their calls to @p calls; nullptr turns this off. The entry of a call on another
/// thread than the frame's says so at its end.
void recordFrameCalls(CallLog *calls);

/// Returns the frame that @p page has created.
LCD::Widget::FactoryTestFrame *frameOf(const QWidget &page);
