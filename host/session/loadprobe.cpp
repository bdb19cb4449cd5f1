#include "session/loadprobe.h"

#include "session/devicesession.h"

#include <QtCore/QProcess>
#include <QtCore/QSet>
#include <QtWidgets/QApplication>

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace panelhost {

namespace {

// Environment variables with the paths of the component's library and of the pages' library, if it is to be loaded.
constexpr char request[] = "PANELHOST_PROBE";
constexpr char pagesRequest[] = "PANELHOST_PROBE_PAGES";
constexpr char program[] = "/proc/self/exe";

// Each line that the process writes consists of a word and a text.
constexpr char calling[] = "calling ";
constexpr char ReachedPrefix[] = "reached "; // with the number of the state
constexpr char done[] = "done ";

/// The output of the process.
struct ProbeOutput
{
    explicit ProbeOutput(const QByteArray &text)
    {
        for (const QByteArray &line : text.split('\n'))
            read(line);
    }

    void read(const QByteArray &line)
    {
        if (line.startsWith(calling))
            call = QString::fromUtf8(line.mid(qstrlen(calling)));
        isDone = isDone || line.startsWith(done);
        if (!line.startsWith(ReachedPrefix))
            return;
        const QByteArray step = line.mid(qstrlen(ReachedPrefix));
        const int space = step.indexOf(' ');
        steps << LoadStep{static_cast<LoadState>(step.left(space).toInt()), QString::fromUtf8(step.mid(space + 1))};
    }

    QString call = QStringLiteral("starting it");
    QList<LoadStep> steps;
    bool isDone = false;
};

QProcessEnvironment environmentFor(const QString &component, const QString &pages)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(request), component);
    environment.insert(QString::fromLatin1(pagesRequest), pages);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

QString endOf(const QProcess &process)
{
    if (process.exitStatus() == QProcess::NormalExit)
        return QStringLiteral("ended the process with status %1").arg(process.exitCode());
    return QStringLiteral("crashed the process: %1").arg(QString::fromLocal8Bit(strsignal(process.exitCode())));
}

LoadReport reportOf(QProcess &process, int timeout)
{
    const bool hasEnded = process.waitForFinished(timeout);
    if (!hasEnded) {
        process.kill();
        process.waitForFinished();
    }
    const ProbeOutput output(process.readAllStandardOutput());
    if (output.isDone)
        return {output.steps, {}};
    const QString end = hasEnded ? endOf(process) : QStringLiteral("didn't return within %1 ms").arg(timeout);
    return {output.steps, QStringLiteral("%1 %2.").arg(output.call, end)};
}

/// Runs in the separate process. It writes to a duplicate of stdout, so that output of the library doesn't interfere.
class Probe
{
public:
    Probe() : m_output(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        const int silence = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(silence, STDOUT_FILENO);
        dup2(silence, STDERR_FILENO);
    }

    void write(const char *word, const QString &text) const
    {
        const QByteArray line = word + text.simplified().toUtf8() + '\n';
        [[maybe_unused]] const ssize_t written = ::write(m_output, line.constData(), static_cast<size_t>(line.size()));
    }

    void load(const QString &component, const QString &pages) const
    {
        const LoadObserver observer{
            [this](const QString &call) { write(calling, call); },
            [this](const LoadStep &step) {
                write(ReachedPrefix, QStringLiteral("%1 %2").arg(static_cast<int>(step.state)).arg(step.found));
            }};
        Session::Options options;
        options.component = component;
        options.pages = pages.isEmpty() ? Session::noPages : pages;
        DeviceSession session(options);
        if (pages.isEmpty())
            session.loadLibrary(observer);
        else if (session.loadLibrary(LoadObserver()))
            session.loadPagesLibrary(observer);
        write(done, {});
        _exit(0);
    }

private:
    int m_output;
};

// A crash ends this process by its signal, immediately and without a core file. It also ends with its parent.
void endBySignals()
{
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(number, SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

}

LoadReport probeLoading(const QString &component, const QString &pages, int timeout)
{
    static QSet<QString> harmless;
    const QString path = pages.isEmpty() ? component : pages;
    // The separate process must not start another one.
    if (harmless.contains(path) || qEnvironmentVariableIsSet(request))
        return {};
    QProcess process;
    process.setProcessEnvironment(environmentFor(component, pages));
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QString::fromLatin1(program), QStringList());
    if (!process.waitForStarted())
        return {};
    const LoadReport report = reportOf(process, timeout);
    if (report.failure.isEmpty())
        harmless.insert(path);
    return report;
}

void runAsProbe()
{
    const QString path = QString::fromLocal8Bit(qgetenv(request));
    if (path.isEmpty())
        return;
    endBySignals();
    const Probe probe;
    int argc = 1;
    char name[] = "panelhost";
    char *argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    probe.load(path, QString::fromLocal8Bit(qgetenv(pagesRequest)));
}

}
