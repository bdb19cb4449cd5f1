#include "window/filemenu.h"

#include "output/outputcheck.h"
#include "output/replacefile.h"
#include "panel/theme.h"
#include "panel/translated.h"
#include "reports/htmlreport.h"
#include "session/session.h"
#include "window/filedialog.h"
#include "window/scenarioopener.h"
#include "window/sessionreport.h"
#include "window/windowsettings.h"

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
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

FileMenu::FileMenu(Session &session, QWidget *window) : QMenu(window), m_session(session)
{
    theme::applyTo(this);
    connect(&session.panelOperator(), &Operator::performed, this,
            [this](const OperatorAction &action, Milliseconds at) {
                m_performed.append({action, at});
            });
    m_record = addAction(QString(), this, &FileMenu::toggleRecording, QKeySequence(QStringLiteral("Ctrl+R")));
    m_record->setObjectName(QStringLiteral("record"));
    addSeparator();
    QAction *journal = addSave(
        QStringLiteral("save-journal"), QStringLiteral("journal.jsonl"),
        [this] { return m_session.journal().toJsonLines(); }, QKeySequence(QStringLiteral("Ctrl+S")));
    QAction *report = addSave(QStringLiteral("save-report"), QStringLiteral("report.html"),
                              [this] { return htmlReport({sessionResult(m_session)}); });
    addSeparator();
    QAction *picture = addSave(
        QStringLiteral("save-window"), QStringLiteral("window.png"), [window] { return pngOf(*window); },
        QKeySequence(QStringLiteral("Ctrl+Shift+S")));
    QAction *lcd =
        addSave(QStringLiteral("save-lcd"), QStringLiteral("lcd.png"), [this] { return pngOf(*m_session.lcd()); });
    addSeparator();
    QAction *quit = addAction(QString(), window, &QWidget::close, QKeySequence(QStringLiteral("Ctrl+Q")));
    keepTranslated(this, [=] {
        setTitle(tr("&File"));
        journal->setText(tr("Save &journal…"));
        report->setText(tr("Save &report of this session…"));
        picture->setText(tr("Save &picture of the window…"));
        lcd->setText(tr("Save picture of the &LCD…"));
        quit->setText(tr("&Quit"));
        updateRecordText();
    });
}

QAction *FileMenu::addSave(const QString &name, const QString &fileName, const Content &content,
                           const QKeySequence &shortcut)
{
    auto *action = new QAction(this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, action, fileName, content] {
        askForFile(action->text(), fileName, [this, content](const QString &path) { save(path, content); });
    });
    addAction(action);
    return action;
}

void FileMenu::updateRecordText()
{
    m_record->setText(m_recording ? tr("Stop &recording") : tr("Start &recording…"));
}

void FileMenu::askForFile(const QString &title, const QString &fileName,
                          const std::function<void(const QString &)> &use)
{
    QFileDialog *dialog = makeFileDialog(parentWidget(), plainActionText(title), QStringLiteral("save-dialog"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(fileName);
    connect(dialog, &QFileDialog::fileSelected, this, use);
    dialog->open();
}

FileMenu::~FileMenu()
{
    if (m_recording)
        WindowSettings().addRecentFile(m_recordingPath);
}

// A file that the session reads isn't overwritten.
bool FileMenu::isFree(const QString &path, QString *error) const
{
    return OutputCheck(inputFiles(m_session.options())).addOutput(tr("The file"), path, true, error);
}

void FileMenu::save(const QString &path, const Content &content)
{
    QString error;
    const bool isSaved = isFree(path, &error) && replaceFile(path, content(), &error);
    Q_EMIT messageChanged(isSaved ? tr("Saved: %1").arg(path) : error);
}

QAction *FileMenu::addFirst(const char *name, const QKeySequence &shortcut)
{
    auto *action = new QAction(this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(shortcut);
    insertAction(m_record, action);
    return action;
}

void FileMenu::setOpener(ScenarioOpener *opener)
{
    m_opener = opener;
    QAction *session = addFirst("new-session", QKeySequence::New);
    QAction *play = addFirst("open-scenario", QKeySequence::Open);
    QAction *timeline = addFirst("open-timeline", QKeySequence(QStringLiteral("Ctrl+Shift+O")));
    connect(session, &QAction::triggered, this, &FileMenu::newSessionTriggered);
    connect(play, &QAction::triggered, opener, &ScenarioOpener::askAndPlay);
    connect(timeline, &QAction::triggered, opener, &ScenarioOpener::askAndShowTimeline);
    m_recent = new QMenu(this);
    m_recent->setObjectName(QStringLiteral("recent-files"));
    m_recent->setToolTipsVisible(true);
    theme::applyTo(m_recent);
    insertMenu(m_record, m_recent);
    insertSeparator(m_record);
    connect(this, &QMenu::aboutToShow, this, &FileMenu::listRecentFiles);
    keepTranslated(this, [=] {
        session->setText(tr("&New session"));
        play->setText(tr("&Open and play a scenario…"));
        timeline->setText(tr("Open a recording in the &timeline…"));
        m_recent->setTitle(tr("Re&cent files"));
    });
}

void FileMenu::listRecentFiles()
{
    if (!m_recent)
        return;
    m_recent->clear();
    const QStringList files = m_opener->recentFiles();
    m_recent->setEnabled(!files.isEmpty());
    for (const QString &path : files) {
        QString name = fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, 50 * theme::Grid);
        QAction *action = m_recent->addAction(name.replace(QLatin1Char('&'), QLatin1String("&&")), m_opener,
                                              [this, path] { m_opener->play(path); });
        action->setData(path);
        action->setToolTip(path);
    }
    m_recent->addSeparator();
    m_recent->addAction(tr("&Clear"), m_opener, &ScenarioOpener::clearRecentFiles)
        ->setObjectName(QStringLiteral("clear-recent-files"));
}

void FileMenu::setCanRecord(bool canRecord)
{
    m_record->setEnabled(canRecord);
}

void FileMenu::toggleRecording()
{
    if (m_recording)
        return stopRecording();
    askForFile(m_record->text(), QStringLiteral("session.yaml"), [this](const QString &path) { startRecording(path); });
}

// The dialog has asked whether an existing file is overwritten.
void FileMenu::startRecording(const QString &path)
{
    QString error;
    auto recording = std::make_unique<ScenarioWriter>(path, m_session);
    recording->setBeginning(m_performed);
    if (!isFree(path, &error) || !recording->open(LineFile::IfExists::Overwrite, &error)) {
        Q_EMIT messageChanged(error);
        return;
    }
    m_recording = std::move(recording);
    const auto end = [this](const QString &reason) {
        stopRecording();
        Q_EMIT messageChanged(reason);
    };
    connect(m_recording.get(), &ScenarioWriter::failed, this, end, Qt::QueuedConnection);
    m_recordingPath = QFileInfo(path).absoluteFilePath();
    updateRecordText();
    Q_EMIT recordingChanged(QFileInfo(path).fileName());
}

void FileMenu::stopRecording()
{
    m_recording.reset();
    WindowSettings().addRecentFile(m_recordingPath);
    updateRecordText();
    Q_EMIT recordingChanged({});
}

}
