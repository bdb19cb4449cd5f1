#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace LCD::FactoryModeImpl {

/// Paints a row of the menu: the title at the left, ">" at the right, on a bar of the highlight colour while the row
/// is selected. Colour of the text and height come from the row's data and the style.
///
/// Threads: belongs to the GUI thread.
class FactoryModeItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    ~FactoryModeItemDelegate() override = default;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

}
