#pragma once

#include <QtWidgets/QWidget>

namespace LCD::FactoryModeImpl {

/// The page of the complete machine test. The factory menu creates it on first use and owns it; the page owns its
/// CompleteMachineTestBiz.
///
/// Threads: use it on the GUI thread. Screens that arrive on another thread are queued to the GUI thread. Log lines and
/// step marks are passed to the frame on the thread on which they arrive.
class CompleteMachineTestWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CompleteMachineTestWidget(QWidget *parent);
    ~CompleteMachineTestWidget() override;

    /// Shows the entry screen, where the right button starts a run. Call it each time before the page is shown.
    void enterWindow();
    /// Sets the font size of the content area in pixels.
    void setContentFontSize(int size);

Q_SIGNALS:
    /// Emitted when the operator goes back to the menu.
    void signalBackToFactoryMenu();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(CompleteMachineTestWidget) == sizeof(QWidget) + sizeof(void *));

}
