#include "session/loadprobe.h"

#include "session/devicesession.h"
#include "session/forkedprocess.h"

#include <QtCore/QProcess>
#include <QtCore/QSet>
#include <QtWidgets/QApplication>

#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
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

QString endOf(bool hasExited, int codeOrSignal)
{
    if (hasExited)
        return QStringLiteral("ended the process with status %1").arg(codeOrSignal);
    return QStringLiteral("crashed the process: %1").arg(QString::fromLocal8Bit(strsignal(codeOrSignal)));
}

QString timeoutText(int timeout)
{
    return QStringLiteral("didn't return within %1 ms").arg(timeout);
}

/// Returns what a process has found that wrote @p text and then ended in the way that @p end tells.
LoadReport reportOf(const QByteArray &text, const QString &end)
{
    const ProbeOutput output(text);
    return output.isDone ? LoadReport{output.steps, {}}
                         : LoadReport{output.steps, QStringLiteral("%1 %2.").arg(output.call, end)};
}

/// Writes the lines of a probe.
class ProbeWriter
{
public:
    explicit ProbeWriter(int output) : m_output(output) {}

    void write(const char *word, const QString &text) const
    {
        const QByteArray line = word + text.simplified().toUtf8() + '\n';
        [[maybe_unused]] const ssize_t written = ::write(m_output, line.constData(), static_cast<size_t>(line.size()));
    }

    LoadObserver observer() const
    {
        return {[*this](const QString &call) { write(calling, call); },
                [*this](const LoadStep &step) {
                    write(ReachedPrefix, QStringLiteral("%1 %2").arg(static_cast<int>(step.state)).arg(step.found));
                }};
    }

private:
    int m_output;
};

void loadInNewSession(const QString &component, const QString &pages, const LoadObserver &observer)
{
    Session::Options options;
    options.component = component;
    options.pages = pages.isEmpty() ? Session::noPages : pages;
    auto *session = std::make_unique<DeviceSession>(options).release(); // ends with the process
    if (pages.isEmpty())
        session->loadLibrary(observer);
    else if (session->loadLibrary(LoadObserver()))
        session->loadPagesLibrary(observer);
}

[[noreturn]] void loadAndEnd(int output, const ProbeLoad &load)
{
    const ProbeWriter writer(output);
    load(writer.observer());
    writer.write(done, {});
    _exit(0);
}

// Without the time that a process and its application object need to start.
std::optional<LoadReport> probeInCopy(const ProbeLoad &load, int timeout)
{
    const auto end = runForked([&load](int output) { loadAndEnd(output, load); }, timeout);
    if (!end)
        return std::nullopt;
    const bool hasExited = WIFEXITED(end->status);
    return reportOf(end->output,
                    end->isTimedOut ? timeoutText(timeout)
                                    : endOf(hasExited, hasExited ? WEXITSTATUS(end->status) : WTERMSIG(end->status)));
}

std::optional<LoadReport> probeInNewProcess(const QString &component, const QString &pages, int timeout)
{
    QProcess process;
    process.setProcessEnvironment(environmentFor(component, pages));
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QString::fromLatin1(program), QStringList());
    if (!process.waitForStarted())
        return std::nullopt;
    const bool hasEnded = process.waitForFinished(timeout);
    if (!hasEnded) {
        process.kill();
        process.waitForFinished();
    }
    return reportOf(process.readAllStandardOutput(),
                    hasEnded ? endOf(process.exitStatus() == QProcess::NormalExit, process.exitCode())
                             : timeoutText(timeout));
}

}

LoadReport probeLoading(const QString &component, const QString &pages, const ProbeLoad &load, int timeout)
{
    static QSet<QString> harmless;
    const QString path = pages.isEmpty() ? component : pages;
    // The separate process must not start another one.
    if (harmless.contains(path) || qEnvironmentVariableIsSet(request))
        return {};
    const auto loadAlone = [&](const LoadObserver &observer) { loadInNewSession(component, pages, observer); };
    const bool canCopy = hasOneThread() && (load || !DeviceSession::isAnyAlive());
    const auto report =
        canCopy ? probeInCopy(load ? load : loadAlone, timeout) : probeInNewProcess(component, pages, timeout);
    if (report && report->failure.isEmpty())
        harmless.insert(path);
    return report.value_or(LoadReport());
}

void runAsProbe()
{
    const QString path = QString::fromLocal8Bit(qgetenv(request));
    if (path.isEmpty())
        return;
    // A duplicate of stdout, so that output of the library doesn't interfere.
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    prepareTrial();
    int argc = 1;
    char name[] = "panelhost";
    char *argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    const QString pages = QString::fromLocal8Bit(qgetenv(pagesRequest));
    loadAndEnd(output, [&](const LoadObserver &observer) { loadInNewSession(path, pages, observer); });
}

}
