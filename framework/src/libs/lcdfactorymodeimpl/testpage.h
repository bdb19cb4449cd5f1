#pragma once

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/widget/factorytestframe.h"

#include <QtWidgets/QVBoxLayout>

namespace LCD::FactoryModeImpl {

// What the two test pages share. The frame's enumerators are known here by their values alone.
constexpr auto FocusOnLeftButton = static_cast<Widget::FocusType>(0);
constexpr auto FocusOnRightButton = static_cast<Widget::FocusType>(1);
constexpr auto FocusOnNoButton = static_cast<Widget::FocusType>(2);

/// What setFactoryPanelMode() is told when either page leaves to the factory menu.
constexpr int PanelModeMenu = 3;

inline QString titleIconLabel()
{
    return QStringLiteral("FactoryIconLabel");
}

/// Lets @p frame fill @p page to its edges.
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

/// Leaves @p page to the factory menu. The page may be gone when this returns: whoever hears of it may delete it.
template <class Page>
void goBackToMenu(Page &page, FactoryMode::IKeyboardEvent *keyboardService)
{
    Q_EMIT page.signalBackToFactoryMenu();
    setPanelMode(keyboardService, PanelModeMenu);
}

}
