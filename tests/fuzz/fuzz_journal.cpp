#include "fuzztarget.h"
#include "records/journalreader.h"

#include <QtCore/QBuffer>

// A journal is either read to its end or refused with a message that names a line.

using namespace panelhost;

int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    QBuffer device;
    device.setData(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    device.open(QIODevice::ReadOnly);
    int runs = 0;
    RunExtractor extractor([&runs](const Run &) { ++runs; });
    QString error;
    const bool read = readJournal(device, QStringLiteral("journal.txt"), extractor, &error);
    extractor.endSession();
    if (read != error.isEmpty())
        qFatal("read with an error, or refused without");
    if (!read && !error.contains(QStringLiteral("journal.txt")))
        qFatal("a message without a place: %s", qPrintable(error));
    return 0;
}
