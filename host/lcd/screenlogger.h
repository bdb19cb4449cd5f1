#pragma once

#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QVariantMap>
#include <QtWidgets/QWidget>

namespace panelhost {

class Journal;

/// Adds the changes of the LCD's content to the journal. GUI thread.
class ScreenLogger final : public QObject
{
public:
    ScreenLogger(Journal &journal, QWidget &lcd) : m_journal(journal), m_lcd(lcd) {}

    /// Adds an entry with the keys of readScreen() whose value has changed since the last call, and null for those that
    /// are gone. Adds nothing if there is no change.
    void logChanges();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QVariantMap changesOfScreen();
    QVariantMap changesOfFrame();
    void watch(QWidget *frame);

    Journal &m_journal;
    QWidget &m_lcd;
    QVariantMap m_last;
    QPointer<QWidget> m_frame;            ///< of the test page that was visible at the last call
    QSet<QByteArray> m_changedProperties; ///< of this frame, since the last call
};

}
