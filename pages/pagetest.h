#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QColor>

class QWidget;

namespace LCD::RepairPages {

/// Where a test stands, whichever it is.
enum class TestState {
    Idle,
    Running,
    AllStepsDone, ///< the operator judges
    Passed,
    Failed,
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

/// The test behind one page, for one visit: made when the page is entered and
/// ended when it is left. It has no widget: what the page shows is read from it
/// after each changed(). GUI thread.
class PageTest : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The idle state, and the device knows which test is active. Called once,
    /// before anything else.
    virtual void enter() = 0;
    /// Begins a run, from idle.
    virtual void start() = 0;
    /// Back to idle after a verdict.
    virtual void reTest() = 0;
    virtual void setPass() = 0;
    virtual void setNotPass() = 0;
    /// Puts the hardware back to how it was before the run. Called after each
    /// verdict and when the page is left, in any state.
    virtual void restore() {}

    virtual TestState state() const = 0;
    /// Number of failures that the page shows with the verdict.
    virtual int failCount() const = 0;

    // What the page shows beyond its row in the table.
    virtual QString titleSuffix() const { return {}; }
    /// Empty: the icon of the table.
    virtual QString titleIcon() const { return {}; }
    /// Heading of the running test; empty: the usual one.
    virtual QString heading() const { return {}; }
    /// Lines of the running test in the place of the table's steps; none: these
    /// stay.
    virtual QVector<PageLine> lines() const { return {}; }
    /// Lines below the verdict, such as what failed.
    virtual QVector<PageLine> remarks() const { return {}; }

    // The buttons of a running test; an empty caption hides one.
    virtual QString leftCaption() const { return {}; }
    virtual QString rightCaption() const { return {}; }
    virtual void pressLeft() {}
    virtual void pressRight() {}
    /// Whether the keys of the panel belong to the running test. Back is a key,
    /// too.
    virtual bool takesKeys() const { return false; }

Q_SIGNALS:
    /// The test has something else to show. On the GUI thread.
    void changed();

protected:
    /// Emits changed() when the event loop comes round. Any thread, one that Qt
    /// has never seen too.
    void announceChange()
    {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT changed(); }, Qt::QueuedConnection);
    }
};

} // namespace LCD::RepairPages
