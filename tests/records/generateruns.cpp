// generate_runs PLACE COUNT [JOURNAL]: saves COUNT invented runs in a file (sqlite:FILE) or on a server
// (postgresql://...), each with the file JOURNAL as its journal, and prints how long it took.

#include "records/recordstore.h"
#include "runfactory.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>

#include <cstdio>

using namespace panelhost;

namespace {

constexpr int BatchSize = 1000;

std::unique_ptr<RecordStore> open(const QString &place, QString *error)
{
    if (!isServerAddress(place))
        return RecordStore::open(place.mid(place.indexOf(QLatin1Char(':')) + 1), error);
    const auto address = readServerAddress(place, error);
    return address ? RecordStore::openServer(*address, error) : nullptr;
}

bool generate(RecordStore &store, int count, const QByteArray &journal, QString *error)
{
    RunFactory factory(count);
    QVector<StoredRun> batch;
    for (int index = 0; index < count; ++index) {
        batch.append({factory.run(index), journal});
        if (batch.size() < BatchSize && index + 1 < count)
            continue;
        if (!store.saveAll(batch, RecordStore::Forwarding::None, error))
            return false;
        batch.clear();
    }
    return true;
}

}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int count = arguments.value(2).toInt();
    if (arguments.size() < 3 || arguments.size() > 4 || count < 1) {
        std::fputs("usage: generate_runs sqlite:FILE|postgresql://... COUNT [JOURNAL]\n", stderr);
        return 2;
    }
    QFile journal(arguments.value(3));
    const bool isRead = arguments.size() < 4 || journal.open(QIODevice::ReadOnly);
    QString error = isRead ? QString() : journal.errorString();
    QElapsedTimer timer;
    timer.start();
    const auto store = isRead ? open(arguments.at(1), &error) : nullptr;
    if (!store || !generate(*store, count, qCompress(journal.isOpen() ? journal.readAll() : QByteArray()), &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("%d runs in %lld ms\n", count, static_cast<long long>(timer.elapsed()));
    return 0;
}
