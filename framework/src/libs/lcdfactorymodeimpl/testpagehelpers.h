#pragma once

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/widget/factorytestframe.h"

#include <QtWidgets/QVBoxLayout>

namespace LCD::FactoryModeImpl {

// Functions and constants that the two test pages share. Only the values of the frame's enumerators are known here.
constexpr auto FocusOnLeftButton = static_cast<Widget::FocusType>(0);
constexpr auto FocusOnRightButton = static_cast<Widget::FocusType>(1);
constexpr auto FocusOnNoButton = static_cast<Widget::FocusType>(2);

/// The panel mode when a test page returns to the factory menu.
constexpr int PanelModeMenu = 3;

inline QString titleIconLabel()
{
    return QStringLiteral("FactoryIconLabel");
}

/// Lays out @p frame so that it fills @p page.
inline void fillPage(QWidget *page, QWidget *frame)
{
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame, 0, Qt::Alignment());
}

inline void setPanelMode(FactoryMode::IKeyboardEvent *keyboardService, int mode)
{
    if (keyboardService)
        keyboardService->setFactoryPanelMode(mode);
}

/// Returns from @p page to the factory menu. A receiver of the signal may delete the page, so it may not exist any more
/// when this function returns.
template <class Page>
void goBackToMenu(Page &page, FactoryMode::IKeyboardEvent *keyboardService)
{
    Q_EMIT page.signalBackToFactoryMenu();
    setPanelMode(keyboardService, PanelModeMenu);
}

}
