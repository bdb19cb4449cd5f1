#pragma once

#include <QtCore/QHash>
#include <QtGui/QFont>

#include <functional>

namespace LCD::Widget {

/// Returns the largest size from @p smallest to @p wanted for which @p fits returns true, or @p smallest if there is
/// none. If @p fits returns true for one size, it must do so for all smaller sizes.
int largestFitting(int smallest, int wanted, const std::function<bool(int)> &fits);

/// Keeps the sizes of a font that a widget has used. Qt unloads a font after ten seconds if no QFont refers to it, and
/// loading it again takes more than a millisecond.
class FontSizes
{
public:
    /// Returns @p font with the given size in pixels. Use the same object for fonts that differ only in size.
    QFont sized(const QFont &font, int pixelSize);

private:
    QHash<int, QFont> m_fonts; ///< by size
};

/// Returns @p font with the largest size, up to @p wanted, with which @p text fits into @p area on one line. Keeps the
/// sizes that were tried in @p sizes.
QFont fittedToLine(FontSizes &sizes, const QFont &font, const QString &text, const QSize &area, int wanted);

}
