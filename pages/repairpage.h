#pragma once

#include "pagetest.h"

#include <QtWidgets/QWidget>

#include <memory>

namespace LCD::FactoryMode {
class IKeyboardEvent;
}

namespace LCD::Widget {
class FactoryTestFrame;
}

namespace LCD::RepairPages {

struct PageInfo;
class TouchGrid;

/// A page: a frame and, between enter() and leave(), the test that it shows. GUI thread.
class RepairPage : public QWidget
{
    Q_OBJECT

public:
    RepairPage(const PageInfo &info, QWidget *parent);
    ~RepairPage() override;

    /// Creates the test and shows its idle state.
    void enter();
    /// Restores the hardware and deletes the test. Does nothing if the page isn't entered.
    void leave();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// Emitted when the operator goes back, and after a pass if the test leaves the page then.
    void backRequested();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void onLeftButton();
    void onRightButton();
    void onTouch(const QPointF &from, const QPointF &to);
    void onTestChanged();
    void leaveAfterPass();
    void beginVisit();
    void start();
    void setPanelMode(int mode) const;
    bool hasServices() const;
    bool takesKeyOf(const QObject *watched, int qtKey) const;

    void showLines(const QVector<PageLine> &lines);
    void showButtons(const QString &left, const QString &right);
    void showIdle();
    void showRunning();
    void showJudging();
    void showVerdict(bool passed);
    void showState();
    void showGrid();
    void refresh();
    QVector<PageLine> steps() const;

    const PageInfo &m_info;
    Widget::FactoryTestFrame *m_frame;
    TouchGrid *m_grid;
    /// Looked up when the page is entered; nullptr if the host has no such service.
    FactoryMode::IKeyboardEvent *m_keyboard = nullptr;
    std::unique_ptr<PageTest> m_test;
    TestState m_shownState = TestState::Idle;
    bool m_isNewState = true;
    bool m_isServiceMissing = false;
};

}
