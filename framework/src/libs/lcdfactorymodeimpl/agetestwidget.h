#pragma once

#include <QtWidgets/QWidget>

namespace LCD::FactoryModeImpl {

/// The page of the aging test. The factory menu creates it on first use and owns it; the page owns its AgeTestBiz. Only
/// the right button calls AgeTestBiz::stop(). Neither leaving nor deleting the page does.
///
/// Threads: use it on the GUI thread.
class AgeTestWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AgeTestWidget(QWidget *parent);
    ~AgeTestWidget() override;

    /// Sets the font size of the content area in pixels.
    void setContentFontSize(int size);
    /// Prepares the page. Call it each time before the page is shown. A run in progress continues.
    void enterWindow();

Q_SIGNALS:
    /// Emitted when the operator goes back to the menu.
    void signalBackToFactoryMenu();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(AgeTestWidget) == sizeof(QWidget) + sizeof(void *));

}
