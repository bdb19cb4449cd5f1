#include "component/elffile.h"

#include <QtCore/QFile>

#include <cstring>
#include <elf.h>

namespace panelhost {

namespace {

template <class Header>
bool read(QFile &file, quint64 offset, Header &header)
{
    return file.seek(static_cast<qint64>(offset))
        && file.read(reinterpret_cast<char *>(&header), sizeof header) == static_cast<qint64>(sizeof header);
}

bool isWithin(quint64 offset, quint64 length, quint64 size)
{
    return offset <= size && length <= size - offset;
}

}

bool isElfTruncated(const QString &path)
{
    QFile file(path);
    Elf64_Ehdr elf;
    if (!file.open(QIODevice::ReadOnly) || !read(file, 0, elf) || std::memcmp(elf.e_ident, ELFMAG, SELFMAG) != 0
        || elf.e_ident[EI_CLASS] != ELFCLASS64)
        return false;
    const auto size = static_cast<quint64>(file.size());
    for (quint64 index = 0; index < elf.e_phnum; ++index) {
        const quint64 offset = index * sizeof(Elf64_Phdr);
        Elf64_Phdr segment;
        if (!isWithin(elf.e_phoff, offset + sizeof segment, size) || !read(file, elf.e_phoff + offset, segment)
            || !isWithin(segment.p_offset, segment.p_filesz, size))
            return true;
    }
    return false;
}

}
