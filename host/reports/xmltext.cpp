#include "reports/xmltext.h"

namespace panelhost {

QString xmlText(QString text)
{
    for (auto &character : text) {
        const bool isControl =
            character < QLatin1Char(' ') && character != QLatin1Char('\n') && character != QLatin1Char('\t');
        if (isControl || character.unicode() >= 0xfffe)
            character = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

}
