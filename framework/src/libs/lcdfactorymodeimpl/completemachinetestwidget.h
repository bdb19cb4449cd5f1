#pragma once

#include <QtWidgets/QWidget>

namespace LCD::FactoryModeImpl {

/// The page of the complete machine test. The factory menu makes it on first use and owns it; it owns its
/// CompleteMachineTestBiz.
///
/// Threads: belongs to the GUI thread. Screens of the test that come on another thread are queued to it; log lines and
/// step marks are handed to the frame on the thread on which they come.
class CompleteMachineTestWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CompleteMachineTestWidget(QWidget *parent);
    ~CompleteMachineTestWidget() override;

    /// Shows the entry screen, from which the right button starts a run; to be called at each showing.
    void enterWindow();
    /// Font size of the content area in pixels.
    void setContentFontSize(int size);

Q_SIGNALS:
    void signalBackToFactoryMenu();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(CompleteMachineTestWidget) == sizeof(QWidget) + sizeof(void *));

}
