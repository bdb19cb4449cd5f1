#pragma once

#include <QtCore/QVariantMap>

class QWidget;

namespace panelhost {

class Journal;

/// Adds the changes of the LCD's content to the journal. GUI thread.
class ScreenLogger
{
public:
    ScreenLogger(Journal &journal, QWidget &lcd) : m_journal(journal), m_lcd(lcd) {}

    /// Adds an entry with the keys of readScreen() whose value has changed since the last call, and null for those that
    /// are gone. Adds nothing if there is no change.
    void logChanges();

private:
    Journal &m_journal;
    QWidget &m_lcd;
    QVariantMap m_last;
};

}
