#include "postgresserver.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtSql/QSqlDatabase>

#include <algorithm>
#include <csignal>
#include <functional>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace panelhost;

namespace {

QString programPath(const char *name)
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    const QStringList found = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QString &version : found) {
        const QString path = versions.filePath(version + QStringLiteral("/bin/") + QLatin1String(name));
        if (QFile::exists(path))
            return path;
    }
    return {};
}

/// A process that needn't be a child. Its descriptor is readable when it has ended.
class ProcessHandle
{
public:
    explicit ProcessHandle(qint64 pid) : m_descriptor(static_cast<int>(syscall(SYS_pidfd_open, pid, 0))) {}
    ProcessHandle(ProcessHandle &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    ProcessHandle &operator=(ProcessHandle &&) = delete;
    ~ProcessHandle()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    void kill() const { syscall(SYS_pidfd_send_signal, m_descriptor, SIGKILL, nullptr, 0); }
    /// Returns false after ten seconds.
    bool waitForEnd() const
    {
        pollfd ended = {m_descriptor, POLLIN, 0};
        return m_descriptor < 0 || ::poll(&ended, 1, 10000) == 1;
    }

private:
    int m_descriptor; ///< -1: there is no such process
};

}

PostgresServer::~PostgresServer()
{
    if (m_isRunning)
        crash();
}

bool PostgresServer::isInstalled()
{
    return !programPath("initdb").isEmpty() && QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"));
}

// The server refuses to run as root.
bool PostgresServer::run(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QStringList command{program};
    command += arguments;
    if (::getuid() == 0)
        command = QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=nobody"),
                              QStringLiteral("--regid=nogroup"), QStringLiteral("--clear-groups")}
            + command;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(QStringLiteral("/"));
    // The server keeps its output open.
    const QString log = m_directory.filePath(QStringLiteral("output"));
    process.setStandardOutputFile(log);
    process.start(command.takeFirst(), command);
    process.write(input);
    process.closeWriteChannel();
    const bool isDone =
        process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    QFile output(log);
    if (!isDone && output.open(QIODevice::ReadOnly))
        m_error = QString::fromUtf8(output.readAll());
    return isDone;
}

bool PostgresServer::control(const QStringList &arguments)
{
    return run(programPath("pg_ctl"), QStringList{QStringLiteral("-D"), data(), QStringLiteral("-w")} + arguments);
}

bool PostgresServer::create()
{
    const QByteArray directory = QFile::encodeName(m_directory.path());
    constexpr uid_t Nobody = 65534;
    if (::getuid() == 0 && ::chown(directory.constData(), Nobody, Nobody) != 0) {
        m_error = QStringLiteral("chown");
        return false;
    }
    // The empty database needn't survive a power failure.
    return run(programPath("initdb"),
               {QStringLiteral("-D"), data(), QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-U"),
                QStringLiteral("owner"), QStringLiteral("-E"), QStringLiteral("UTF8"), QStringLiteral("--no-sync")})
        && start()
        && run(programPath("psql"),
               {QStringLiteral("-h"), m_directory.path(), QStringLiteral("-U"), QStringLiteral("owner"),
                QStringLiteral("-c"), QStringLiteral("CREATE ROLE station LOGIN"), QStringLiteral("-c"),
                QStringLiteral("CREATE DATABASE line"), QStringLiteral("postgres")})
        && execute(storeServerScript(0, QStringLiteral("station")));
}

// A server that was killed has left a file with its process id, which is no obstacle when its processes are gone. What
// it has written survives its processes, so that nothing needs to be synchronized with the disk.
bool PostgresServer::start()
{
    m_isRunning =
        m_isRunning
        || control(
            {QStringLiteral("-l"), m_directory.filePath(QStringLiteral("log")), QStringLiteral("-o"),
             QStringLiteral("-k %1 -c listen_addresses='' -c max_connections=120 -c fsync=off -c log_line_prefix=%n,")
                 .arg(m_directory.path()),
             QStringLiteral("start")});
    return m_isRunning;
}

bool PostgresServer::crash()
{
    m_isRunning = false;
    return control({QStringLiteral("-m"), QStringLiteral("immediate"), QStringLiteral("stop")});
}

bool PostgresServer::kill()
{
    QFile file(data() + QStringLiteral("/postmaster.pid"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const qint64 server = file.readLine().trimmed().toLongLong();
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(server));
    std::vector<ProcessHandle> processes;
    processes.emplace_back(server);
    if (children.open(QIODevice::ReadOnly)) {
        for (const QByteArray &child : children.readAll().simplified().split(' ')) {
            if (child.toLongLong() > 1)
                processes.emplace_back(child.toLongLong());
        }
    }
    for (const ProcessHandle &process : processes)
        process.kill();
    if (!std::all_of(processes.begin(), processes.end(), std::mem_fn(&ProcessHandle::waitForEnd)))
        return false;
    m_isRunning = false;
    return true;
}

bool PostgresServer::execute(const QString &sql, const QString &user)
{
    return run(programPath("psql"),
               {QStringLiteral("-q"), QStringLiteral("-v"), QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-h"),
                m_directory.path(), QStringLiteral("-U"), user, QStringLiteral("line")},
               sql.toUtf8());
}

std::vector<double> PostgresServer::errorTimes(const QByteArray &message) const
{
    std::vector<double> times;
    QFile file(m_directory.filePath(QStringLiteral("log")));
    if (!file.open(QIODevice::ReadOnly))
        return times;
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        const int comma = line.indexOf(',');
        if (comma > 0 && line.mid(comma + 1).startsWith("ERROR:") && line.contains(message))
            times.push_back(line.left(comma).toDouble());
    }
    return times;
}

QStringList PostgresServer::values(const QString &query)
{
    QStringList list;
    QString error;
    const auto connection = StoreConnection::openServer(parsedAddress(QStringLiteral("owner")), &error);
    if (!connection)
        return {error};
    StoreRows rows = connection->execute(query);
    if (!rows)
        return {connection->errorText()};
    while (rows.next())
        list << rows.value(0).toString();
    return list;
}

bool PostgresServer::addAccessRule(const QByteArray &line)
{
    QFile file(data() + QStringLiteral("/pg_hba.conf"));
    if (!file.open(QIODevice::ReadWrite))
        return false;
    const QByteArray rules = line + '\n' + file.readAll();
    return file.seek(0) && file.write(rules) == rules.size() && file.flush() && control({QStringLiteral("reload")});
}

QString PostgresServer::address(const QString &user, const QString &options) const
{
    return QStringLiteral("postgresql://%1@/line?host=%2%3").arg(user, m_directory.path(), options);
}

ServerAddress PostgresServer::parsedAddress(const QString &user) const
{
    QString error;
    const auto parsed = readServerAddress(address(user), &error);
    if (!parsed)
        qFatal("%s", qPrintable(error));
    return *parsed;
}
