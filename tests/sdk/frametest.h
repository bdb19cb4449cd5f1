#pragma once

#include "lcd/widget/factorytestframe.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QPushButton>

#include <functional>

/// A frame as a page has it, in an active window of its own, with both buttons on the screen. The window counts the
/// keys that travel up to it.
class FrameTest : public QWidget
{
    Q_OBJECT

public:
    FrameTest();

    QPushButton *left() const;
    QPushButton *right() const;
    QVariant shown(const char *property) const { return frame->property(property); }
    /// The texts of the step lines.
    QStringList lines() const;
    /// "pass", "notpass" or "none" for each step line.
    QStringList marks() const;
    /// Presses @p key where the keyboard is.
    void press(Qt::Key key);
    /// Back, left and right signals so far.
    QList<int> signalCounts() const { return {back.count(), leftClicks.count(), rightClicks.count()}; }

    LCD::Widget::FactoryTestFrame *frame;
    QSignalSpy back;
    QSignalSpy leftClicks;
    QSignalSpy rightClicks;
    QList<int> keysTravelledUp;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QStringList ofEachStep(const QString &field) const;
};

/// Shows a text in a part of the frame.
using FrameChange = std::function<void(LCD::Widget::FactoryTestFrame &, const QString &)>;

// As the data of a test.
Q_DECLARE_METATYPE(LCD::Widget::FocusType)
Q_DECLARE_METATYPE(FrameChange)
