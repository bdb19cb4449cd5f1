#include "profile/boardprofile.h"

#include "device/board/sysfsdevice.h"
#include "profile/profilereader.h"
#include "yaml/limits.h"
#include "yaml/yamldocument.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace panelhost {

namespace {

using Source = BoardConfiguration::Source;

struct Part
{
    QString name;
    void (*read)(ProfileReader &reader, const YamlNode &value);
};

const QList<Part> &parts()
{
    static const QList<Part> table = {
        {QStringLiteral("keys"), readKeys}, {QStringLiteral("navigation"), readNavigation},
        {QStringLiteral("leds"), readLeds}, {QStringLiteral("screens"), readScreens},
        {QStringLiteral("tbar"), readTBar}, {QStringLiteral("net"), readNet},
        {QStringLiteral("usb"), readUsb},
    };
    return table;
}

void readPart(ProfileReader &reader, const Part &part, const YamlNode &value)
{
    const bool isSimulated = value.isScalar() && YamlReader::scalar(value) == QLatin1String("simulated");
    reader.board.parts.insert(part.name, isSimulated ? Source::Simulated : Source::Real);
    if (isSimulated)
        return;
    if (value.isScalar() || value.isNull())
        return reader.yaml.errorExpected(value, QStringLiteral("simulated, or what the part consists of"),
                                         {QStringLiteral("simulated")});
    part.read(reader, value);
}

void readParts(ProfileReader &reader, const YamlNode &root)
{
    QStringList names;
    for (const Part &part : parts())
        names << part.name;
    const auto entries = reader.yaml.map(root, names);
    for (const auto &entry : entries) {
        const auto part = std::find_if(parts().begin(), parts().end(), [&entry](const Part &each) {
            return each.name == YamlReader::scalar(entry.first);
        });
        readPart(reader, *part, entry.second);
    }
}

// As a fault, so that the recording has it.
void makeAbsent(const char *service, Session::Options &options)
{
    options.faults.append({QStringLiteral("service-absent"), {{QStringLiteral("service"), QLatin1String(service)}}});
}

void apply(const BoardConfiguration &board, Session::Options &options)
{
    const auto isAbsent = [&board](const char *part) { return board.source(QLatin1String(part)) == Source::Absent; };
    if (isAbsent("keys") && isAbsent("leds") && isAbsent("screens"))
        makeAbsent("lcdKeyboardEvent", options);
    if (isAbsent("net"))
        makeAbsent("lcdMemoryCacheNetworkPort", options);
    if (isAbsent("usb"))
        makeAbsent("lcdMemoryCacheNodeUSB", options);
    if (isAbsent("tbar"))
        makeAbsent("lcdTBarCalibration", options);
    options.linkDelay = 0;
    if (board.isReal(QStringLiteral("net")))
        options.netPorts = board.net.interfaces.size();
    if (board.isReal(QStringLiteral("usb")))
        options.usbPorts = board.usb.ports.size();
    options.hasCalibrationResults = board.isReal(QStringLiteral("tbar"));
    if (options.hasCalibrationResults) {
        options.tbarType = board.tbar.type;
        options.tbarTolerance = board.tbar.slider.tolerance;
    }
    options.board = board;
}

std::optional<QByteArray> contentOf(const QString &path, DiagnosticCollector &errors)
{
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        errors.add({}, QStringLiteral("not a file"));
    else if (!file.open(QIODevice::ReadOnly))
        errors.add({}, file.errorString());
    else if (file.size() > limits::FileSize)
        errors.add({}, QStringLiteral("larger than %1 bytes").arg(limits::FileSize));
    else
        return file.readAll();
    return std::nullopt;
}

}

std::optional<int> ProfileReader::key(const YamlNode &node)
{
    const auto halKey = node.isScalar() ? names.halKey(YamlReader::scalar(node)) : std::nullopt;
    if (!halKey)
        yaml.errorExpected(node,
                           QStringLiteral("a key, by name or hal key: one of ")
                               + QStringList(names.keys.keys()).join(QStringLiteral(", ")),
                           names.keys.keys());
    return halKey;
}

std::optional<QString> ProfileReader::sysfsName(const YamlNode &node)
{
    const QString name = node.isScalar() ? YamlReader::scalar(node) : QString();
    if (isSysfsName(name))
        return name;
    yaml.errorExpected(node, QStringLiteral("a name in /sys/class, without a slash"));
    return std::nullopt;
}

QString ProfileReader::where(const YamlNode &node) const
{
    const SourceLocation location = node.definition();
    return QStringLiteral("%1:%2:%3").arg(yaml.file()).arg(location.line).arg(location.column);
}

bool readBoardProfile(const QString &path, const QString &stateDirectory, Session::Options &options,
                      QStringList *errors)
{
    DiagnosticCollector found(path);
    const auto data = contentOf(path, found);
    const auto root = data ? parseYaml(*data, found) : std::nullopt;
    BoardConfiguration board;
    board.file = path;
    board.stateDirectory = stateDirectory;
    if (root) {
        YamlReader yaml(found);
        const DeviceNames names = deviceNamesOf(options);
        ProfileReader reader{yaml, names, board};
        readParts(reader, *root);
    }
    *errors = found.lines();
    if (!errors->isEmpty())
        return false;
    apply(board, options);
    return true;
}

}
