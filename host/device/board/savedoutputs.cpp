#include "device/board/savedoutputs.h"

#include "device/board/sysfsdevice.h"
#include "output/replacefile.h"
#include "output/systemfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int Format = 1;
constexpr char noTrigger[] = "none";
constexpr char ledsClass[] = "leds";
constexpr char backlightClass[] = "backlight";

// In the order in which they are restored: without a trigger first, because a trigger changes the brightness; the
// blink times exist only after their trigger is set.
constexpr const char *ledAttributes[] = {"multi_intensity", "brightness", "trigger", "delay_on", "delay_off"};

QString formatKey()
{
    return QStringLiteral("format");
}

bool isNumber(const QByteArray &text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

// Returns nothing if the LED has no such attribute.
std::optional<QByteArray> valueToSave(const SysfsDevice &led, const char *attribute, QString *error)
{
    auto value = led.read(attribute, error);
    if (!value)
        return std::nullopt;
    if (qstrcmp(attribute, "trigger") == 0)
        return activeTrigger(QString::fromUtf8(*value)).toUtf8();
    if (qstrcmp(attribute, "multi_intensity") == 0 || isNumber(*value))
        return value;
    *error = QStringLiteral("%1: found \"%2\", expected a number")
                 .arg(led.path(attribute), QString::fromLatin1(value->left(40)));
    return std::nullopt;
}

bool saveAttributes(const SysfsDevice &device, const QList<const char *> &attributes, QJsonObject &devices,
                    QString *error)
{
    QJsonObject values;
    for (const char *attribute : attributes) {
        if (qstrcmp(attribute, "brightness") != 0 && !device.has(attribute))
            continue;
        const auto value = valueToSave(device, attribute, error);
        if (!value)
            return false;
        values.insert(QLatin1String(attribute), QString::fromUtf8(*value));
    }
    devices.insert(device.name(), values);
    return true;
}

bool saveAll(const char *deviceClass, const QStringList &names, const QList<const char *> &attributes,
             QJsonObject &content, QString *error)
{
    QJsonObject devices;
    for (const QString &name : names) {
        if (!saveAttributes({QLatin1String(deviceClass), name}, attributes, devices, error))
            return false;
    }
    content.insert(QLatin1String(deviceClass), devices);
    return true;
}

QList<const char *> ledAttributeList()
{
    return {std::begin(ledAttributes), std::end(ledAttributes)};
}

// Returns the first failure; the other attributes are written all the same.
QString restoreDevice(const SysfsDevice &device, const QJsonObject &values)
{
    QString problem;
    const auto write = [&](const char *attribute, const QString &value) {
        QString error;
        if (!device.write(attribute, value.toUtf8(), &error) && problem.isEmpty())
            problem = error;
    };
    if (values.contains(QLatin1String("trigger")))
        write("trigger", QLatin1String(noTrigger));
    for (const char *attribute : ledAttributes) {
        const QString value = values.value(QLatin1String(attribute)).toString();
        const bool isDone = qstrcmp(attribute, "trigger") == 0 && value == QLatin1String(noTrigger);
        if (!value.isEmpty() && !isDone)
            write(attribute, value);
    }
    return problem;
}

}

SavedOutputs::SavedOutputs(const QString &stateDirectory) : m_directory(stateDirectory)
{
}

SavedOutputs::~SavedOutputs()
{
    if (m_lock >= 0)
        ::close(m_lock);
}

QString SavedOutputs::path() const
{
    return m_directory + QStringLiteral("/outputs.json");
}

bool SavedOutputs::exists() const
{
    return QFileInfo::exists(path());
}

bool SavedOutputs::lock(QString *error)
{
    const QString path = m_directory + QStringLiteral("/board.lock");
    QDir().mkpath(m_directory);
    m_lock = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (m_lock < 0) {
        *error = QStringLiteral("%1; give another directory with --state").arg(fileError(path, errno));
        return false;
    }
    if (flock(m_lock, LOCK_EX | LOCK_NB) == 0)
        return true;
    *error = QStringLiteral("%1: another panelhost uses the board").arg(path);
    ::close(m_lock);
    m_lock = -1;
    return false;
}

bool SavedOutputs::save(const QStringList &leds, const QStringList &backlights, QString *error)
{
    QJsonObject content{{formatKey(), Format}};
    return saveAll(ledsClass, leds, ledAttributeList(), content, error)
        && saveAll(backlightClass, backlights, {"brightness"}, content, error)
        && replaceFileDurably(path(), QJsonDocument(content).toJson(), error);
}

QStringList SavedOutputs::restore()
{
    m_restored = 0;
    QFile file(path());
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("%1: %2").arg(path(), file.errorString())};
    const QJsonObject content = QJsonDocument::fromJson(file.readAll()).object();
    if (content.value(formatKey()).toInt() != Format)
        return {QStringLiteral("%1: not a file of saved values; remove it").arg(path())};
    QStringList problems;
    for (const char *deviceClass : {ledsClass, backlightClass}) {
        const QJsonObject devices = content.value(QLatin1String(deviceClass)).toObject();
        for (auto device = devices.begin(); device != devices.end(); ++device) {
            const SysfsDevice target(QLatin1String(deviceClass), device.key());
            if (!isSysfsName(device.key()) || !target.exists())
                continue;
            const QString problem = restoreDevice(target, device.value().toObject());
            if (problem.isEmpty())
                ++m_restored;
            else
                problems << problem;
        }
    }
    if (problems.isEmpty() && !file.remove())
        problems << QStringLiteral("%1: %2").arg(path(), file.errorString());
    return problems;
}

// A single word without brackets is the trigger, too.
QString activeTrigger(const QString &triggers)
{
    static const QRegularExpression inBrackets(QStringLiteral("\\[([^\\]]+)\\]"));
    const QRegularExpressionMatch match = inBrackets.match(triggers);
    if (match.hasMatch())
        return match.captured(1);
    return triggers.contains(QLatin1Char(' ')) ? QString() : triggers.trimmed();
}

QString stateDirectory(const QString &given)
{
    if (!given.isEmpty())
        return QFileInfo(given).absoluteFilePath();
    const QString service = qEnvironmentVariable("STATE_DIRECTORY"); // set by systemd
    if (!service.isEmpty())
        return service.section(QLatin1Char(':'), 0, 0);
    if (geteuid() == 0)
        return QStringLiteral("/var/lib/panelhost");
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/panelhost/state");
}

}
