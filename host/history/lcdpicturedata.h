#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

namespace panelhost {

/// Returns @p picture as compressed bytes, which are equal for equal pictures. Only pictureFromData() of the same
/// process reads them. This is many times as fast as PNG.
QByteArray toData(const QImage &picture);
/// Returns a null image if @p data can't be read.
QImage pictureFromData(const QByteArray &data);

}
