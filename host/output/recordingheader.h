#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace panelhost {

/// The first line of every recording.
QByteArray recordingHeader();
/// True if @p path is a regular file that begins like a recording.
bool isRecording(const QString &path);

}
