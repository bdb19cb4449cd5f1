#pragma once
#include <QColor>
#include <QStringList>
#include <QWidget>
namespace LCD {
namespace Widget {
enum FocusType : int {
    focus_a
};
enum IconType : int {
    icon_a
};
class FactoryTestRightFrame : public QWidget
{
    Q_OBJECT
public:
    enum FactoryTestLogType : int {
        type_a
    };
    enum FactoryTestLogLevel : int {
        level_a
    };
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
    void *nothing = nullptr;
};
}
}
