#pragma once

#include <QtWidgets/QMenu>

class QMenuBar;

namespace panelhost {

class Session;

/// The menu with the keyboard shortcuts, the manual and the versions.
class HelpMenu : public QMenu
{
    Q_OBJECT

public:
    /// @p menus has the menus whose shortcuts are listed.
    HelpMenu(const Session &session, const QMenuBar *menus, QWidget *parent);

private:
    void showPage(const QString &name, const QString &title, const QString &markdown);
    QString shortcuts() const;
    QString versions() const;

    const Session &m_session;
    const QMenuBar *m_menus;
};

}
