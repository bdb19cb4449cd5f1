#include "panelprocess.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtTest/QtTest>

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

static bool isAction(const QJsonObject &entry)
{
    return entry.value(QStringLiteral("kind")).toString() == QLatin1String("action");
}

static bool startsToBlink(const QJsonObject &keyLed)
{
    const QJsonObject data = keyLed.value(QStringLiteral("data")).toObject();
    return data.value(QStringLiteral("mode")).toInt() == 1;
}

// A click that takes longer than a press is journaled as "hold" and "release", and nothing responds to the second.
static bool getsResponse(const QJsonObject &entry)
{
    return isAction(entry) && entry.value(QStringLiteral("name")).toString() != QLatin1String("release");
}

// The LCD shows the result of an action only with its last entry. A key that starts to blink is the result only if a
// key was pressed: at the start of the key walk, the screen changes after that.
static bool isResponse(const QJsonObject &entry, const QJsonObject &action)
{
    const QString name = entry.value(QStringLiteral("name")).toString();
    const bool isNavigation = action.value(QStringLiteral("name")).toString() == QLatin1String("navigate");
    if (name == QLatin1String("lcdKeyboardEvent.setKeyLed"))
        return !isNavigation && startsToBlink(entry);
    return name == QLatin1String("screen") || (isNavigation && name == QLatin1String("testPatternDisplay"));
}

PanelProcess::~PanelProcess()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool PanelProcess::start(const QStringList &arguments)
{
    return run(QStringLiteral(LCD_BUILD_DIR "/bin/panelhost"), arguments);
}

bool PanelProcess::startWithSmallDisk(const QStringList &arguments)
{
    const QString script = QStringLiteral("mkdir \"$0\" && mount -t tmpfs -o size=4k tmpfs \"$0\" && "
                                          "exec " LCD_BUILD_DIR "/bin/panelhost \"$@\"");
    return run(QStringLiteral("unshare"),
               QStringList{QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"), script,
                           path(QStringLiteral("disk"))}
                   + arguments);
}

QString PanelProcess::diskPath(const QString &fileName)
{
    return QStringLiteral("/proc/%1/root%2/%3").arg(m_process.processId()).arg(path(QStringLiteral("disk")), fileName);
}

QByteArray PanelProcess::errors()
{
    m_errors += m_process.readAllStandardError();
    return m_errors;
}

bool PanelProcess::run(const QString &program, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_xServer.display());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    m_process.start(program,
                    arguments
                        + QStringList{QStringLiteral("--journal"), path(QStringLiteral("journal.jsonl")),
                                      QStringLiteral("--layout"), path(QStringLiteral("layout.json"))});
    const QString layout = path(QStringLiteral("layout.json"));
    const bool isThere = QTest::qWaitFor([&] { return QFile::exists(layout); }, 60000);
    if (!isThere) {
        qWarning("%s", errors().constData());
        return false;
    }
    m_layout = QJsonDocument::fromJson(contentOf(layout)).object();
    m_xServer.xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                       QStringLiteral("--name"), QStringLiteral("^panelhost$"), QStringLiteral("windowfocus"),
                       QStringLiteral("--sync")});
    return QTest::qWaitFor([this] { return poll() && !page().isEmpty(); }, 60000);
}

QByteArray PanelProcess::journalBytes() const
{
    return contentOf(path(QStringLiteral("journal.jsonl")));
}

bool PanelProcess::poll()
{
    QFile file(path(QStringLiteral("journal.jsonl")));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(m_read))
        return false;
    QByteArray fresh = file.readAll();
    fresh.truncate(fresh.lastIndexOf('\n') + 1);
    m_read += fresh.size();
    const auto lines = fresh.split('\n');
    for (const QByteArray &line : lines)
        if (!line.isEmpty())
            take(QJsonDocument::fromJson(line).object());
    return !fresh.isEmpty();
}

void PanelProcess::take(const QJsonObject &entry)
{
    m_entries.append(entry);
    const QString name = entry.value(QStringLiteral("name")).toString();
    const QJsonObject data = entry.value(QStringLiteral("data")).toObject();
    if (name == QLatin1String("screen"))
        for (auto it = data.begin(); it != data.end(); ++it)
            m_screen.insert(it.key(), it.value());
    if (name == QLatin1String("lcdKeyboardEvent.setKeyLed"))
        m_blinkingKey = startsToBlink(entry) ? data.value(QStringLiteral("halKey")).toInt() : -1;
}

int PanelProcess::count(const QString &kind, const QString &name) const
{
    return int(std::count_if(m_entries.cbegin(), m_entries.cend(), [&](const QJsonObject &entry) {
        return entry.value(QStringLiteral("kind")).toString() == kind
            && entry.value(QStringLiteral("name")).toString() == name;
    }));
}

int PanelProcess::actionCount() const
{
    return int(std::count_if(m_entries.cbegin(), m_entries.cend(), getsResponse));
}

bool PanelProcess::hasRespondedToLastAction() const
{
    const auto action = std::find_if(m_entries.crbegin(), m_entries.crend(), getsResponse);
    if (action == m_entries.crend())
        return false;
    return std::any_of(m_entries.crbegin(), action,
                       [&](const QJsonObject &entry) { return isResponse(entry, *action); });
}

QRect PanelProcess::place(const QString &control) const
{
    const QJsonArray rect = m_layout.value(control).toArray();
    if (rect.size() != 4)
        QTest::qFail(qPrintable(QStringLiteral("The window has no control \"%1\".").arg(control)), __FILE__, __LINE__);
    return {rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt()};
}

void PanelProcess::clickPort(const QString &port) const
{
    const QRect widget = place(port);
    m_xServer.click({widget.center().x(), widget.top() + widget.height() / 3});
}

void PanelProcess::touch(const QPoint &lcdPoint) const
{
    const QRect lcd = place(QStringLiteral("lcd-overlay"));
    m_xServer.click(lcd.topLeft() + QPoint(lcdPoint.x() * lcd.width() / 800, lcdPoint.y() * lcd.height() / 480));
}
