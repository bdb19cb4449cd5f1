#pragma once

#include <QtWidgets/QMenu>

#include <functional>

namespace panelhost {

class Session;

/// The menu that saves what happened in the session: the journal, a report, and pictures.
class FileMenu : public QMenu
{
    Q_OBJECT

public:
    FileMenu(Session &session, QWidget *window);

Q_SIGNALS:
    /// Emitted when a file was saved, or couldn't be: @p text is a sentence.
    void messageChanged(const QString &text);

private:
    using Content = std::function<QByteArray()>;

    void addSave(const QString &name, const QString &text, const QString &fileName, const Content &content,
                 const QKeySequence &shortcut = {});
    void save(const QString &path, const Content &content);

    Session &m_session;
};

}
