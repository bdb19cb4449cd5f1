#include "window/filemenu.h"

#include "output/outputcheck.h"
#include "output/replacefile.h"
#include "panel/theme.h"
#include "reports/htmlreport.h"
#include "session/session.h"
#include "window/sessionreport.h"

#include <QtCore/QBuffer>
#include <QtWidgets/QFileDialog>

namespace panelhost {

static QByteArray pngOf(QWidget &widget)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    widget.grab().save(&buffer, "PNG");
    return png;
}

FileMenu::FileMenu(Session &session, QWidget *window) : QMenu(tr("&File"), window), m_session(session)
{
    theme::applyTo(this);
    addSave(
        QStringLiteral("save-journal"), tr("Save &journal…"), QStringLiteral("journal.jsonl"),
        [this] { return m_session.journal().toJsonLines(); }, QKeySequence(QStringLiteral("Ctrl+S")));
    addSave(QStringLiteral("save-report"), tr("Save &report of this session…"), QStringLiteral("report.html"),
            [this] { return htmlReport({sessionResult(m_session)}); });
    addSeparator();
    addSave(
        QStringLiteral("save-window"), tr("Save &picture of the window…"), QStringLiteral("window.png"),
        [window] { return pngOf(*window); }, QKeySequence(QStringLiteral("Ctrl+Shift+S")));
    addSave(QStringLiteral("save-lcd"), tr("Save picture of the &LCD…"), QStringLiteral("lcd.png"),
            [this] { return pngOf(*m_session.lcd()); });
    addSeparator();
    addAction(tr("&Quit"), window, &QWidget::close, QKeySequence(QStringLiteral("Ctrl+Q")));
}

void FileMenu::addSave(const QString &name, const QString &text, const QString &fileName, const Content &content,
                       const QKeySequence &shortcut)
{
    const auto ask = [this, text, fileName, content] {
        auto *dialog = new QFileDialog(parentWidget(), text.chopped(1).remove(QLatin1Char('&')), fileName);
        dialog->setObjectName(QStringLiteral("save-dialog"));
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setOption(QFileDialog::DontUseNativeDialog);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->selectFile(fileName);
        theme::applyTo(dialog);
        connect(dialog, &QFileDialog::fileSelected, this,
                [this, content](const QString &path) { save(path, content); });
        dialog->open();
    };
    addAction(text, this, ask, shortcut)->setObjectName(name);
}

// A file that the session reads isn't overwritten.
void FileMenu::save(const QString &path, const Content &content)
{
    QString error;
    const bool isSaved = OutputCheck(inputFiles(m_session.options())).addOutput(tr("The file"), path, true, &error)
        && replaceFile(path, content(), &error);
    Q_EMIT messageChanged(isSaved ? tr("Saved: %1").arg(path) : error);
}

}
