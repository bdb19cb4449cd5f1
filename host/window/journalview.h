#pragma once

#include <QtWidgets/QDockWidget>

class QAction;
class QLabel;
class QBoxLayout;
class QLineEdit;
class QListView;
class QToolBar;
class QTreeWidget;

#include <functional>

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
    /// Gives the text filter the focus.
    void focusFilter();
    /// Hides all lines up to now.
    void clear();
    /// Sets the name of the file that gets all lines, for the note about lines that are no longer shown.
    void setFile(const QString &fileName) { m_file = fileName; }

Q_SIGNALS:
    /// Emitted when lines were exported, or couldn't be: @p text is a sentence.
    void messageChanged(const QString &text);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setTexts();
    QToolBar *makeKinds();
    QWidget *makeActions();
    QTreeWidget *makeDetail();
    void updateKinds();
    void changeFilter(const std::function<void()> &change);
    void showDetail(const QModelIndex &index);
    void copySelection();
    void exportLines();
    QByteArray shownLines() const;
    void updateCounts();
    QListView *makeList();

    JournalModel *m_model;
    QList<QAction *> m_kinds;
    QAction *m_copy = nullptr;
    QAction *m_clear = nullptr;
    QAction *m_export = nullptr;
    QLineEdit *m_text;
    ElidedLabel *m_count;
    QLabel *m_forgotten;
    QBoxLayout *m_head; ///< what is above the list
    QString m_file;
    QListView *m_list;
    QTreeWidget *m_detail;
    const Journal &m_journal;
};

}
