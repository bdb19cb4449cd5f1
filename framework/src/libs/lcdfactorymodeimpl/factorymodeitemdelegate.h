#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace LCD::FactoryModeImpl {

/// Paints a row of the menu: the title at the left and ">" at the right, with the highlight color behind the selected
/// row. The row's data determine the color of the text, which is white by default. The row is 10 pixels higher than the
/// style asks for. Implemented in factorymodewidget.cpp.
///
/// Threads: use it on the GUI thread.
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
