#pragma once

#include "lcd/widget/factorytestframe.h"
#include "queuedcalls.h"
#include "steplist.h"

class QKeyEvent;

namespace LCD::Widget {

class FitLabel;
class IconLabel;
class SoftButton;
class TitleBar;
struct Metrics;
enum class FrameKey;

/// The implementation of the frame: its child widgets, their layout, key events and focus. Each change updates the
/// properties of the frame at once. The layout is updated when the event loop runs next. Use it on the GUI thread; only
/// m_queuedCalls is thread-safe.
class FactoryTestFrame::Impl : public QObject
{
public:
    explicit Impl(FactoryTestFrame *frame);

    void setTitle(const QString &title);
    void setTitleIcon(const QString &objectName, const QString &key);
    void setHeading(const QString &text, const QColor &color);
    void setHeadingVisible(bool visible);
    void setSteps(const QVector<TestStep> &steps);
    void appendStep(const TestStep &step);
    void markStep(int index, IconType mark);
    void setStatusIcon(const QString &key);
    void setStatusIconVisible(bool visible);
    void setCaption(SoftButton *button, const char *property, const QString &caption);
    void setButtonVisible(SoftButton *button, const char *property, bool visible);
    void setLeftButtonEnabled(bool enabled);
    void setWantedFocus(FocusType focus);
    void setKeyEventsEnabled(bool enabled);
    void setRespondsToBack(bool responds);
    void setContentFontSize(int size);
    void appendLog(const QString &text, FactoryTestRightFrame::FactoryTestLogType type,
                   FactoryTestRightFrame::FactoryTestLogLevel level);
    void publish(const char *property, const QVariant &value);

    SoftButton *left() const { return m_left; }
    SoftButton *right() const { return m_right; }
    QueuedCalls &queuedCalls() { return m_queuedCalls; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void publishDefaults();
    void publishSteps();
    void connectButtons();

    void scheduleArrange();
    void arrange();
    QRect arrangeBars(const Metrics &metrics);
    QRect arrangeLog(const Metrics &metrics, const QRect &body);
    void arrangeContent(const Metrics &metrics, QRect content);
    QRect arrangeStatusIcon(const Metrics &metrics, const QRect &content);

    bool filterFrameEvent(const QEvent &event);
    bool filterKey(QKeyEvent *event);
    void act(FrameKey key);
    void activateFocused();
    void moveFocus(SoftButton *towards);

    FocusType shownFocus() const;
    void applyFocus();
    void showDanger();
    void takeKeyboard();
    bool mayTakeKeyboard() const;

    FactoryTestFrame *m_frame;
    QueuedCalls m_queuedCalls;
    TitleBar *m_titleBar;
    FitLabel *m_heading;
    StepList *m_steps;
    IconLabel *m_statusIcon;
    SoftButton *m_left;
    SoftButton *m_right;
    FactoryTestRightFrame *m_log;
    FocusType m_wantedFocus = FocusNone;
    bool m_headingVisible = true;
    bool m_keyEventsEnabled = true;
    bool m_respondsToBack = true;
    int m_contentFontSize = 30;
};

}
