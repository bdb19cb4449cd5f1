#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns true if the library at @p path is shorter than its headers say, as after an incomplete copy. The dynamic
/// linker maps such a file without an error, and the process crashes when it reads the missing part. Returns false for
/// a file that isn't a 64-bit ELF file or can't be read, because the linker reports these. Thread-safe.
bool isElfTruncated(const QString &path);

}
