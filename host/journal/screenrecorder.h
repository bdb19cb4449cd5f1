#pragma once

#include <QtCore/QVariantMap>

class QWidget;

namespace panelhost {

class Journal;

/// Writes what has changed on the LCD since it last looked: the keys of readScreen() that have another value now,
/// null for those that are gone. GUI thread.
class ScreenRecorder
{
public:
    ScreenRecorder(Journal &journal, QWidget &lcd) : m_journal(journal), m_lcd(lcd) {}

    void recordChanges();

private:
    Journal &m_journal;
    QWidget &m_lcd;
    QVariantMap m_last;
};

}
