#include "window/helpmenu.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "session/session.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTextBrowser>

// The macro for resources of a static library must be used outside of any namespace.
static void initHelpResources()
{
    Q_INIT_RESOURCE(help);
}

namespace panelhost {

namespace {

// Without pictures and links to other pages, which aren't there.
QString manual()
{
    initHelpResources();
    QFile file(QStringLiteral(":/help/panelhost.md"));
    QString text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    text.remove(QRegularExpression(QStringLiteral("!\\[[^\\]]*\\]\\([^)]*\\)\\n*")));
    return text.replace(QRegularExpression(QStringLiteral("\\[([^\\]]*)\\]\\([^)]*\\)")), QStringLiteral("\\1"));
}

QString row(const QString &keys, const QString &meaning)
{
    return QStringLiteral("| %1 | %2 |\n").arg(keys, meaning);
}

}

HelpMenu::HelpMenu(const Session &session, const QMenuBar *menus, QWidget *parent)
    : QMenu(parent), m_session(session), m_menus(menus)
{
    theme::applyTo(this);
    QAction *manualAction = addAction(
        QString(), this, [this] { showPage(QStringLiteral("manual"), tr("Manual"), manual()); },
        QKeySequence(Qt::Key_F1));
    QAction *shortcutsAction = addAction(
        QString(), this, [this] { showPage(QStringLiteral("shortcuts"), tr("Keyboard shortcuts"), shortcuts()); });
    QAction *aboutAction =
        addAction(QString(), this, [this] { showPage(QStringLiteral("about"), tr("About panelhost"), versions()); });
    keepTranslated(this, [=] {
        setTitle(tr("&Help"));
        manualAction->setText(tr("&Manual"));
        shortcutsAction->setText(tr("&Keyboard shortcuts"));
        aboutAction->setText(tr("&About panelhost"));
    });
}

void HelpMenu::showPage(const QString &name, const QString &title, const QString &markdown)
{
    auto *dialog = new QDialog(parentWidget());
    dialog->setObjectName(name);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    theme::applyTo(dialog);
    auto *text = new QTextBrowser;
    text->setMarkdown(markdown);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto *column = new QVBoxLayout(dialog);
    column->addWidget(text);
    column->addWidget(buttons);
    dialog->resize(QSize(96 * theme::Grid, 70 * theme::Grid).boundedTo(parentWidget()->window()->size()));
    dialog->open();
}

QString HelpMenu::shortcuts() const
{
    QString text = row(tr("Keys"), tr("Effect")) + QStringLiteral("|---|---|\n");
    const auto menus = m_menus->findChildren<QMenu *>() + parentWidget()->findChildren<QMenu *>();
    QStringList known;
    for (const QMenu *menu : menus) {
        const auto actions = menu->actions();
        for (const QAction *action : actions) {
            const QString keys = action->shortcut().toString(QKeySequence::NativeText);
            if (keys.isEmpty() || known.contains(keys))
                continue;
            known << keys;
            text += row(keys, plainActionText(action->text()));
        }
    }
    return text + row(tr("Arrow keys, Return, Escape"), tr("Move in the page that the LCD shows"))
        + row(tr("Tab, Shift+Tab"), tr("Next or previous control"))
        + row(tr("Space"), tr("Press the control that has the focus; plug or unplug a port"))
        + row(tr("Shift+Space"), tr("Hold a key until the next press; block or unblock a USB port"));
}

QString HelpMenu::versions() const
{
    const mirel::PluginInfo *component = m_session.library().pluginInfo();
    return QStringLiteral("**panelhost %1**\n\n").arg(QCoreApplication::applicationVersion())
        + tr("Component: %1").arg(component ? QString::fromUtf8(component->pluginVersion) : QString())
        + QStringLiteral("\n\n") + tr("Qt: %1").arg(QString::fromLatin1(qVersion())) + QStringLiteral("\n");
}

}
