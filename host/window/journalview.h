#pragma once

#include <QtWidgets/QDockWidget>

class QAction;
class QLabel;
class QLineEdit;
class QListView;
class QToolBar;

namespace panelhost {

class ElidedLabel;
class Journal;
class JournalModel;

/// A dock with the lines of the journal, a button for each kind and a text filter. It scrolls with new lines while it
/// shows the end.
class JournalView : public QDockWidget
{
    Q_OBJECT

public:
    JournalView(const Journal &journal, QWidget *parent);

    /// Adds new lines. Costs little while the dock is hidden.
    void poll();
    JournalModel &model() { return *m_model; }
    /// Sets the name of the file that gets all lines, for the note about lines that are no longer shown.
    void setFile(const QString &fileName) { m_file = fileName; }

private:
    QToolBar *makeKinds();
    void updateKinds();
    void updateCounts();
    QListView *makeList();

    JournalModel *m_model;
    QList<QAction *> m_kinds;
    QLineEdit *m_text;
    ElidedLabel *m_count;
    QLabel *m_forgotten;
    QString m_file;
    QListView *m_list;
};

}
