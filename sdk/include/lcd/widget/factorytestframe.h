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
    /// What a line is about. It doesn't change how the line looks.
    enum FactoryTestLogType : int {
        LogTest = 0,   ///< the test of the page
        LogSystem = 1, ///< the device
    };
    /// The level of a line, which sets its color. The numbers aren't in the order of importance.
    enum FactoryTestLogLevel : int {
        LogDebug = 0,   ///< dim
        LogWarning = 1, ///< yellow
        LogInfo = 2,    ///< white while it is the newest line, then gray
        LogError = 3,   ///< red
    };

    /// Creates an empty log. @p parent owns it and may be null.
    explicit FactoryTestRightFrame(QWidget *parent);
    ~FactoryTestRightFrame() override;

    /// Appends a line. The last 500 lines are kept.
    void append(const QString &text, FactoryTestLogType type, FactoryTestLogLevel level);
    /// Returns the lines, the oldest one first.
    QStringList lines() const;
    /// Sets the font size of the lines in pixels.
    void setLogFontSize(int pixelSize);

protected:
    /// Paints the newest lines that fit.
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
    /// Creates a frame without texts, with hidden buttons. @p parent owns it and may be null.
    explicit FactoryTestFrame(QWidget *parent);
    ~FactoryTestFrame() override;

    /// Sets the key mode. The reference frame doesn't use it.
    void setFactoryTestKeyMode(const QString &mode);
    /// Sets the text of the title bar.
    void setTitle(const QString &title);
    /// Sets the icon in the title bar by its key. An icon key without an icon is shown as text; an empty one hides the
    /// icon. @p objectName becomes the object name of the label.
    void setTitleIcon(const QString &objectName, const QString &iconName);
    /// Sets the heading above the step lines. An empty heading takes no space.
    void setStepTitle(const QString &text, const QColor &color);
    /// Shows or hides the heading.
    void setStepTitleVisible(bool visible);
    /// Replaces the list of step lines.
    void addTestSteps(const QStringList &steps);
    /// Appends a step line. @p flag isn't used.
    void addTestStep(const QString &text, const QColor &color, bool flag);
    /// Removes all step lines with their marks.
    void clearAllSteps();
    /// Sets the mark of step line @p stepIndex, counted from 0. Does nothing if there is no such line. Thread-safe.
    void setStepIcon(int stepIndex, LCD::Widget::IconType icon);
    /// Sets the caption of the left button.
    void setLeftBtnText(const QString &text);
    /// Sets the caption of the right button.
    void setRightBtnText(const QString &text);
    /// Shows or hides the left button. A hidden button emits no signal.
    void setLeftBtnVisible(bool visible);
    /// Shows or hides the right button. The spelling is part of the interface.
    void setRighttBtnVisible(bool visible);
    /// Disables the left button if @p clickable is false.
    void setNoPassButtonCanClicked(bool clickable);
    /// If @p enabled is false, the frame accepts all key events and does nothing with them, because the keys belong to
    /// the test.
    void setKeyEventsEnabled(bool enabled);
    /// Sets the large icon below the step lines by its key. It doesn't become visible.
    void setStatusIcon(const QString &iconKey);
    /// Shows or hides the status icon.
    void setStatusIconVisible(bool visible);
    /// Selects the button that has the focus. While that button is hidden or disabled, the frame itself has it.
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
    /// Emitted when the left button is clicked or activated by a key. @p checked is always false.
    void signalLeftBtnClicked(bool checked);
    /// Emitted when the right button is clicked or activated by a key. @p checked is always false.
    void signalRightBtnClicked(bool checked);

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(FactoryTestFrame) == sizeof(QWidget) + sizeof(void *));

}
