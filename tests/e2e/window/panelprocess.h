#pragma once

#include "xserver.h"

#include <QtCore/QFile>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QTemporaryDir>

/// panelhost with its window on an X server. What goes on in it is read from the journal that it writes.
class PanelProcess
{
public:
    explicit PanelProcess(const XServer &xServer) : m_xServer(xServer) {}
    ~PanelProcess();

    /// Starts it with @p arguments and waits until the window is there and has the keyboard.
    bool start(const QStringList &arguments);
    /// Like start(), with a disk of 12 KiB of its own at path("disk") that only the process sees.
    bool startWithSmallDisk(const QStringList &arguments);
    /// Where a test sees a file of that disk.
    QString diskPath(const QString &fileName);
    /// What it has written to the standard error output.
    QByteArray errors();
    QProcess &process() { return m_process; }
    QString path(const QString &fileName) const { return m_directory.filePath(fileName); }
    QByteArray journalBytes() const;

    /// Reads what is new; true if anything was.
    bool poll();
    /// All properties of the LCD as the journal has told them.
    const QJsonObject &screen() const { return m_screen; }
    QString page() const { return m_screen.value(QStringLiteral("page")).toString(); }
    QString caption(const char *side) const { return m_screen.value(QLatin1String(side)).toString(); }
    /// The key whose LED was made to blink last and hasn't been answered; -1 when there is none.
    int blinkingKey() const { return m_blinkingKey; }
    int count(const QString &kind, const QString &name) const;
    /// Returns the number of the operator's actions. A click on a key is one, however long it takes.
    int actionCount() const;
    /// Returns whether the LCD or the keys show the result of the last action.
    bool hasRespondedToLastAction() const;

    QRect place(const QString &control) const;
    void click(const QString &control) const { m_xServer.click(place(control).center()); }
    /// Plugs or unplugs.
    void clickPort(const QString &port) const;
    /// Touches a pixel of the LCD, which has 800x480 pixels and is shown at any scale.
    void touch(const QPoint &lcdPoint) const;

private:
    bool run(const QString &program, const QStringList &arguments);
    void take(const QJsonObject &entry);

    const XServer &m_xServer;
    QTemporaryDir m_directory;
    QProcess m_process;
    QByteArray m_errors;
    QJsonObject m_layout;
    qint64 m_read = 0;
    QList<QJsonObject> m_entries;
    QJsonObject m_screen;
    int m_blinkingKey = -1;
};
