#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

namespace LCD::Widget {

/// The button that setControlFocus() gives the focus to.
enum FocusType : int {
    FocusLeftButton = 0,
    FocusRightButton = 1,
    FocusNone = 2,
};

/// The mark of a step line.
enum IconType : int {
    IconPass = 0,
    IconNotPass = 1,
    IconNone = 2,
};

/// The log of a test page. It shows the newest lines that fit. Use it on the GUI thread.
class FactoryTestRightFrame : public QWidget
{
    Q_OBJECT

public:
    enum FactoryTestLogType : int {
        LogTest = 0,
        LogSystem = 1,
    };
    enum FactoryTestLogLevel : int {
        LogDebug = 0,
        LogWarning = 1,
        LogInfo = 2,
        LogError = 3,
    };

    explicit FactoryTestRightFrame(QWidget *parent);
    ~FactoryTestRightFrame() override;

    /// Appends a line. The last 500 lines are kept.
    void append(const QString &text, FactoryTestLogType type, FactoryTestLogLevel level);
    QStringList lines() const;
    /// Sets the font size of the lines in pixels.
    void setLogFontSize(int pixelSize);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Impl;
    Impl *d;
};

/// The frame of a test page: title with icon, step title, step lines, status icon, two soft buttons and a log.
/// Call all functions on the GUI thread, except log() and setStepIcon(), which are thread-safe.
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
    /// Replaces the list of step lines.
    void addTestSteps(const QStringList &steps);
    /// Appends a step line. @p flag isn't used.
    void addTestStep(const QString &text, const QColor &color, bool flag);
    void clearAllSteps();
    /// Sets the mark of step line @p stepIndex, counted from 0. Does nothing if there is no such line. Thread-safe.
    void setStepIcon(int stepIndex, LCD::Widget::IconType icon);
    void setLeftBtnText(const QString &text);
    void setRightBtnText(const QString &text);
    void setLeftBtnVisible(bool visible);
    /// Shows or hides the right button. The spelling is part of the interface.
    void setRighttBtnVisible(bool visible);
    /// Disables the left button if @p clickable is false.
    void setNoPassButtonCanClicked(bool clickable);
    /// If @p enabled is false, the frame accepts all key events and does nothing with them, because the keys belong to
    /// the test.
    void setKeyEventsEnabled(bool enabled);
    void setStatusIcon(const QString &iconKey);
    void setStatusIconVisible(bool visible);
    void setControlFocus(LCD::Widget::FocusType focus);
    /// If @p respond is false, Escape doesn't emit signalBackPrevious(). The soft buttons still work. The spelling is
    /// part of the interface.
    void setIsReponseEvent(bool respond);
    /// Sets the font size of the content area, in pixels of a frame of 800x480.
    void setContentFontSize(int size);
    /// Appends a line to the log. Thread-safe.
    void log(const QString &text, LCD::Widget::FactoryTestRightFrame::FactoryTestLogType type,
             LCD::Widget::FactoryTestRightFrame::FactoryTestLogLevel level) const;

Q_SIGNALS:
    /// Emitted when the operator presses Escape.
    void signalBackPrevious();
    void signalLeftBtnClicked(bool checked);
    void signalRightBtnClicked(bool checked);

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(FactoryTestFrame) == sizeof(QWidget) + sizeof(void *));

}
