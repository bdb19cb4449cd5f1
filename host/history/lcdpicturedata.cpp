#include "history/lcdpicturedata.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QVector>

#include <algorithm>

namespace panelhost {

static constexpr int FastCompression = 1;

namespace {

/// Equal pixels side by side.
struct PixelRun
{
    quint32 length;
    QRgb pixel;
};

// Most of a picture is of one color. Compressing all of its pixels would take most of the time of recording a session.
QVector<PixelRun> runsOf(const QImage &picture)
{
    const auto *pixel = reinterpret_cast<const QRgb *>(picture.constBits());
    const auto *end = pixel + picture.sizeInBytes() / static_cast<qsizetype>(sizeof(QRgb));
    QVector<PixelRun> runs;
    while (pixel != end) {
        const auto *next = std::find_if(pixel, end, [first = *pixel](QRgb other) { return other != first; });
        runs.append({static_cast<quint32>(next - pixel), *pixel});
        pixel = next;
    }
    return runs;
}

// Returns false if the runs don't have as many pixels as the picture.
bool fill(QImage *picture, const PixelRun *begin, const PixelRun *end)
{
    auto *pixel = reinterpret_cast<QRgb *>(picture->bits());
    auto left = picture->sizeInBytes() / static_cast<qsizetype>(sizeof(QRgb));
    for (const PixelRun *run = begin; run != end; ++run) {
        if (run->length > left)
            return false;
        pixel = std::fill_n(pixel, run->length, run->pixel);
        left -= run->length;
    }
    return left == 0;
}

}

QByteArray toData(const QImage &picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    const QVector<PixelRun> runs = runsOf(pixels);
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << pixels.size() << pixels.devicePixelRatio()
           << qCompress(reinterpret_cast<const uchar *>(runs.constData()),
                        static_cast<int>(runs.size() * sizeof(PixelRun)), FastCompression);
    return data;
}

QImage pictureFromData(const QByteArray &data)
{
    QDataStream stream(data);
    QSize size;
    double ratio = 1;
    QByteArray compressed;
    stream >> size >> ratio >> compressed;
    const QByteArray runs = qUncompress(compressed);
    const auto *begin = reinterpret_cast<const PixelRun *>(runs.constData());
    QImage picture(size, QImage::Format_RGB32);
    if (picture.isNull() || !fill(&picture, begin, begin + runs.size() / static_cast<int>(sizeof(PixelRun))))
        return {};
    picture.setDevicePixelRatio(ratio);
    return picture;
}

}
