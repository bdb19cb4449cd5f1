#include "fuzzfile.h"
#include "fuzztarget.h"
#include "records/recordstore.h"

#include <QtCore/QCoreApplication>

// A file with run records is either opened and read, or refused with a message. A file that can't be used isn't
// changed.

using namespace panelhost;

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzFile file("runs.sqlite");
    file.write(bytes, size);
    const QByteArray before = file.content();
    QString error;
    auto problem = RecordStore::Problem::None;
    const auto store = RecordStore::openExisting(file.path(), &error, &problem);
    if (static_cast<bool>(store) != error.isEmpty())
        qFatal("opened with an error, or refused without: %s", qPrintable(error));
    if (!store) {
        if (problem == RecordStore::Problem::Unusable && file.content() != before)
            qFatal("a file that can't be used was changed: %s", qPrintable(error));
        return 0;
    }
    int runs = 0;
    const bool isRead = store->read(
        {}, [&runs](const Run &) { ++runs; }, &error);
    if (isRead != error.isEmpty())
        qFatal("read with an error, or not read without");
    return 0;
}
