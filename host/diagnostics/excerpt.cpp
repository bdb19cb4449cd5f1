#include "diagnostics/excerpt.h"

namespace panelhost {

QString beginningOf(const QString &text, int size)
{
    const bool cutsCharacter = size > 0 && size < text.size() && text.at(size - 1).isHighSurrogate();
    return text.left(cutsCharacter ? size - 1 : size);
}

}
