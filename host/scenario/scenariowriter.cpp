#include "scenario/scenariowriter.h"

#include "output/recordingsignature.h"
#include "session/devicenames.h"
#include "yaml/duration.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

namespace panelhost {

// A directory doesn't depend on where the recording is.
static QByteArray usbStickText(const QString &usbStick)
{
    if (usbStick == Session::temporaryUsbStick)
        return usbStick.toUtf8();
    const QString path = QFileInfo(usbStick).absoluteFilePath().replace(QLatin1Char('\''), QStringLiteral("''"));
    return '\'' + path.toUtf8() + '\'';
}

// A name that reads as a number would be taken for a hal key.
static KeyNames keyNamesOf(const Session::Options &options)
{
    KeyNames names;
    const auto keys = deviceNamesOf(options).keys;
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        bool isNumber = false;
        key.key().toInt(&isNumber);
        if (!isNumber)
            names.insert(key.value(), key.key());
    }
    return names;
}

// With this line an editor completes and checks the recording. The schema is installed with panelhost.
static QByteArray schemaLine()
{
    const QFileInfo schema(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/scenario.schema.json"));
    return schema.exists() ? "# yaml-language-server: $schema=" + schema.canonicalFilePath().toUtf8() + '\n'
                           : QByteArray();
}

ScenarioWriter::ScenarioWriter(const QString &path, Session &session)
    : m_path(path), m_session(session), m_keys(keyNamesOf(session.options()))
{
    m_file.setErrorHandler([this](const QString &error) { Q_EMIT failed(error); });
}

ScenarioWriter::~ScenarioWriter()
{
    close();
}

bool ScenarioWriter::open(LineFile::IfExists ifExists, QString *error)
{
    if (!m_file.open(m_path, ifExists, error))
        return false;
    if (!m_file.append(header())) {
        *error = m_file.error();
        return false;
    }
    m_written = m_beginning ? 0 : m_session.clock().now();
    for (const PerformedAction &performed : m_beginning.value_or(QVector<PerformedAction>()))
        writeStep(performed.action, performed.at);
    connect(&m_session.panelOperator(), &Operator::performed, this, &ScenarioWriter::writeStep);
    return true;
}

void ScenarioWriter::close()
{
    if (!m_file.isOpen())
        return;
    disconnect(&m_session.panelOperator(), nullptr, this, nullptr);
    const auto wait = waitUntil(m_session.clock().now());
    if (!wait.isEmpty())
        m_file.append(wait);
    m_file.close();
}

QByteArray ScenarioWriter::header() const
{
    const auto &options = m_session.options();
    QByteArray text = recordingSignature() + schemaLine() + "device:\n";
    const auto add = [&text](const char *name, const QByteArray &value) {
        text += QByteArray("  ") + name + ": " + value + '\n';
    };
    add("tbar", options.tbarType == TBarType::Fader ? "fader" : "slider");
    add("tbar-tolerance", QByteArray::number(options.tbarTolerance, 'g', QLocale::FloatingPointShortest));
    add("lcd", QByteArray::number(options.lcdSize.width()) + 'x' + QByteArray::number(options.lcdSize.height()));
    add("language", options.language.toUtf8());
    add("net-ports", QByteArray::number(options.netPorts));
    add("usb-ports", QByteArray::number(options.usbPorts));
    add("changed-on-subscribe", options.changedOnSubscribe ? "true" : "false");
    if (!options.startsInFactoryMode)
        add("factory-mode", "false");
    if (options.linkDelay != SimulatedDevice::DefaultLinkDelay)
        add("link-delay", QByteArray::number(options.linkDelay) + "ms");
    if (options.hasCalibrationResults)
        add("calibration", "recorded");
    if (options.usbStick != Session::noUsbStick)
        add("usb-stick", usbStickText(options.usbStick));
    if (!options.faults.isEmpty())
        text += "  faults:\n";
    for (const auto &fault : options.faults)
        text += "    - " + faultText(fault.name, fault.arguments, m_keys).toUtf8() + '\n';
    return text
        + "steps:\n"
          "  - note: recorded\n";
}

// The time and the action are appended together, so that both or none are in the file.
void ScenarioWriter::writeStep(const OperatorAction &action, Milliseconds at)
{
    m_file.append(waitUntil(at) + "  - " + stepText(action, m_keys).toUtf8() + '\n');
}

QByteArray ScenarioWriter::waitUntil(Milliseconds at)
{
    const auto passed = at - m_written;
    m_written = at;
    return passed > 0 ? "  - wait: " + durationText(passed).toUtf8() + '\n' : QByteArray();
}

}
