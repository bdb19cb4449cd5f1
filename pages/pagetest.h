#pragma once

#include "texts.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QColor>

namespace LCD::RepairPages {

class TouchCells;

/// The state of a test.
enum class TestState {
    Idle,
    Running,
    AllStepsDone, ///< waits for the verdict of the operator
    Passed,
    Failed,
};

/// A button of a page.
enum class PageButton {
    None,
    Left,
    Right,
};

/// One line of a page.
struct PageLine
{
    enum class Mark {
        None,
        Pass,
        NotPass,
    };

    QString text;
    QColor color = Qt::white;
    Mark mark = Mark::None;
};

/// The test behind a page. It is created when the page is entered and deleted when the page is left. It has no widget:
/// the page reads what to show after each changed(). GUI thread.
class PageTest : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Makes the test idle and tells the device which test is active. Called once, before all other functions.
    virtual void enter() = 0;
    /// Starts the idle test.
    virtual void start() = 0;
    /// Makes the test idle again after a verdict.
    virtual void reTest() = 0;
    /// Ends the test with the verdict "passed".
    virtual void setPass() = 0;
    /// Ends the test with the verdict "not passed".
    virtual void setNotPass() = 0;
    /// Restores the hardware to its state before the test. Called after each verdict and when the page is left, in any
    /// state.
    virtual void restore() {}

    virtual TestState state() const = 0;
    /// Returns the number of failures that the page shows with the verdict.
    virtual int failCount() const = 0;

    // What the page shows in addition to its row in the table.
    /// Returns the text after the title, such as " 30%".
    virtual QString titleSuffix() const { return {}; }
    /// Returns the icon of the title; empty: the icon in the table.
    virtual QString titleIcon() const { return {}; }
    /// Returns the line above the steps or the verdict; empty: there is none.
    virtual QString heading() const
    {
        const bool isBeforeVerdict = state() == TestState::Idle || state() == TestState::Running;
        return text(isBeforeVerdict ? "TestStep" : "FCTestComplete");
    }
    /// Returns the lines of the running test. If there are none, the page shows the steps in the table.
    virtual QVector<PageLine> lines() const { return {}; }
    /// Returns the lines below the verdict, such as what failed.
    virtual QVector<PageLine> remarks() const { return {}; }

    /// Returns the line with the verdict. If it is empty, the page shows its usual text.
    virtual QString verdictText() const { return {}; }

    /// Return the caption of the button that starts the test, and of the button that starts it again after a verdict.
    /// Empty: the usual caption.
    virtual QString startCaption() const { return {}; }
    virtual QString againCaption() const { return {}; }
    /// Returns whether the page is left when the test has passed.
    virtual bool leavesWhenPassed() const { return false; }
    /// Return the captions of the buttons while the test runs. An empty caption hides the button.
    virtual QString leftCaption() const { return {}; }
    virtual QString rightCaption() const { return {}; }
    /// Returns the button that begins what can't be undone. It doesn't stand out.
    virtual PageButton dangerousButton() const { return PageButton::None; }
    /// Called when a button is pressed while the test runs.
    virtual void pressLeft() {}
    virtual void pressRight() {}
    /// Returns whether the running test gets the keys of the panel, including Back.
    virtual bool takesKeys() const { return false; }
    /// Returns whether the running test needs @p qtKey, a key of the knob or of the joystick. The page then passes its
    /// presses to pressKey(); all other keys operate the page.
    virtual bool takesKey(int qtKey) const
    {
        Q_UNUSED(qtKey)
        return false;
    }
    virtual void pressKey(int qtKey) { Q_UNUSED(qtKey) }
    /// Returns the cells that the operator touches while the test runs; nullptr if the page isn't covered with cells.
    virtual const TouchCells *cells() const { return nullptr; }
    /// Called when a finger is put down or moves while the cells are shown. Positions are fractions of the page's size.
    virtual void touch(const QPointF &from, const QPointF &to)
    {
        Q_UNUSED(from)
        Q_UNUSED(to)
    }

Q_SIGNALS:
    /// Emitted on the GUI thread when what the page shows may have changed.
    void changed();

protected:
    /// Emits changed() from the event loop of the GUI thread. May be called on any thread, including threads without a
    /// QThread.
    void announceChange()
    {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT changed(); }, Qt::QueuedConnection);
    }
};

}
