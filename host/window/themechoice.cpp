#include "window/themechoice.h"

#include "panel/windowtheme.h"

namespace panelhost {

static QString chosenTheme = QStringLiteral("dark");
static bool hasDarkSystem = true;

void setSystemDark(bool isDark)
{
    hasDarkSystem = isDark;
}

void setThemeChoice(const QString &choice)
{
    const bool isDark = choice == QLatin1String("dark");
    const bool isLight = choice == QLatin1String("light");
    if (!isDark && !isLight && !choice.isEmpty())
        return;
    chosenTheme = choice;
    const bool staysDark = isDark || (!isLight && hasDarkSystem);
    theme::setScheme(staysDark ? theme::Scheme::Dark : theme::Scheme::Light);
}

QString themeChoice()
{
    return chosenTheme;
}

}
