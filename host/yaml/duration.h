#pragma once

#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// Returns the milliseconds that @p text stands for, such as "500ms", "20s", "1.5s", "2min" or "1h". Returns nothing if
/// the text isn't a duration.
std::optional<qint64> durationFromText(const QString &text);

/// Returns @p milliseconds as a text that durationFromText() reads: in whole seconds if possible, else in milliseconds.
QString durationText(qint64 milliseconds);

}
