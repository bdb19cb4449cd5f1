#include "iconstore.h"

#include <QtCore/QFile>
#include <QtGui/QPainter>
#include <QtGui/QPixmapCache>
#include <QtSvg/QSvgRenderer>

#include <cmath>

namespace LCD::Widget {

namespace {

QString fileFor(const QString &key)
{
    const QString suffix = QStringLiteral(".png");
    return QStringLiteral(":/lcdwidgets/icons/%1.svg").arg(key.endsWith(suffix) ? key.chopped(suffix.size()) : key);
}

QPixmap rendered(const QString &key, int physicalSide)
{
    QPixmap pixmap(physicalSide, physicalSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(fileFor(key)).render(&painter);
    return pixmap;
}

}

bool IconStore::contains(const QString &key)
{
    return !key.isEmpty() && !key.contains(QLatin1Char('/')) && QFile::exists(fileFor(key));
}

QPixmap IconStore::icon(const QString &key, int side, qreal devicePixelRatio)
{
    const int physicalSide = int(std::ceil(side * devicePixelRatio));
    if (!contains(key) || physicalSide <= 0)
        return {};
    const QString cacheKey = QStringLiteral("lcdwidgets/%1/%2").arg(key).arg(physicalSide);
    QPixmap pixmap;
    if (!QPixmapCache::find(cacheKey, &pixmap)) {
        pixmap = rendered(key, physicalSide);
        QPixmapCache::insert(cacheKey, pixmap);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

}
