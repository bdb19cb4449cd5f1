#pragma once

#include <QtCore/QPoint>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

/// An X server of its own, with nothing but what the test starts on it, and the hands of an operator there.
class XServer
{
public:
    ~XServer();
    bool start(const QByteArray &screen);
    QString display() const { return m_display; }

    /// Runs xdotool with @p arguments and gives what it printed; fails the test when it fails.
    QString xdotool(const QStringList &arguments) const;
    void click(const QPoint &at, int button = 1) const;
    void drag(const QPoint &from, const QPoint &to) const;
    void type(const QString &key) const;

private:
    QProcess m_server;
    QString m_display;
};

/// Runs the slots of @p test. Without Xvfb or xdotool it says so and gives 77, which counts as skipped.
int runOnXServer(QObject &test, int argc, char **argv);

QString text(const char *latin1);
