#pragma once

#include <QtWidgets/QListView>
#include <QtWidgets/QStyledItemDelegate>

namespace panelhost {

/// A list of lines of the journal in a fixed-width font. A line that is wider than the list is elided; the model gives
/// the whole line as its tool tip.
class LineList : public QListView
{
    Q_OBJECT

public:
    explicit LineList(const QString &name, QAbstractItemModel *model, QWidget *parent = nullptr);
};

/// Paints the lines of a LineList. All of them are as wide as the list.
class LineDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

/// Returns @p text as rich text, because Qt wraps only such tool tips.
QString wrappedToolTip(const QString &text);

}
