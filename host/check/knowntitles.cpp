#include "check/knowntitles.h"

#include <QtCore/QString>

namespace panelhost {

const QSet<QString> &knownTitles()
{
    static const QSet<QString> titles{QStringLiteral("agingmode"),
                                      QStringLiteral("completemachine"),
                                      QStringLiteral("factorymode"),
                                      QStringLiteral("logexport"),
                                      QStringLiteral("resetfactory"),
                                      QStringLiteral("screenlight"),
                                      QStringLiteral("screenbadpixel"),
                                      QStringLiteral("screenbadpixels"),
                                      QStringLiteral("buttonlight"),
                                      QStringLiteral("buttonfunction"),
                                      QStringLiteral("knob"),
                                      QStringLiteral("joystick"),
                                      QStringLiteral("tbar"),
                                      QStringLiteral("genlock"),
                                      QStringLiteral("typec"),
                                      QStringLiteral("net"),
                                      QStringLiteral("input"),
                                      QStringLiteral("output"),
                                      QStringLiteral("mvr"),
                                      QStringLiteral("ltc"),
                                      QStringLiteral("mic"),
                                      QStringLiteral("expandsource"),
                                      QStringLiteral("touchscreen"),
                                      QStringLiteral("usb"),
                                      QStringLiteral("typecnet"),
                                      QStringLiteral("dc"),
                                      QStringLiteral("typecpowersupply"),
                                      QStringLiteral("poe"),
                                      QStringLiteral("madi")};
    return titles;
}

bool isKnownTitle(const QString &tail)
{
    return knownTitles().contains(tail.toLower());
}

}
