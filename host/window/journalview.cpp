#include "window/journalview.h"

#include "output/replacefile.h"
#include "panel/linelist.h"
#include "panel/theme.h"
#include "panel/translated.h"
#include "panel/windowtheme.h"
#include "time/timetext.h"
#include "window/elidedlabel.h"
#include "window/filedialog.h"
#include "window/journalmodel.h"
#include "window/placeholder.h"

#include <QtCore/QJsonArray>
#include <QtGui/QClipboard>
#include <QtGui/QPainter>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QTreeWidget>

#include <algorithm>

namespace panelhost {

namespace {

struct KindColor
{
    Journal::Kind kind;
    QRgb theme::Colors::*color;
};

const KindColor Kinds[] = {
    {Journal::Kind::Call, &theme::Colors::text},    {Journal::Kind::Event, &theme::Colors::amber},
    {Journal::Kind::Signal, &theme::Colors::blue},  {Journal::Kind::Log, &theme::Colors::dimText},
    {Journal::Kind::Screen, &theme::Colors::green}, {Journal::Kind::Action, &theme::Colors::accent},
};

QRgb colorOf(int kind)
{
    for (const KindColor &entry : Kinds)
        if (int(entry.kind) == kind)
            return theme::colors().*entry.color;
    return theme::colors().text;
}

class KindDelegate : public LineDelegate
{
public:
    using LineDelegate::LineDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        LineDelegate::initStyleOption(option, index);
        option->palette.setColor(QPalette::Text, QColor(colorOf(index.data(JournalModel::KindRole).toInt())));
    }
};

}

JournalView::JournalView(const Journal &journal, QWidget *parent)
    : QDockWidget(parent), m_model(new JournalModel(journal, this)), m_text(new QLineEdit),
      m_count(new ElidedLabel(QStringLiteral("journal-count"))), m_forgotten(new QLabel),
      m_head(new QBoxLayout(QBoxLayout::TopToBottom)), m_list(makeList()), m_detail(makeDetail()), m_journal(journal)
{
    setObjectName(QStringLiteral("journal"));
    theme::applyTo(this);
    m_text->setObjectName(QStringLiteral("journal-text"));
    dimPlaceholder(*m_text);
    m_text->setClearButtonEnabled(true);
    m_text->setFocusPolicy(Qt::StrongFocus);
    m_text->setMinimumWidth(8 * theme::Grid);
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString &text) { changeFilter([this, text] { m_model->setText(text); }); });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::Grid);
    row->addWidget(m_text, 1);
    row->addWidget(m_count);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("journal-content"));
    content->setAttribute(Qt::WA_StyledBackground);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(theme::Grid, theme::Grid, theme::Grid, theme::Grid);
    column->setSpacing(theme::Grid);
    m_forgotten->setObjectName(QStringLiteral("journal-forgotten"));
    m_forgotten->setWordWrap(true);
    m_forgotten->hide();
    m_head->setSpacing(theme::Grid);
    m_head->addWidget(makeKinds());
    m_head->addLayout(row, 1);
    m_head->addWidget(makeActions());
    column->addLayout(m_head);
    column->addWidget(m_forgotten);
    auto *split = new QSplitter(Qt::Vertical);
    split->addWidget(m_list);
    split->addWidget(m_detail);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    column->addWidget(split, 1);
    setWidget(content);
    keepTranslated(this, [this] { setTexts(); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &JournalView::showDetail);
}

// A dock below the panel is wide and low: everything but the lines is in one row.
void JournalView::resizeEvent(QResizeEvent *event)
{
    constexpr int EnoughForOneRow = 100 * theme::Grid;
    m_head->setDirection(width() >= EnoughForOneRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QDockWidget::resizeEvent(event);
}

void JournalView::setTexts()
{
    setWindowTitle(tr("Journal"));
    m_text->setPlaceholderText(tr("Filter (Ctrl+F)"));
    m_list->setAccessibleName(tr("Lines of the journal"));
    m_detail->setHeaderLabels({tr("Name"), tr("Value")});
    m_detail->setAccessibleName(tr("Data of the journal line"));
    m_copy->setText(tr("Copy"));
    m_copy->setToolTip(tr("Copies the selected lines (Ctrl+C)"));
    m_clear->setText(tr("Clear"));
    m_clear->setToolTip(tr("Hides all lines up to now; the journal keeps them"));
    m_export->setText(tr("Export…"));
    m_export->setToolTip(tr("Writes the lines that are shown to a file"));
    updateCounts();
}

QListView *JournalView::makeList()
{
    auto *list = new LineList(QStringLiteral("journal-lines"), m_model);
    list->setItemDelegate(new KindDelegate(list));
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setFocusPolicy(Qt::StrongFocus);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    return list;
}

// A tool bar moves what doesn't fit into a menu.
QToolBar *JournalView::makeKinds()
{
    auto *bar = new QToolBar;
    bar->setObjectName(QStringLiteral("journal-kinds"));
    for (const KindColor &kind : Kinds) {
        auto *action = new QAction(Journal::kindName(kind.kind), this);
        action->setCheckable(true);
        action->setChecked(true);
        action->setData(int(kind.kind));
        connect(action, &QAction::toggled, this, &JournalView::updateKinds);
        m_kinds.append(action);
        bar->addAction(action);
        QWidget *button = bar->widgetForAction(action);
        button->setObjectName(QStringLiteral("journal-") + Journal::kindName(kind.kind));
        button->setFocusPolicy(Qt::TabFocus);
    }
    return bar;
}

QTreeWidget *JournalView::makeDetail()
{
    auto *tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("journal-detail"));
    tree->setColumnCount(2);
    tree->hide();
    return tree;
}

QWidget *JournalView::makeActions()
{
    auto *bar = new QToolBar;
    bar->setObjectName(QStringLiteral("journal-actions"));
    const auto add = [this, bar](const char *name, const QKeySequence &keys, void (JournalView::*slot)()) {
        QAction *action = bar->addAction(QString(), this, slot);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        return action;
    };
    m_copy = add("journal-copy", QKeySequence::Copy, &JournalView::copySelection);
    m_clear = add("journal-clear", {}, &JournalView::clear);
    m_export = add("journal-export", {}, &JournalView::exportLines);
    return bar;
}

void JournalView::focusFilter()
{
    show();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void JournalView::clear()
{
    m_model->clear();
    updateCounts();
}

void JournalView::copySelection()
{
    QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    std::sort(selected.begin(), selected.end());
    QStringList lines;
    for (const QModelIndex &index : qAsConst(selected))
        lines << index.data(JournalModel::TextRole).toString();
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

QByteArray JournalView::shownLines() const
{
    QByteArray lines;
    for (int row = 0; row < m_model->rowCount(); ++row)
        lines += m_model->index(row).data(JournalModel::TextRole).toString().toUtf8() + '\n';
    return lines;
}

void JournalView::exportLines()
{
    QFileDialog *dialog = makeFileDialog(window(), tr("Export the journal"), QStringLiteral("export-dialog"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(QStringLiteral("journal.txt"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        QString error;
        const bool isSaved = replaceFile(path, shownLines(), &error);
        Q_EMIT messageChanged(isSaved ? tr("Saved: %1").arg(path) : error);
    });
    dialog->open();
}

namespace {

// Objects and lists get children; other values are shown as they are.
void addValue(QTreeWidgetItem *item, const QJsonValue &value)
{
    const auto addChild = [item](const QString &name, const QJsonValue &child) {
        addValue(new QTreeWidgetItem(item, QStringList(name)), child);
    };
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member)
            addChild(member.key(), member.value());
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (int index = 0; index < array.size(); ++index)
            addChild(QString::number(index), array.at(index));
    } else {
        item->setText(1, value.toVariant().toString());
    }
}

}

void JournalView::showDetail(const QModelIndex &index)
{
    m_detail->clear();
    const qint64 sequence = index.data(JournalModel::SequenceRole).toLongLong();
    const auto entries = sequence > 0 ? m_journal.entriesFrom(sequence, 1) : QVector<Journal::Entry>();
    m_detail->setVisible(!entries.isEmpty());
    if (entries.isEmpty())
        return;
    const Journal::Entry &entry = entries.first();
    const auto add = [this](const QString &name, const QString &value) {
        return new QTreeWidgetItem(m_detail, {name, value});
    };
    add(tr("Number"), QString::number(entry.sequence));
    add(tr("Time"), timeText(entry.at));
    add(tr("Thread"), entry.thread);
    add(tr("Kind"), Journal::kindName(entry.kind));
    addValue(add(entry.name, {}), entry.data);
    m_detail->expandAll();
    m_detail->resizeColumnToContents(0);
}

void JournalView::updateKinds()
{
    QSet<int> kinds;
    for (const QAction *action : qAsConst(m_kinds))
        if (action->isChecked())
            kinds.insert(action->data().toInt());
    changeFilter([this, kinds] { m_model->setKinds(kinds); });
}

// The line at the top stays there, or the next one that is still shown. The end stays the end.
void JournalView::changeFilter(const std::function<void()> &change)
{
    const QScrollBar *bar = m_list->verticalScrollBar();
    const bool isAtEnd = bar->value() >= bar->maximum();
    const qint64 current = m_list->currentIndex().data(JournalModel::SequenceRole).toLongLong();
    const qint64 top = m_list->indexAt({1, 1}).data(JournalModel::SequenceRole).toLongLong();
    change();
    const int row = m_model->rowFrom(current);
    if (current > 0 && m_model->index(row).data(JournalModel::SequenceRole).toLongLong() == current)
        m_list->setCurrentIndex(m_model->index(row));
    if (isAtEnd)
        m_list->scrollToBottom();
    else
        m_list->scrollTo(m_model->index(qMin(m_model->rowFrom(top), m_model->rowCount() - 1)),
                         QAbstractItemView::PositionAtTop);
    updateCounts();
}

void JournalView::poll()
{
    if (!isVisible())
        return;
    const QScrollBar *bar = m_list->verticalScrollBar();
    const bool isAtEnd = bar->value() >= bar->maximum();
    m_model->poll();
    if (isAtEnd)
        m_list->scrollToBottom();
    updateCounts();
}

void JournalView::updateCounts()
{
    m_count->setText(tr("%1 of %2").arg(m_model->rowCount()).arg(m_model->everSeen()));
    const qint64 forgotten = m_model->forgotten();
    m_forgotten->setVisible(forgotten > 0);
    if (forgotten == 0)
        return;
    m_forgotten->setText(
        m_file.isEmpty()
            ? tr("The oldest %1 lines were discarded; use --journal FILE to keep all lines.").arg(forgotten)
            : tr("The oldest %1 lines are only in %2.").arg(QString::number(forgotten), m_file));
}

}
