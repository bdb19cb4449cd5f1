#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Whether the library at @p path ends before what its own headers say is in it, as after a broken copy. The linker
/// maps such a file without a word, and the process dies on a signal when it reads there. False for a file that is no
/// 64-bit ELF file or can't be read: the linker has a sentence for those. Any thread.
bool isElfTruncated(const QString &path);

}
