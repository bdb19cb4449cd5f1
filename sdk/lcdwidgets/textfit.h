#pragma once

#include <QtGui/QFont>

#include <functional>

namespace LCD::Widget {

/// The greatest size from @p smallest to @p wanted that fits; @p smallest when none does. What fits at one size has
/// to fit at every smaller one.
int largestFitting(int smallest, int wanted, const std::function<bool(int)> &fits);

/// @p font at a size in pixels.
QFont sized(QFont font, int pixelSize);

/// @p font at the greatest size, up to @p wanted, at which @p text fits into @p area on one line.
QFont fittedToLine(const QFont &font, const QString &text, const QSize &area, int wanted);

}
