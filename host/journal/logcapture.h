#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

class Journal;

/// Adds the component's log messages to the journal, with level and text, as long as the object exists. Parts that
/// differ from one run or machine to another are replaced: addresses by "0x…", the share directory by "$SHARE", the
/// share directory next to the program by "$DEFAULT_SHARE" (if that is a different one), and the current directory by
/// "$CWD". Messages of Qt and of panelhost and fatal messages go to the previous message handler. Only one object can
/// exist at a time.
class LogCapture
{
public:
    LogCapture(Journal &journal, const QString &share);
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QString normalized(const QString &line) const;
    void add(QtMsgType type, const QString &category, const QString &text);

private:
    Journal &m_journal;
    QStringList m_shareForms;
    QStringList m_defaultShareForms;
    QString m_currentDirectory;
};

}
