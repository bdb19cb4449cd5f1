#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// Returns the first line of every recording.
QByteArray recordingSignature();
/// Returns true if @p path is a regular file that begins like a recording.
bool isRecording(const QString &path);

}
