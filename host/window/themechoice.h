#pragma once

#include <QtCore/QString>

namespace panelhost {

/// What the user has chosen for the colors of the window: "dark", "light", or an empty text for those of the computer.
/// GUI thread.

/// Sets whether the computer prefers dark colors, for the next setThemeChoice(). It is taken for dark at first.
void setSystemDark(bool isDark);
/// Changes the colors of all windows. Has no effect for another text.
void setThemeChoice(const QString &choice);
QString themeChoice();

}
