#include "application/prepare.h"

#include "session/loadprobe.h"
#include "time/virtualclock.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>

#include <csignal>

namespace panelhost {

namespace {

QtMessageHandler defaultHandler = nullptr;

// A process without a session of its own has no such directory, and panelhost keeps nothing there.
void dropRuntimeDirectoryRemark(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        defaultHandler(type, context, text);
}

}

void prepareProcess(bool needsDisplay)
{
    // A file that may not grow is an error of a write, which is reported with its reason.
    std::signal(SIGXFSZ, SIG_IGN);
    if (!needsDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    defaultHandler = qInstallMessageHandler(dropRuntimeDirectoryRemark);
    VirtualClock::install();
    runAsProbe();
}

// The same look on every desktop.
void prepareApplication()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setApplicationName(QStringLiteral("panelhost"));
    QApplication::setApplicationVersion(QStringLiteral(PANELHOST_VERSION));
    // Blinking of a text cursor or of an animation has no place in virtual time.
    QApplication::setCursorFlashTime(0);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    QApplication::setEffectEnabled(Qt::UI_AnimateTooltip, false);
}

}
