#include "history/lcdpicturedata.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <cstring>

namespace panelhost {

static constexpr int FastCompression = 1;

QByteArray toData(const QImage &picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << pixels.size() << pixels.devicePixelRatio()
           << qCompress(pixels.constBits(), static_cast<int>(pixels.sizeInBytes()), FastCompression);
    return data;
}

QImage pictureFromData(const QByteArray &data)
{
    QDataStream stream(data);
    QSize size;
    double ratio = 1;
    QByteArray compressed;
    stream >> size >> ratio >> compressed;
    const QByteArray pixels = qUncompress(compressed);
    QImage picture(size, QImage::Format_RGB32);
    if (picture.isNull() || picture.sizeInBytes() != pixels.size())
        return {};
    std::memcpy(picture.bits(), pixels.constData(), static_cast<std::size_t>(pixels.size()));
    picture.setDevicePixelRatio(ratio);
    return picture;
}

}
