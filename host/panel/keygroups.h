#pragma once

#include "device/device.h"

namespace panelhost {

/// Keys that belong together according to their names, such as PGM1 … PGM10.
struct KeyGroup
{
    QString title;
    QList<KeyState> keys;
};

/// Groups @p keys by the part of their names before the number, in the order of the list. Keys of groups with fewer
/// than three keys form one group at the end.
QList<KeyGroup> groupKeys(const QList<KeyState> &keys);

}
