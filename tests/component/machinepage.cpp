#include "machinepage.h"

using LCD::FactoryModeImpl::CompleteMachineTestWidget;

MachinePage::MachinePage()
{
    recordFrameCalls(&host.calls);
    make();
}

MachinePage::~MachinePage()
{
    widget.reset();
    recordFrameCalls(nullptr);
}

void MachinePage::make()
{
    widget = std::make_unique<CompleteMachineTestWidget>(nullptr);
    QObject::connect(widget.get(), &CompleteMachineTestWidget::signalBackToFactoryMenu, widget.get(),
                     [this] { host.calls.add(QStringLiteral("signalBackToFactoryMenu")); });
}

void MachinePage::enter()
{
    widget->enterWindow();
    take();
}

void MachinePage::passTo(int phase)
{
    for (const int present : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10}) {
        if (present >= phase)
            break;
        operate.bringToVerdict(present);
        clickRight();
    }
}

void MachinePage::startAndPassTo(int phase)
{
    enter();
    clickRight();
    passTo(phase);
    take();
}
