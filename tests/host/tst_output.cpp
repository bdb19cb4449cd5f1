#include "hosttest.h"
#include "output/linefile.h"
#include "output/outputcheck.h"
#include "output/recordingsignature.h"
#include "output/replacefile.h"
#include "output/temporarydirectory.h"
#include "session/session.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace panelhost;

namespace {

/// While it lives, the system takes no more than a number of bytes for a file: what a full disk does, for anybody.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before = {};
};

}

/// The files that are written: line by line, or replaced as a whole, and those that must not be.
class TestOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void directoryOfAKilledProcessIsRemoved();
    void directoryOfAnotherUserIsLeft();
    void linesAreAppended();
    void fullDiskLeavesWholeLines();
    void deviceThatIsFullTellsTheReason();
    void oldContentIsKeptUntilTheFirstLine();
    void fileThatIsThereIsRefused();
    void secondWriterIsRefused();
    void lockEndsWithItsProcess();
    void placeThatCanNotBeOpenedTellsTheReason();
    void replacingIsAllOrNothing();
    void replacingFollowsALink();
    void inputIsRefused_data();
    void inputIsRefused();
    void fileThatIsNotThereYetIsRefused_data();
    void fileThatIsNotThereYetIsRefused();
    void shareFilesAndComponentAreInputs();
    void recordingIsRefusedUnlessForced();
    void deviceIsNoInputToLose();

private:
    QString path(const char *name) const { return m_directory->filePath(q(name)); }
    void write(const char *name, const QByteArray &content);
    QByteArray read(const char *name) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestOutput::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestOutput::write(const char *name, const QByteArray &content)
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray TestOutput::read(const char *name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

// Not while the process lives, and not what isn't known to be of a killed process.
void TestOutput::directoryOfAKilledProcessIsRemoved()
{
    QVERIFY(qputenv("TMPDIR", m_directory->path().toLocal8Bit()));
    const auto restore = qScopeGuard([] { qunsetenv("TMPDIR"); });
    const auto directories = [this] { return QDir(m_directory->path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot); };
    QVERIFY(QDir(m_directory->path()).mkdir(q("panelhost-others")));
    QVERIFY(QDir(m_directory->path()).mkdir(q("panelhost-xxxxxx")));
    int ready[2];
    QCOMPARE(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const TemporaryDirectory directory;
        QFile file(directory.path() + q("/file"));
        const bool isTold = file.open(QIODevice::WriteOnly) && ::write(ready[1], "x", 1) == 1;
        while (isTold)
            pause();
        _exit(1);
    }
    char byte = 0;
    QCOMPARE(::read(ready[0], &byte, 1), ssize_t(1));
    close(ready[0]);
    close(ready[1]);
    const QStringList before = directories();
    QCOMPARE(before.size(), 3);
    removeAbandonedDirectories();
    QCOMPARE(directories(), before);
    kill(child, SIGKILL);
    QCOMPARE(waitpid(child, nullptr, 0), child);
    {
        const TemporaryDirectory own;
        QVERIFY(QFileInfo(own.path()).isDir());
        QCOMPARE(directories().size(), 4);
        removeAbandonedDirectories();
        QCOMPARE(directories().size(), 3);
        QVERIFY(QFileInfo(own.path()).isDir());
    }
    QCOMPARE(directories(), (QStringList{q("panelhost-others"), q("panelhost-xxxxxx")}));
}

// Nobody else's: root could.
void TestOutput::directoryOfAnotherUserIsLeft()
{
    if (geteuid() != 0)
        QSKIP("Only root can make a directory of another user.");
    QVERIFY(qputenv("TMPDIR", m_directory->path().toLocal8Bit()));
    const auto restore = qScopeGuard([] { qunsetenv("TMPDIR"); });
    const QString directory = path("panelhost-abcdef");
    QVERIFY(QDir().mkdir(directory));
    write("panelhost-abcdef/lock", {});
    constexpr uid_t Nobody = 65534;
    QCOMPARE(chown(QFile::encodeName(directory).constData(), Nobody, Nobody), 0);
    removeAbandonedDirectories();
    QVERIFY(QFile::exists(directory));
    QCOMPARE(chown(QFile::encodeName(directory).constData(), geteuid(), getegid()), 0);
    removeAbandonedDirectories();
    QVERIFY(!QFile::exists(directory));
}

void TestOutput::linesAreAppended()
{
    LineFile file;
    QString error;
    QVERIFY(!file.append("before it is open\n"));
    QVERIFY2(file.open(path("a"), LineFile::IfExists::Refuse, &error), qPrintable(error));
    QVERIFY(file.append("one\n"));
    QCOMPARE(read("a"), QByteArray("one\n"));
    QVERIFY(file.append("two\nthree\n"));
    QCOMPARE(read("a"), QByteArray("one\ntwo\nthree\n"));
    file.close();
    QVERIFY(!file.append("after\n"));
    QCOMPARE(file.error(), QString());
}

void TestOutput::fullDiskLeavesWholeLines()
{
    LineFile file;
    QString error;
    QStringList told;
    file.setErrorHandler([&told](const QString &reason) { told << reason; });
    QVERIFY2(file.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
    {
        const FileSizeLimit limit(25);
        QVERIFY(file.append("ten bytes\n"));
        QVERIFY(file.append("ten bytes\n"));
        QVERIFY(!file.append("ten bytes\n"));
        QVERIFY(!file.append("1\n"));
    }
    QVERIFY(!file.append("room again\n"));
    QCOMPARE(read("a"), QByteArray("ten bytes\nten bytes\n"));
    const QString reason = path("a") + q(": File too large");
    QCOMPARE(file.error(), reason);
    QCOMPARE(told, QStringList(reason));
}

// A node of the test's own, so that the system's is out of reach.
void TestOutput::deviceThatIsFullTellsTheReason()
{
    const QByteArray node = path("full").toLocal8Bit();
    if (mknod(node.constData(), S_IFCHR | 0600, makedev(1, 7)) != 0 || access(node.constData(), W_OK) != 0
        || !QFile(path("full")).open(QIODevice::WriteOnly))
        QSKIP("no device can be made here");
    LineFile file;
    QString error;
    QVERIFY2(file.open(path("full"), LineFile::IfExists::Refuse, &error), qPrintable(error));
    QVERIFY(!file.append("line\n"));
    QCOMPARE(file.error(), path("full") + q(": No space left on device"));
    QVERIFY(!replaceFile(path("full"), "content", &error));
    QCOMPARE(error, path("full") + q(": No space left on device"));
    QVERIFY(!QFileInfo(path("full")).isFile());
}

void TestOutput::oldContentIsKeptUntilTheFirstLine()
{
    write("a", "a long old content\n");
    QString error;
    LineFile file;
    QVERIFY2(file.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
    QCOMPARE(read("a"), QByteArray("a long old content\n"));
    QVERIFY(file.append("new\n"));
    QCOMPARE(read("a"), QByteArray("new\n"));
    QVERIFY2(file.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
    file.close();
    QCOMPARE(read("a"), QByteArray());
}

void TestOutput::fileThatIsThereIsRefused()
{
    write("a", "old\n");
    QString error;
    LineFile file;
    QVERIFY(!file.open(path("a"), LineFile::IfExists::Refuse, &error));
    QCOMPARE(error, path("a") + q(": the file exists; --force overwrites it."));
    QVERIFY(!file.isOpen());
    QCOMPARE(read("a"), QByteArray("old\n"));
}

void TestOutput::secondWriterIsRefused()
{
    QString error;
    LineFile first;
    QVERIFY2(first.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
    QVERIFY(first.append("first\n"));
    for (const auto ifExists : {LineFile::IfExists::Overwrite, LineFile::IfExists::Refuse}) {
        LineFile second;
        QVERIFY(!second.open(path("a"), ifExists, &error));
        QCOMPARE(error, path("a") + q(": another process is writing this file."));
    }
    QCOMPARE(read("a"), QByteArray("first\n"));
    first.close();
    LineFile third;
    QVERIFY2(third.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
}

void TestOutput::lockEndsWithItsProcess()
{
    int ready[2];
    QCOMPARE(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        LineFile file;
        QString error;
        file.open(path("a"), LineFile::IfExists::Overwrite, &error);
        file.append("child\n");
        const bool isTold = ::write(ready[1], "x", 1) == 1;
        while (isTold)
            pause();
        _exit(1);
    }
    char byte = 0;
    QCOMPARE(::read(ready[0], &byte, 1), ssize_t(1));
    QString error;
    LineFile file;
    QVERIFY(!file.open(path("a"), LineFile::IfExists::Overwrite, &error));
    kill(child, SIGKILL);
    QCOMPARE(waitpid(child, nullptr, 0), child);
    QVERIFY2(file.open(path("a"), LineFile::IfExists::Overwrite, &error), qPrintable(error));
    close(ready[0]);
    close(ready[1]);
}

void TestOutput::placeThatCanNotBeOpenedTellsTheReason()
{
    QString error;
    LineFile file;
    QVERIFY(!file.open(path("no/a"), LineFile::IfExists::Overwrite, &error));
    QCOMPARE(error, path("no/a") + q(": No such file or directory"));
    QVERIFY(!file.open(m_directory->path(), LineFile::IfExists::Overwrite, &error));
    QCOMPARE(error, m_directory->path() + q(": Is a directory"));
    QVERIFY(!replaceFile(path("no/a"), "content", &error));
    QCOMPARE(error, path("no/a") + q(": No such file or directory"));
}

void TestOutput::replacingIsAllOrNothing()
{
    write("a", "old");
    QString error;
    {
        const FileSizeLimit limit(25);
        QVERIFY(!replaceFile(path("a"), QByteArray(100, 'x'), &error));
    }
    QCOMPARE(error, path("a") + q(": File too large"));
    QCOMPARE(read("a"), QByteArray("old"));
    QVERIFY2(replaceFile(path("a"), "new", &error), qPrintable(error));
    QCOMPARE(read("a"), QByteArray("new"));
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList(q("a")));
}

void TestOutput::replacingFollowsALink()
{
    write("a", "old");
    QVERIFY(QFile::link(path("a"), path("link")));
    QString error;
    QVERIFY2(replaceFile(path("link"), "new", &error), qPrintable(error));
    QVERIFY(QFileInfo(path("link")).isSymLink());
    QCOMPARE(read("a"), QByteArray("new"));
}

void TestOutput::inputIsRefused_data()
{
    QTest::addColumn<QString>("spelling");
    for (const char *spelling :
         {"a.yaml", "./a.yaml", "sub/../a.yaml", "link", "hardlink", "sub/../link", "dirlink/a.yaml"})
        QTest::newRow(spelling) << q(spelling);
}

void TestOutput::inputIsRefused()
{
    QFETCH(QString, spelling);
    write("a.yaml", "steps:\n");
    QVERIFY(QDir(m_directory->path()).mkdir(q("sub")));
    QVERIFY(QFile::link(path("a.yaml"), path("link")));
    QVERIFY(QFile::link(m_directory->path(), path("dirlink")));
    QCOMPARE(::link(path("a.yaml").toLocal8Bit().constData(), path("hardlink").toLocal8Bit().constData()), 0);
    OutputCheck check({});
    check.addInput(path("a.yaml"));
    const QString output = m_directory->path() + QLatin1Char('/') + spelling;
    QString error;
    QVERIFY(!check.addOutput(q("--journal"), output, true, &error));
    QCOMPARE(error, q("--journal \"%1\" would overwrite \"%2\", which is read.").arg(output, path("a.yaml")));
    QVERIFY2(check.addOutput(q("--journal"), path("sub/a.yaml"), false, &error), qPrintable(error));
}

void TestOutput::fileThatIsNotThereYetIsRefused_data()
{
    QTest::addColumn<QString>("spelling");
    for (const char *spelling : {"f", "./f", "none/../f", "link", "dirlink/f", "linktolink"})
        QTest::newRow(spelling) << q(spelling);
}

// Two outputs into one file, which none of them has made yet.
void TestOutput::fileThatIsNotThereYetIsRefused()
{
    QFETCH(QString, spelling);
    QVERIFY(QFile::link(path("f"), path("link")));
    QVERIFY(QFile::link(path("link"), path("linktolink")));
    QVERIFY(QFile::link(m_directory->path(), path("dirlink")));
    OutputCheck check({});
    QString error;
    QVERIFY2(check.addOutput(q("record"), path("f"), false, &error), qPrintable(error));
    QVERIFY2(check.addOutput(q("--other"), path("g"), false, &error), qPrintable(error));
    QVERIFY(!check.addOutput(q("--journal"), m_directory->path() + QLatin1Char('/') + spelling, false, &error));
    QVERIFY2(error.endsWith(q("would overwrite \"%1\", which record writes.").arg(path("f"))), qPrintable(error));
}

void TestOutput::shareFilesAndComponentAreInputs()
{
    write("factorymenu.xml", "<LCD/>");
    write("lib.so", "");
    Session::Options options;
    options.share = m_directory->path();
    options.component = path("lib.so");
    OutputCheck check(inputFiles(options));
    QString error;
    QVERIFY(!check.addOutput(q("--journal"), path("factorymenu.xml"), true, &error));
    QVERIFY(!check.addOutput(q("--journal"), path("lib.so"), true, &error));
    QVERIFY(check.addOutput(q("--journal"), path("other.xml"), true, &error));
}

void TestOutput::recordingIsRefusedUnlessForced()
{
    write("old.yaml", recordingSignature() + "device:\n");
    OutputCheck check({});
    QString error;
    QVERIFY(!check.addOutput(q("--journal"), path("old.yaml"), false, &error));
    QCOMPARE(error, q("--journal \"%1\" would overwrite a recording; --force allows it.").arg(path("old.yaml")));
    QVERIFY2(check.addOutput(q("--journal"), path("old.yaml"), true, &error), qPrintable(error));
}

void TestOutput::deviceIsNoInputToLose()
{
    OutputCheck check({});
    QString error;
    QVERIFY(check.addOutput(q("--journal"), q("/dev/null"), false, &error));
    QVERIFY2(check.addOutput(q("record"), q("/dev/null"), false, &error), qPrintable(error));
}

int main(int argc, char **argv)
{
    // A file that grows too large ends the process otherwise.
    std::signal(SIGXFSZ, SIG_IGN);
    QCoreApplication application(argc, argv);
    TestOutput test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_output.moc"
