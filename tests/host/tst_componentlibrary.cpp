#include "component/componentlibrary.h"
#include "hosttest.h"
#include "session/loadprobe.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <array>
#include <cstdio>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace panelhost;

namespace {

QString fixture(const char *name)
{
    return QStringLiteral(LCD_BUILD_DIR "/tests/fixtures/%1.so").arg(QString::fromLatin1(name));
}

// Environment variables of the process that tries one library.
constexpr char probedLibrary[] = "TEST_PROBED_LIBRARY";
constexpr char probeTime[] = "TEST_PROBE_TIME";
constexpr char probeThread[] = "TEST_PROBE_THREAD"; // with another thread, which rules out a copy of the process

QString statesOf(const LoadReport &report)
{
    QStringList states;
    for (const LoadStep &step : report.steps)
        states << ComponentLibrary::stateName(step.state);
    return states.join(QLatin1Char(' '));
}

QString climb(ComponentLibrary &library, LoadState target)
{
    const bool isThere = library.locate() && library.open() && library.check()
        && (target < LoadState::Initialized || library.initialize(nullptr))
        && (target < LoadState::Created || library.create());
    return isThere ? QString() : library.errorString();
}

}

/// The loader against libraries that are wrong in one way each: one sentence that names the file and what is wrong.
class tst_ComponentLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWithOneSentence_data()
    {
        QTest::addColumn<QString>("sentence");
        QTest::addColumn<int>("reached");
        const auto row = [](const char *name, const char *sentence, LoadState reached) {
            QTest::newRow(name) << QString::fromUtf8(sentence) << static_cast<int>(reached);
        };
        row("no_pluginfo", "has no symbol \"pluginfo\".", LoadState::Opened);
        row("no_pluginit", "has no symbol \"pluginit\".", LoadState::Opened);
        row("no_table", "has no symbol \"lcdfactorymodeimpl_mirel_componentInfoTable\".", LoadState::Opened);
        row("null_info", "pluginfo() returns no record.", LoadState::Opened);
        row("wrong_version", "has interface version \"0.2\", expected \"0.1\".", LoadState::Opened);
        row("null_version", "has interface version \"(null)\", expected \"0.1\".", LoadState::Opened);
        row("null_table", "has no component table.", LoadState::Opened);
        row("empty_table", "has a component table with no entry.", LoadState::Opened);
        row("other_component", "has no component \"lcd.factory.mode\", only \"lcd.coffee.mode\".", LoadState::Opened);
        row("unnamed_component", "has no component \"lcd.factory.mode\", only \"(null)\".", LoadState::Opened);
        row("null_creator", "the component \"lcd.factory.mode\" has no creator.", LoadState::Opened);
        row("null_deletor", "the component \"lcd.factory.mode\" has no deletor.", LoadState::Opened);
        row("creator_returns_null", "the creator of \"lcd.factory.mode\" returned no object.", LoadState::Initialized);
        row("creator_throws", "the creator of \"lcd.factory.mode\" threw: out of paint.", LoadState::Initialized);
        row("creator_throws_int", "the creator of \"lcd.factory.mode\" threw an exception.", LoadState::Initialized);
        row("other_widget",
            "the creator of \"lcd.factory.mode\" created a QWidget, expected a LCD::FactoryMode::ILcdFactoryMode.",
            LoadState::Initialized);
        row("info_is_data", "the symbol \"pluginfo\" is data, expected a function.", LoadState::Opened);
        row("init_is_data", "the symbol \"pluginit\" is data, expected a function.", LoadState::Opened);
        row("info_throws", "pluginfo() threw: out of paper.", LoadState::Opened);
        row("info_throws_int", "pluginfo() threw an exception.", LoadState::Opened);
        row("init_throws", "pluginit() threw: out of glue.", LoadState::Checked);
    }
    void refusesWithOneSentence()
    {
        QFETCH(QString, sentence);
        QFETCH(int, reached);
        const QString path = fixture(QTest::currentDataTag());
        ComponentLibrary library(path);
        QCOMPARE(climb(library, LoadState::Created), path + QStringLiteral(": ") + sentence);
        QCOMPARE(static_cast<int>(library.state()), reached);
        QVERIFY(!library.widget());
    }

    // Each of these would take this process with it.
    void aProbeMeetsWhatEndsAProcess_data()
    {
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("reached");
        const auto row = [](const char *name, const char *failure, const char *reached) {
            QTest::newRow(name) << QString::fromUtf8(failure) << QString::fromUtf8(reached);
        };
        row("constructor_exits", "opening it ended the process with status 0.", "located");
        row("constructor_ends", "opening it ended the process with status 7.", "located");
        row("constructor_crashes", "opening it crashed the process: Segmentation fault.", "located");
        row("info_exits", "pluginfo() ended the process with status 0.", "located opened");
        row("info_crashes", "pluginfo() crashed the process: Segmentation fault.", "located opened");
        row("info_aborts", "pluginfo() crashed the process: Aborted.", "located opened");
        row("bad_record", "reading its records crashed the process: Segmentation fault.", "located opened");
        row("init_exits", "pluginit() ended the process with status 0.", "located opened checked");
        row("init_crashes", "pluginit() crashed the process: Segmentation fault.", "located opened checked");
        row("creator_exits", "the creator of \"lcd.factory.mode\" ended the process with status 0.",
            "located opened checked initialised");
        row("creator_crashes", "the creator of \"lcd.factory.mode\" crashed the process: Segmentation fault.",
            "located opened checked initialised");
        row("good", "", "located opened checked initialised created");
        // What ends with a sentence is left to the process itself.
        row("info_throws", "", "located opened");
        row("no_pluginit", "", "located opened");
    }
    void aProbeMeetsWhatEndsAProcess()
    {
        QFETCH(QString, failure);
        QFETCH(QString, reached);
        const LoadReport report = probeLoading(fixture(QTest::currentDataTag()), {}, {});
        QCOMPARE(report.failure, failure);
        QCOMPARE(statesOf(report), reached);
    }

    // The same from a process without other threads, which copies itself.
    void aCopyMeetsWhatEndsAProcess_data() { aProbeMeetsWhatEndsAProcess_data(); }
    void aCopyMeetsWhatEndsAProcess()
    {
        QFETCH(QString, failure);
        QFETCH(QString, reached);
        const auto process = startProbe(QTest::currentDataTag(), MaxLoadTime, false);
        QVERIFY(process->waitForFinished(2 * MaxLoadTime));
        const QString states = failure.isEmpty() ? reached + QStringLiteral(" none") : reached;
        QCOMPARE(QString::fromUtf8(process->readAllStandardOutput()), QStringLiteral("%1\n%2\n").arg(failure, states));
    }

    // All of them at once, because each takes the whole time.
    void whatDoesNotReturnIsEnded()
    {
        constexpr int Time = 5000; // ms
        struct Probe
        {
            const char *library;
            bool hasThread;
            const char *output;
        };
        static constexpr std::array<Probe, 4> probes = {
            {{"constructor_hangs", false, "opening it didn't return within 5000 ms.\nlocated\n"},
             {"constructor_hangs", true, "opening it didn't return within 5000 ms.\nlocated\n"},
             {"info_hangs", false, "pluginfo() didn't return within 5000 ms.\nlocated opened\n"},
             {"info_hangs", true, "pluginfo() didn't return within 5000 ms.\nlocated opened\n"}}};
        std::vector<std::unique_ptr<QProcess>> processes;
        for (const Probe &probe : probes)
            processes.push_back(startProbe(probe.library, Time, probe.hasThread));
        for (std::size_t index = 0; index < probes.size(); ++index) {
            QVERIFY(processes[index]->waitForFinished(2 * MaxLoadTime));
            QCOMPARE(QString::fromUtf8(processes[index]->readAllStandardOutput()), q(probes[index].output));
        }
    }

    void aMissingFile()
    {
        ComponentLibrary library(QStringLiteral("/nowhere/lib.so"));
        QCOMPARE(climb(library, LoadState::Created), QStringLiteral("/nowhere/lib.so: there is no such file."));
        QCOMPARE(library.state(), LoadState::None);
    }

    void aDirectory()
    {
        const QTemporaryDir directory;
        ComponentLibrary library(directory.path());
        QCOMPARE(climb(library, LoadState::Created), directory.path() + QStringLiteral(": this is not a file."));
    }

    void aFileThatIsNoLibrary()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("text.so"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(4096, 'x'));
        file.close();
        ComponentLibrary library(path);
        const QString error = climb(library, LoadState::Created);
        QVERIFY2(error.startsWith(path + QStringLiteral(": can't be opened as a library: ")), qPrintable(error));
        QCOMPARE(error.count(path), 1);
        QCOMPARE(library.state(), LoadState::Located);
    }

    // By the linker's own reading it would be mapped, and the process would end with a bus error.
    void aLibraryCutOff_data()
    {
        QTest::addColumn<qint64>("length");
        QTest::newRow("in its headers") << qint64(200);
        QTest::newRow("after its headers") << qint64(1024);
        QTest::newRow("in its code") << qint64(8192);
    }
    void aLibraryCutOff()
    {
        QFETCH(qint64, length);
        QFile whole(fixture("good"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QTemporaryDir directory;
        QFile file(directory.filePath(QStringLiteral("cut.so")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(whole.read(length));
        file.close();
        ComponentLibrary library(file.fileName());
        QCOMPARE(climb(library, LoadState::Created),
                 file.fileName() + QStringLiteral(": can't be opened as a library: the file is truncated."));
        QCOMPARE(library.state(), LoadState::Located);
    }

    void aGoodOneClimbsEveryState()
    {
        ComponentLibrary library(fixture("good"));
        QCOMPARE(climb(library, LoadState::Created), QString());
        QStringList states;
        for (const LoadStep &step : library.steps()) {
            states << ComponentLibrary::stateName(step.state);
            QVERIFY(!step.found.isEmpty());
        }
        QCOMPARE(states.join(QLatin1Char(' ')), QStringLiteral("located opened checked initialised created"));
        QVERIFY(library.widget());
        library.shutDown();
        QVERIFY(!library.widget());
    }

private:
    /// Starts this program as a process that tries @p library for at most @p time (ms).
    static std::unique_ptr<QProcess> startProbe(const char *library, int time, bool hasThread)
    {
        auto process = std::make_unique<QProcess>();
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(q(probedLibrary), fixture(library));
        environment.insert(q(probeTime), QString::number(time));
        if (hasThread)
            environment.insert(q(probeThread), q("1"));
        process->setProcessEnvironment(environment);
        process->start(QCoreApplication::applicationFilePath(), QStringList());
        return process;
    }
};

// QTest has a thread of its own, so a copy is made only in a process without it. The function that loads the library is
// called only in a copy; it adds the state "none" at the end.
int probeInThisProcess()
{
    if (qEnvironmentVariableIsSet(probeThread))
        std::thread([] { ::pause(); }).detach();
    const QString path = QString::fromLocal8Bit(qgetenv(probedLibrary));
    const auto loadInCopy = [&path](const LoadObserver &observer) {
        ComponentLibrary library(path);
        library.setObserver(observer);
        climb(library, LoadState::Created);
        observer.reached({LoadState::None, {}});
    };
    const LoadReport report = probeLoading(path, {}, loadInCopy, qEnvironmentVariableIntValue(probeTime));
    std::printf("%s\n%s\n", qPrintable(report.failure), qPrintable(statesOf(report)));
    return 0;
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    if (qEnvironmentVariableIsSet(probedLibrary))
        return probeInThisProcess();
    tst_ComponentLibrary test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_componentlibrary.moc"
