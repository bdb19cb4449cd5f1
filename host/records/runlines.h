#pragma once

#include <QtCore/QByteArray>

namespace panelhost {

/// Returns the runs of @p journal, one JSON object per line, each with its line end. Lines after one that isn't a line
/// of a journal are ignored. Reentrant.
QByteArray runLines(const QByteArray &journal);

}
