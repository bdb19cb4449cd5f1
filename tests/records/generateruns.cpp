// generate_runs PLACE COUNT [JOURNAL]: saves COUNT invented runs in a file (sqlite:FILE) or on a server
// (postgresql://...), each with the file JOURNAL as its journal, and prints how long it took. At most 1000 runs share a
// transaction. With --one-by-one as the first argument, each run has its own, and the times of the runs are printed.

#include "records/recordstore.h"
#include "runfactory.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <cstdio>
#include <vector>

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

// Returns the time in microseconds within which @p percent percent of @p times are.
qint64 percentile(const std::vector<qint64> &times, std::size_t percent)
{
    return times.at((times.size() - 1) * percent / 100);
}

// Their ids differ from those of generate() with the same count.
bool generateOneByOne(RecordStore &store, int count, const QByteArray &journal, QString *error)
{
    RunFactory factory(count, QRandomGenerator::global()->generate());
    std::vector<qint64> times;
    for (int index = 0; index < count; ++index) {
        const Run run = factory.run(index);
        QElapsedTimer timer;
        timer.start();
        if (!store.saveAll({{run, journal}}, RecordStore::Forwarding::None, error))
            return false;
        times.push_back(timer.nsecsElapsed() / 1000);
    }
    std::sort(times.begin(), times.end());
    std::printf("half of the runs were saved in less than %lld us, 99 of 100 in less than %lld us\n",
                static_cast<long long>(percentile(times, 50)), static_cast<long long>(percentile(times, 99)));
    return true;
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
    QStringList arguments = QCoreApplication::arguments();
    const bool isOneByOne = arguments.removeAll(QStringLiteral("--one-by-one")) > 0;
    const int count = arguments.value(2).toInt();
    if (arguments.size() < 3 || arguments.size() > 4 || count < 1) {
        std::fputs("usage: generate_runs [--one-by-one] sqlite:FILE|postgresql://... COUNT [JOURNAL]\n", stderr);
        return 2;
    }
    QFile journal(arguments.value(3));
    const bool isRead = arguments.size() < 4 || journal.open(QIODevice::ReadOnly);
    QString error = isRead ? QString() : journal.errorString();
    QElapsedTimer timer;
    timer.start();
    const auto store = isRead ? open(arguments.at(1), &error) : nullptr;
    const QByteArray lines = qCompress(journal.isOpen() ? journal.readAll() : QByteArray());
    if (!store || !(isOneByOne ? generateOneByOne : generate)(*store, count, lines, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("%d runs in %lld ms\n", count, static_cast<long long>(timer.elapsed()));
    return 0;
}
