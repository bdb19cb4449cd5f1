#pragma once

#include "device/device.h"
#include "scenario/vocabulary.h"

#include <QtCore/QVariant>

namespace panelhost {

/// What can be seen of a session at one instant.
struct Sight
{
    QVariantMap screen; ///< as readScreen() gives it
    DeviceState device;
};

/// The names that an expectation may ask for, for a message. Parts in angle brackets stand for names of the device.
QStringList subjectNames();
/// True if a device with @p vocabulary has something to see by that name.
bool isSubject(const QString &name, const Vocabulary &vocabulary);
/// What is to be seen there: a text, or a list of texts. Invalid if the present page shows no such thing.
QVariant look(const Sight &sight, const QString &subject);

}
