#pragma once

#include "device/device.h"

namespace panelhost {

/// Keys that belong together, as their names say: PGM1 … PGM10 are one group.
struct KeyGroup
{
    QString title;
    QList<KeyState> keys;
};

/// Groups @p keys by the letters of their names before the number, in the order of the list. Keys that have fewer
/// than three of their kind stand in one group of their own, at the end.
QList<KeyGroup> groupKeys(const QList<KeyState> &keys);

}
