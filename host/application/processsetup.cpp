#include "application/processsetup.h"

#include "session/loadprobe.h"
#include "time/virtualclock.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>

#include <csignal>

namespace panelhost {

namespace {

/// The buttons of dialogs have no icons: those of Qt are dark, and can't be seen in the dark theme.
class ApplicationStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override
    {
        const bool isIcons = hint == SH_DialogButtonBox_ButtonsHaveIcons;
        return isIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

QtMessageHandler defaultHandler = nullptr;
bool hasDarkSystem = false;

// Processes outside of a login session have no such directory, and panelhost doesn't use it.
void dropRuntimeDirectoryRemark(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        defaultHandler(type, context, text);
}

}

// Writing beyond the file size limit is an error with a reason instead of a signal.
void prepareConsoleProcess()
{
    std::signal(SIGXFSZ, SIG_IGN);
    defaultHandler = qInstallMessageHandler(dropRuntimeDirectoryRemark);
}

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("panelhost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PANELHOST_VERSION));
}

void prepareProcess(bool needsDisplay)
{
    prepareConsoleProcess();
    if (!needsDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    VirtualClock::install();
    runAsProbe();
}

bool isSystemDark()
{
    return hasDarkSystem;
}

// The same style on every desktop.
void prepareApplication()
{
    hasDarkSystem = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    QApplication::setStyle(new ApplicationStyle(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    nameApplication();
    // A blinking text cursor and animations would run in virtual time.
    QApplication::setCursorFlashTime(0);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    QApplication::setEffectEnabled(Qt::UI_AnimateTooltip, false);
}

}
