#include "records/recordsplace.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

namespace panelhost {

namespace {

QString defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/panelhost/runs.sqlite");
}

}

QCommandLineOption recordsOption()
{
    return {QStringLiteral("records"), QStringLiteral("Where runs are saved: sqlite:FILE or none."),
            QStringLiteral("PLACE")};
}

std::optional<RecordsPlace> readRecordsPlace(const QCommandLineParser &parser, QString *error)
{
    const bool isOption = parser.isSet(QStringLiteral("records"));
    const QString name = isOption ? QStringLiteral("--records") : QStringLiteral("PANELHOST_RECORDS");
    const QString value =
        isOption ? parser.value(QStringLiteral("records")) : qEnvironmentVariable("PANELHOST_RECORDS");
    if (value.isEmpty())
        return RecordsPlace{defaultPath(), true};
    if (value == QLatin1String("none"))
        return RecordsPlace{};
    const QString prefix = QStringLiteral("sqlite:");
    if (value.startsWith(prefix) && value.size() > prefix.size())
        return RecordsPlace{QFileInfo(value.mid(prefix.size())).absoluteFilePath(), false};
    *error = QStringLiteral("%1 is \"%2\"; it is sqlite:FILE or none.").arg(name, value);
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

}
