#pragma once

#include <QtWidgets/QDockWidget>

class QAction;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListView;

namespace panelhost {

class Journal;
class JournalModel;

/// The live journal: its lines, a box for each kind and a text to look for. Follows the end while it shows the end.
class JournalView : public QDockWidget
{
    Q_OBJECT

public:
    JournalView(const Journal &journal, QWidget *parent);

    /// Takes in what is new; costs little when hidden.
    void poll();
    JournalModel &model() { return *m_model; }
    /// Names the file that gets all lines, for a remark on those that are no longer shown.
    void setFile(const QString &fileName) { m_file = fileName; }

private:
    void addKinds(QHBoxLayout *row);
    void updateKinds();
    void updateCounts();
    QListView *makeList();

    JournalModel *m_model;
    QList<QAction *> m_kinds;
    QLineEdit *m_text;
    QLabel *m_count;
    QLabel *m_forgotten;
    QString m_file;
    QListView *m_list;
};

}
