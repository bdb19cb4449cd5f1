#include "output/recordingsignature.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace panelhost {

QByteArray recordingSignature()
{
    return QByteArrayLiteral("# Recorded with panelhost. Play it with: panelhost play FILE\n");
}

bool isRecording(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly)
        && file.read(recordingSignature().size()) == recordingSignature();
}

}
