#pragma once

#include <QtCore/QString>
#include <QtGui/QPixmap>

namespace LCD::Widget {

/// The icons by key. A key may also be the name of an image file, as in g_IconMap.
class IconStore
{
public:
    static bool contains(const QString &key);
    /// Returns the icon of @p key as a square of @p side logical pixels, or a null pixmap if there is none.
    static QPixmap icon(const QString &key, int side, qreal devicePixelRatio);
};

}
