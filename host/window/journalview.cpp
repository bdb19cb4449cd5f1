#include "window/journalview.h"

#include "panel/theme.h"
#include "window/elidedlabel.h"
#include "window/journalmodel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QToolBar>

namespace panelhost {

namespace {

struct KindColor
{
    Journal::Kind kind;
    QRgb color;
};

const KindColor Kinds[] = {
    {Journal::Kind::Call, theme::TextColor}, {Journal::Kind::Event, theme::Amber},
    {Journal::Kind::Signal, theme::Blue},    {Journal::Kind::Log, theme::DimTextColor},
    {Journal::Kind::Screen, theme::Green},   {Journal::Kind::Action, theme::Accent},
};

QRgb colorOf(int kind)
{
    for (const KindColor &entry : Kinds)
        if (int(entry.kind) == kind)
            return entry.color;
    return theme::TextColor;
}

class LineDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->palette.setColor(QPalette::Text, QColor(colorOf(index.data(JournalModel::KindRole).toInt())));
    }
};

}

JournalView::JournalView(const Journal &journal, QWidget *parent)
    : QDockWidget(QStringLiteral("Journal"), parent), m_model(new JournalModel(journal, this)), m_text(new QLineEdit),
      m_count(new ElidedLabel(QStringLiteral("journal-count"))), m_forgotten(new QLabel), m_list(makeList())
{
    setObjectName(QStringLiteral("journal"));
    theme::applyTo(this);
    m_text->setObjectName(QStringLiteral("journal-text"));
    m_text->setPlaceholderText(QStringLiteral("Filter"));
    m_text->setClearButtonEnabled(true);
    m_text->setFocusPolicy(Qt::ClickFocus);
    m_text->setMinimumWidth(120);
    connect(m_text, &QLineEdit::textChanged, m_model, &JournalModel::setText);
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
    column->addWidget(makeKinds());
    column->addLayout(row);
    column->addWidget(m_forgotten);
    column->addWidget(m_list);
    setWidget(content);
}

QListView *JournalView::makeList()
{
    auto *list = new QListView;
    list->setObjectName(QStringLiteral("journal-lines"));
    list->setModel(m_model);
    list->setItemDelegate(new LineDelegate(list));
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setFocusPolicy(Qt::NoFocus);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(11);
    list->setFont(font);
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
        button->setFocusPolicy(Qt::NoFocus);
    }
    return bar;
}

void JournalView::updateKinds()
{
    QSet<int> kinds;
    for (const QAction *action : qAsConst(m_kinds))
        if (action->isChecked())
            kinds.insert(action->data().toInt());
    m_model->setKinds(kinds);
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
    m_count->setText(QStringLiteral("%1 of %2").arg(m_model->rowCount()).arg(m_model->everSeen()));
    const qint64 forgotten = m_model->forgotten();
    m_forgotten->setVisible(forgotten > 0);
    if (forgotten == 0)
        return;
    m_forgotten->setText(
        m_file.isEmpty()
            ? QStringLiteral("The oldest %1 lines were discarded; use --journal FILE to keep all lines.").arg(forgotten)
            : QStringLiteral("The oldest %1 lines are only in %2.").arg(QString::number(forgotten), m_file));
}

}
