#pragma once

#include <QtGui/QFont>

#include <functional>

namespace LCD::Widget {

/// Returns the largest size from @p smallest to @p wanted for which @p fits returns true, or @p smallest if there is
/// none. If @p fits returns true for one size, it must do so for all smaller sizes.
int largestFitting(int smallest, int wanted, const std::function<bool(int)> &fits);

/// Returns @p font with the given size in pixels.
QFont sized(QFont font, int pixelSize);

/// Returns @p font with the largest size, up to @p wanted, with which @p text fits into @p area on one line.
QFont fittedToLine(const QFont &font, const QString &text, const QSize &area, int wanted);

}
