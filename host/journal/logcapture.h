#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

class Journal;

/// While it lives, the lines that the component writes to Qt's logger go into the journal, with level and text. What
/// differs from one run or machine to the next is written by name: addresses as "0x…", the share directory as
/// "$SHARE", the one beside the program as "$DEFAULT_SHARE" where it is another, the current one as "$CWD". Lines of Qt
/// itself, of panelhost's own category, and fatal ones go on to where they went before. One at a time.
class LogCapture
{
public:
    LogCapture(Journal &journal, const QString &share);
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QString normalised(const QString &line) const;
    void add(QtMsgType type, const QString &category, const QString &text);

private:
    Journal &m_journal;
    QStringList m_shareForms;
    QStringList m_defaultShareForms;
    QString m_currentDirectory;
};

}
