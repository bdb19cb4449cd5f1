#include "records/serveraddress.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QUrlQuery>

#include <algorithm>

namespace panelhost {

namespace {

const QStringList &connectionOptions()
{
    static const QStringList names{QStringLiteral("sslmode"), QStringLiteral("sslrootcert"), QStringLiteral("sslcert"),
                                   QStringLiteral("sslkey")};
    return names;
}

QString quoted(QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

// Qt's driver takes a semicolon as the end of an option.
bool readOption(const QString &name, const QString &value, ServerAddress *address, QString *error)
{
    if (name == QLatin1String("local"))
        address->localFile = QFileInfo(value).absoluteFilePath();
    else if (name == QLatin1String("host"))
        address->host = value;
    else if (connectionOptions().contains(name) && !value.contains(QLatin1Char(';')))
        address->options.insert(name, value);
    else
        *error = name == QLatin1String("password")
            ? QStringLiteral("contains a password; put it into a file and give --records-password-file FILE")
            : QStringLiteral("has the option \"%1\"; the options are host, local, %2")
                  .arg(name, connectionOptions().join(QStringLiteral(", ")));
    return error->isEmpty();
}

}

QString ServerAddress::displayName() const
{
    QString text = QStringLiteral("postgresql://");
    if (!user.isEmpty())
        text += user + QLatin1Char('@');
    text += host;
    if (port != DefaultPort)
        text += QStringLiteral(":%1").arg(port);
    return text + QLatin1Char('/') + database;
}

QString ServerAddress::connectOptions() const
{
    QStringList list{QStringLiteral("connect_timeout=%1").arg(ConnectTimeout),
                     QStringLiteral("application_name=panelhost"),
                     QStringLiteral("tcp_user_timeout=%1").arg(ConnectTimeout * 1000),
                     QStringLiteral("keepalives_idle=%1").arg(ConnectTimeout),
                     QStringLiteral("keepalives_interval=1"),
                     QStringLiteral("keepalives_count=%1").arg(ConnectTimeout)};
    if (statementTimeout > 0)
        list << QStringLiteral("options='-c statement_timeout=%1'").arg(statementTimeout);
    for (auto option = options.begin(); option != options.end(); ++option)
        list << option.key() + QLatin1Char('=') + quoted(option.value());
    return list.join(QLatin1Char(';'));
}

bool isServerAddress(const QString &place)
{
    return place.startsWith(QLatin1String("postgresql:")) || place.startsWith(QLatin1String("postgres:"));
}

std::optional<ServerAddress> readServerAddress(const QString &place, QString *error)
{
    const QUrl url(place, QUrl::StrictMode);
    error->clear();
    ServerAddress address;
    address.user = url.userName(QUrl::FullyDecoded);
    address.host = url.host();
    address.port = url.port(ServerAddress::DefaultPort);
    address.database = url.path(QUrl::FullyDecoded).mid(1);
    if (!url.isValid() || !place.contains(QLatin1String("://")))
        *error = QStringLiteral("isn't a valid address");
    else if (!url.password().isEmpty())
        readOption(QStringLiteral("password"), {}, &address, error);
    else if (address.database.isEmpty())
        *error = QStringLiteral("doesn't name the database");
    const auto items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    const bool isGood = error->isEmpty() && std::all_of(items.begin(), items.end(), [&](const auto &item) {
                            return readOption(item.first, item.second, &address, error);
                        });
    return isGood ? std::optional<ServerAddress>(address) : std::nullopt;
}

std::optional<QString> readPasswordFile(const QString &path, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("The password can't be read from %1: %2.")
                     .arg(path, QFileInfo(path).isDir() ? QStringLiteral("not a file") : file.errorString());
        return std::nullopt;
    }
    if (file.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther)) {
        *error = QStringLiteral("%1 contains a password, and other users may read it; use chmod 600.").arg(path);
        return std::nullopt;
    }
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line.isEmpty()) {
        *error = QStringLiteral("%1 is empty; its first line is the password.").arg(path);
        return std::nullopt;
    }
    return QString::fromUtf8(line);
}

}
