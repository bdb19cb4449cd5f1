#include "hosttest.h"
#include "session/forkedprocess.h"

#include <QtCore/QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace panelhost;

namespace {

constexpr int AmpleTime = 60000; // ms

void writeText(int descriptor, const QByteArray &text)
{
    [[maybe_unused]] const ssize_t written = write(descriptor, text.constData(), static_cast<size_t>(text.size()));
}

QString fileWrittenAtExit; // by the process that exits with its own objects

void writeFileAtExit()
{
    QFile file(fileWrittenAtExit);
    if (!fileWrittenAtExit.isEmpty() && file.open(QIODevice::WriteOnly))
        file.write("x");
}

}

/// Work in a copy of the process: what it writes, how it ends, and that this process is left alone.
class tst_ForkedProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { fileWrittenAtExit.clear(); }

    void returnsWhatTheWorkWrites()
    {
        const QByteArray text(300000, 'x'); // more than a pipe holds
        const auto end = runForked([&](int output) { writeText(output, text); }, AmpleTime);
        QVERIFY(end);
        QVERIFY(end->hasSucceeded());
        QCOMPARE(end->output, text);
    }

    void changesNothingHere()
    {
        int value = 1;
        QVERIFY(runForked([&](int) { value = 2; }, AmpleTime)->hasSucceeded());
        QCOMPARE(value, 1);
    }

    void exitLeavesTheObjectsOfThisProcessAlone()
    {
        const QTemporaryDir directory;
        fileWrittenAtExit = directory.filePath(QStringLiteral("exited"));
        const auto end = runForked([](int) { std::exit(7); }, AmpleTime);
        QVERIFY(end);
        QVERIFY(!end->hasSucceeded());
        QVERIFY(WIFEXITED(end->status));
        QCOMPARE(WEXITSTATUS(end->status), 7);
        QVERIFY(!QFile::exists(fileWrittenAtExit));
    }

    void aCrashTellsItsSignal()
    {
        const auto end = runForked([](int) { raise(SIGSEGV); }, AmpleTime);
        QVERIFY(end);
        QVERIFY(!end->hasSucceeded());
        QVERIFY(WIFSIGNALED(end->status));
        QCOMPARE(WTERMSIG(end->status), SIGSEGV);
        QVERIFY(!WCOREDUMP(end->status));
    }

    void theStandardStreamsLeadNowhere()
    {
        const auto work = [](int output) {
            char c = 0;
            if (::isatty(STDIN_FILENO) == 0 && ::read(STDIN_FILENO, &c, 1) == 0 && ::write(STDOUT_FILENO, "x", 1) == 1
                && ::write(STDERR_FILENO, "x", 1) == 1)
                writeText(output, "nowhere");
        };
        QCOMPARE(runForked(work, AmpleTime)->output, QByteArray("nowhere"));
    }

    void isKilledWhenItsTimeIsOver()
    {
        const auto work = [](int output) {
            writeText(output, "begun");
            for (;;)
                ::pause();
        };
        const auto end = runForked(work, 2000);
        QVERIFY(end);
        QVERIFY(end->isTimedOut);
        QVERIFY(!end->hasSucceeded());
        QCOMPARE(end->output, QByteArray("begun"));
        QCOMPARE(WTERMSIG(end->status), SIGKILL);
    }

    // QTest has a thread of its own, which a copy doesn't have.
    void knowsOtherThreads()
    {
        const auto work = [](int output) {
            writeText(output, hasOneThread() ? "one" : "more");
            std::thread([] { ::pause(); }).detach();
            writeText(output, hasOneThread() ? ", one" : ", more");
        };
        QCOMPARE(runForked(work, AmpleTime)->output, QByteArray("one, more"));
    }
};

int main(int argc, char **argv)
{
    std::atexit(writeFileAtExit);
    panelhost::prepareProcess(false);
    QApplication application(argc, argv);
    panelhost::prepareApplication();
    tst_ForkedProcess test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_forkedprocess.moc"
