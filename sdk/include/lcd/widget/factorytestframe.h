#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

namespace LCD::Widget {

/// Where setControlFocus() puts the focus.
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

/// The log pane of a test page: the newest lines, as many as there is room for. GUI thread.
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

    /// Adds a line; the pane keeps the last 500.
    void append(const QString &text, FactoryTestLogType type, FactoryTestLogLevel level);
    QStringList lines() const;
    /// Font size of the lines in pixels.
    void setLogFontSize(int pixelSize);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Impl;
    Impl *d;
};

/// The frame of a test page: title with icon, step title, step lines, status icon, two soft buttons and a log.
/// All operations belong on the GUI thread but log() and setStepIcon(), which may be called on any.
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
    /// Appends one step line.
    void addTestStep(const QString &text, const QColor &color, bool flag);
    void clearAllSteps();
    /// Marks step line @p stepIndex, counted from 0.
    void setStepIcon(int stepIndex, LCD::Widget::IconType icon);
    void setLeftBtnText(const QString &text);
    void setRightBtnText(const QString &text);
    void setLeftBtnVisible(bool visible);
    void setRighttBtnVisible(bool visible);
    /// False makes the left button not react.
    void setNoPassButtonCanClicked(bool clickable);
    /// False leaves hardware keys to the test.
    void setKeyEventsEnabled(bool enabled);
    void setStatusIcon(const QString &iconKey);
    void setStatusIconVisible(bool visible);
    void setControlFocus(LCD::Widget::FocusType focus);
    /// False stops the back request; the soft buttons stay alive.
    void setIsReponseEvent(bool respond);
    /// Font size of the content area in pixels.
    void setContentFontSize(int size);
    void log(const QString &text, LCD::Widget::FactoryTestRightFrame::FactoryTestLogType type,
             LCD::Widget::FactoryTestRightFrame::FactoryTestLogLevel level) const;

Q_SIGNALS:
    void signalBackPrevious();
    void signalLeftBtnClicked(bool checked);
    void signalRightBtnClicked(bool checked);

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(FactoryTestFrame) == sizeof(QWidget) + sizeof(void *));

}
