#include "xserver.h"

#include <QtCore/QStandardPaths>
#include <QtTest/QtTest>

static QStringList at(const QPoint &point)
{
    return {QString::number(point.x()), QString::number(point.y())};
}

XServer::~XServer()
{
    m_server.terminate();
    m_server.waitForFinished();
}

// Without -noreset the server starts anew whenever its last client leaves, and refuses who comes just then: panelhost
// connects once to see whether it can, and again to stay.
bool XServer::start(const QByteArray &screen)
{
    m_server.setProcessChannelMode(QProcess::SeparateChannels);
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QString::fromLatin1(screen), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                    QStringLiteral("-noreset")});
    while (!m_server.canReadLine() && m_server.waitForReadyRead(20000)) {}
    const QString number = QString::fromLatin1(m_server.readLine()).trimmed();
    m_display = QStringLiteral(":") + number;
    return !number.isEmpty();
}

QString XServer::xdotool(const QStringList &arguments) const
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(20000) || tool.exitCode() != 0)
        QTest::qFail(
            qPrintable(QStringLiteral("xdotool %1: %2")
                           .arg(arguments.join(QLatin1Char(' ')), QString::fromLocal8Bit(tool.readAllStandardError()))),
            __FILE__, __LINE__);
    return QString::fromLocal8Bit(tool.readAllStandardOutput()).trimmed();
}

void XServer::click(const QPoint &point, int button) const
{
    xdotool(QStringList{QStringLiteral("mousemove")} + at(point)
            + QStringList{QStringLiteral("click"), QString::number(button)});
}

void XServer::drag(const QPoint &from, const QPoint &to) const
{
    const QString move = QStringLiteral("mousemove");
    const QString one = QStringLiteral("1");
    xdotool(QStringList{move} + at(from) + QStringList{QStringLiteral("mousedown"), one, move} + at((from + to) / 2)
            + QStringList{move} + at(to) + QStringList{QStringLiteral("mouseup"), one});
}

void XServer::type(const QString &key) const
{
    xdotool({QStringLiteral("key"), key});
}

static QStringList missingPrograms()
{
    QStringList missing;
    for (const char *program : {"Xvfb", "xdotool"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
            missing << QString::fromLatin1(program);
    return missing;
}

int runOnXServer(QObject &test, int argc, char **argv)
{
    const QStringList missing = missingPrograms();
    if (!missing.isEmpty()) {
        qWarning("Skipped: %s isn't installed (tools/setup test).", qPrintable(missing.join(QStringLiteral(", "))));
        return 77;
    }
    QCoreApplication application(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}
