#include "panel/linelist.h"

namespace panelhost {

LineList::LineList(const QString &name, QAbstractItemModel *model, QWidget *parent) : QListView(parent)
{
    setObjectName(name);
    setModel(model);
    setItemDelegate(new LineDelegate(this));
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(11);
    setFont(font);
}

// A list makes each line at least as wide as itself.
QSize LineDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {0, QStyledItemDelegate::sizeHint(option, index).height()};
}

QString wrappedToolTip(const QString &text)
{
    return QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

}
