#include "records/recordsoptions.h"

#include "operator/unitnumber.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

namespace panelhost {

namespace {

QString defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/panelhost/runs.sqlite");
}

std::optional<RecordsLocation> serverLocation(const QCommandLineParser &parser, const QString &name,
                                              const QString &value, QString *error)
{
    const auto address = readServerAddress(value, error);
    if (!address) {
        *error = QStringLiteral("%1 %2. An address is postgresql://USER@HOST:PORT/DATABASE.").arg(name, *error);
        return std::nullopt;
    }
    RecordsLocation location{address->localFile.isEmpty() ? defaultPath() : address->localFile, false, address};
    const QString file = parser.value(QStringLiteral("records-password-file"));
    if (file.isEmpty())
        return location;
    const auto password = readPasswordFile(file, error);
    if (!password)
        return std::nullopt;
    location.server->password = *password;
    return location;
}

// It may be an address with a password that lacks its beginning.
QString withoutPassword(const QString &value)
{
    return value.contains(QLatin1Char('@')) ? QStringLiteral("...") + value.mid(value.lastIndexOf(QLatin1Char('@')))
                                            : value;
}

}

QList<QCommandLineOption> recordsOptions()
{
    return {{QStringLiteral("records"),
             QStringLiteral("Where runs are saved: sqlite:FILE, postgresql://USER@HOST/DATABASE or none."),
             QStringLiteral("PLACE")},
            {QStringLiteral("records-password-file"),
             QStringLiteral("A file whose first line is the password for the server of --records."),
             QStringLiteral("FILE")}};
}

std::optional<RecordsLocation> readRecordsLocation(const QCommandLineParser &parser, QString *error)
{
    const bool isOption = parser.isSet(QStringLiteral("records"));
    const QString name = isOption ? QStringLiteral("--records") : QStringLiteral("PANELHOST_RECORDS");
    const QString value =
        isOption ? parser.value(QStringLiteral("records")) : qEnvironmentVariable("PANELHOST_RECORDS");
    if (value.isEmpty())
        return RecordsLocation{defaultPath(), true, {}};
    if (value == QLatin1String("none"))
        return RecordsLocation{};
    const QString prefix = QStringLiteral("sqlite:");
    if (value.startsWith(prefix) && value.size() > prefix.size())
        return RecordsLocation{QFileInfo(value.mid(prefix.size())).absoluteFilePath(), false, {}};
    if (isServerAddress(value))
        return serverLocation(parser, name, value, error);
    *error = QStringLiteral("%1 is \"%2\", expected sqlite:FILE, postgresql://USER@HOST/DATABASE or none.")
                 .arg(name, withoutPassword(value));
    return std::nullopt;
}

QList<QCommandLineOption> identityOptions()
{
    return {
        {QStringLiteral("unit"), QStringLiteral("Serial number of the unit that is tested."), QStringLiteral("NUMBER")},
        {QStringLiteral("station"), QStringLiteral("Name of the test station."), QStringLiteral("NAME")},
        {QStringLiteral("operator"), QStringLiteral("Name of the operator."), QStringLiteral("NAME")},
    };
}

bool checkIdentity(const QCommandLineParser &parser, QString *error)
{
    for (const char *name : {"unit", "station", "operator"}) {
        const QString value = parser.value(QLatin1String(name));
        const QString problem = value.isEmpty() ? QString() : identityProblem(value);
        if (problem.isEmpty())
            continue;
        *error = QStringLiteral("--%1 %2.").arg(QLatin1String(name), problem);
        return false;
    }
    return true;
}

}
