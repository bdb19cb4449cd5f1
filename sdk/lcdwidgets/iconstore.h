#pragma once

#include <QtCore/QString>
#include <QtGui/QPixmap>

namespace LCD::Widget {

/// The drawings behind the icon keys. A key may be written as an image file's name, as those of g_IconMap are.
class IconStore
{
public:
    static bool contains(const QString &key);
    /// The icon as a square of @p side logical pixels; a null pixmap when there is none for @p key.
    static QPixmap icon(const QString &key, int side, qreal devicePixelRatio);
};

}
