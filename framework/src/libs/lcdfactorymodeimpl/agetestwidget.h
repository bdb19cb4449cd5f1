#pragma once

#include <QtWidgets/QWidget>

namespace LCD::FactoryModeImpl {

/// The page of the aging test. The factory menu makes it on first use and owns it; it owns its AgeTestBiz.
/// Neither leaving nor destroying the page stops a run by the steps of a stop: only the right button does.
///
/// Threads: belongs to the GUI thread.
class AgeTestWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AgeTestWidget(QWidget *parent);
    ~AgeTestWidget() override;

    /// Font size of the content area in pixels.
    void setContentFontSize(int size);
    /// Prepares the page; to be called at each showing. A run under way goes on.
    void enterWindow();

Q_SIGNALS:
    void signalBackToFactoryMenu();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(AgeTestWidget) == sizeof(QWidget) + sizeof(void *));

}
