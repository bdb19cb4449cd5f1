#include "commands/windowappearance.h"

#include "window/themechoice.h"
#include "window/windowlanguage.h"
#include "window/windowsettings.h"

namespace panelhost {

void applyWindowAppearance(const CommandLine &line)
{
    const bool isPicture = line.parser.isSet(QStringLiteral("screenshot"));
    const bool isAsked = line.parser.isSet(QStringLiteral("language"));
    setThemeChoice(isPicture ? QStringLiteral("dark") : WindowSettings().theme());
    setWindowLanguage(isAsked || isPicture ? windowLanguageOf(line.session.language)
                                           : WindowSettings().windowLanguage());
}

}
