#include "journal/logcapture.h"

#include "journal/journal.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <atomic>
#include <cstring>

namespace panelhost {

namespace {

std::atomic<LogCapture *> activeCapture = nullptr;
QtMessageHandler previousHandler = nullptr;

QString levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    case QtCriticalMsg:
        return QStringLiteral("critical");
    case QtFatalMsg:
        break;
    }
    return QStringLiteral("fatal");
}

// Returns the ways in which messages can contain the directory, the longest first.
QStringList formsOf(const QString &directory)
{
    QStringList forms = {directory, QDir::cleanPath(directory), QDir(directory).canonicalPath()};
    forms.removeAll(QString());
    forms.removeDuplicates();
    std::sort(forms.begin(), forms.end(),
              [](const QString &left, const QString &right) { return left.size() > right.size(); });
    return forms;
}

// Qt's own libraries name no source file in a release build.
bool isOfComponent(QtMsgType type, const QMessageLogContext &context)
{
    return type != QtFatalMsg && context.file && context.category && std::strncmp(context.category, "panelhost", 9) != 0
        && std::strncmp(context.category, "qt.", 3) != 0;
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    LogCapture *capture = activeCapture;
    if (capture && isOfComponent(type, context))
        capture->add(type, QString::fromUtf8(context.category), text);
    else if (previousHandler)
        previousHandler(type, context, text);
}

}

LogCapture::LogCapture(Journal &journal, const QString &share)
    : m_journal(journal), m_shareForms(formsOf(share)),
      m_defaultShareForms(formsOf(QCoreApplication::applicationDirPath() + QStringLiteral("/../share"))),
      m_currentDirectory(QDir::currentPath())
{
    activeCapture = this;
    previousHandler = qInstallMessageHandler(handle);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(previousHandler);
    activeCapture = nullptr;
}

QString LogCapture::normalized(const QString &line) const
{
    static const QRegularExpression address(QStringLiteral("\\b0x[0-9a-fA-F]+"));
    QString text = line;
    for (const QString &form : m_shareForms)
        text.replace(form, QStringLiteral("$SHARE"));
    for (const QString &form : m_defaultShareForms)
        text.replace(form, QStringLiteral("$DEFAULT_SHARE"));
    if (m_currentDirectory.size() > 1)
        text.replace(m_currentDirectory, QStringLiteral("$CWD"));
    return text.replace(address, QStringLiteral("0x…"));
}

void LogCapture::add(QtMsgType type, const QString &category, const QString &text)
{
    m_journal.add(Journal::Kind::Log, category,
                  {{QStringLiteral("level"), levelName(type)}, {QStringLiteral("text"), normalized(text)}});
}

}
