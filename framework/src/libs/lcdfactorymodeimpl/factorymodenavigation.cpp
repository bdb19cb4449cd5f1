#include "agetestwidget.h"
#include "completemachinetestwidget.h"
#include "factorymodewidget_p.h"
#include "log.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedLayout>

#include <memory>

// What keys and clicks do in the menu: they switch between its two levels, open the test pages and leave to the host.

namespace LCD::FactoryModeImpl {

namespace {

bool isVisible(const QWidget *widget)
{
    return widget && widget->isVisible();
}

}

const QString FactoryModeWidget::Impl::ContainerKeyCompleteMachine = QStringLiteral("container.completemachine");
const QString FactoryModeWidget::Impl::ContainerKeyAge = QStringLiteral("container.agingmode");

bool FactoryModeWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (!d || event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    auto *list = qobject_cast<QListWidget *>(watched);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Escape && watched == this)
        return d->backOnWidget() || QObject::eventFilter(watched, event);
    if (!list || (list != d->_listLevel1 && list != d->_listLevel2))
        return QObject::eventFilter(watched, event);
    if (key == Qt::Key_Escape)
        return d->backOnList(list) || QObject::eventFilter(watched, event);
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return d->enterOnList(list);
    return QObject::eventFilter(watched, event);
}

// Returns whether the row has opened the second level. Uses a copy of the item, because the host may load another menu
// in its slot.
bool FactoryModeWidget::Impl::openLevel1Row(const QListWidgetItem *row)
{
    const int index = row->data(Qt::UserRole + 1).toInt();
    if (index < 0 || index >= _level1Items.count())
        return false;
    const FactoryMenuLevel1Item item = _level1Items.at(index);
    if (!item.children.isEmpty()) {
        showLevel2(item.children);
        return true;
    }
    if (item.containerKey.isEmpty())
        return false;
    if (item.containerKey == ContainerKeyCompleteMachine)
        showCompleteMachineWidget();
    else if (item.containerKey == ContainerKeyAge)
        showAgeWidget();
    else
        Q_EMIT q->requestShowContainer(item.containerKey);
    return false;
}

// The two test pages of this library open from the first level only.
void FactoryModeWidget::Impl::openLevel2Row(const QListWidgetItem *row)
{
    const QString containerKey = row->data(Qt::UserRole).toString();
    if (!containerKey.isEmpty())
        Q_EMIT q->requestShowContainer(containerKey);
}

bool FactoryModeWidget::Impl::enterOnList(QListWidget *list)
{
    const QListWidgetItem *row = list->currentItem();
    if (!row)
        return true;
    if (list == _listLevel2)
        openLevel2Row(row);
    else if (openLevel1Row(row))
        focusFirstRow(_listLevel2);
    return true;
}

bool FactoryModeWidget::Impl::backOnWidget()
{
    if (LCD::FactoryModeImpl::isVisible(_listLevel2)) {
        qCDebug(componentLog) << "[FactoryModeWidget] Back key on widget: Returning to Level1";
        showLevel1();
        focusFirstRow(_listLevel1);
        return true;
    }
    if (LCD::FactoryModeImpl::isVisible(_listLevel1)) {
        qCDebug(componentLog) << "[FactoryModeWidget] Back key on widget: Exiting factory mode";
        Q_EMIT q->requestExitFactoryMode();
        return true;
    }
    return false;
}

bool FactoryModeWidget::Impl::backOnList(QListWidget *list)
{
    const bool level1Visible = LCD::FactoryModeImpl::isVisible(_listLevel1);
    const bool level2Visible = LCD::FactoryModeImpl::isVisible(_listLevel2);
    qCDebug(componentLog) << "[FactoryModeWidget] Back key pressed on listWidget, listWidget:" << list
                          << "listLevel1:" << _listLevel1 << "listLevel2:" << _listLevel2
                          << "Level2 visible:" << level2Visible << "Level1 visible:" << level1Visible;
    if (level2Visible) {
        qCDebug(componentLog) << "[FactoryModeWidget] Back: Returning to Level1 from Level2";
        showLevel1();
        focusOpenedRow();
        return true;
    }
    if (level1Visible) {
        qCDebug(componentLog) << "[FactoryModeWidget] Back: Exiting factory mode from Level1";
        Q_EMIT q->requestExitFactoryMode();
        return true;
    }
    return false;
}

void FactoryModeWidget::Impl::focusFirstRow(QListWidget *list)
{
    if (!list || list->count() == 0)
        return;
    list->setFocus(Qt::OtherFocusReason);
    list->setCurrentRow(0);
}

// Selects the row from which the submenu was opened.
void FactoryModeWidget::Impl::focusOpenedRow()
{
    if (!_listLevel1 || _listLevel1->count() == 0)
        return;
    _listLevel1->setFocus(Qt::OtherFocusReason);
    const int row = _listLevel1->currentRow();
    _listLevel1->setCurrentRow(row < 0 || row >= _listLevel1->count() ? 0 : row);
    _listLevel1->update();
}

void FactoryModeWidget::Impl::showTopOfLevel1()
{
    if (_stackedLayout && _menuPage)
        _stackedLayout->setCurrentWidget(_menuPage);
    if (_listLevel1) {
        _listLevel1->show();
        qCDebug(componentLog) << "[FactoryModeWidget] enterFactoryMode: List1 visible=" << _listLevel1->isVisible()
                              << "count=" << _listLevel1->count();
    }
    showLevel1();
    focusFirstRow(_listLevel1);
    if (_listLevel1 && _listLevel1->count() > 0)
        _listLevel1->update();
    qCDebug(componentLog) << "[FactoryModeWidget] enterFactoryMode, level1 items:" << _level1Items.count()
                          << "list1 count:" << (_listLevel1 ? _listLevel1->count() : 0);
}

template <class Page>
void FactoryModeWidget::Impl::showTestPage(Page *&page)
{
    if (!_stackedLayout)
        return;
    if (!page) {
        // `page` is set only when the page is complete.
        auto made = std::make_unique<Page>(q);
        connect(made.get(), &Page::signalBackToFactoryMenu, q, [this] { returnFromTestPage(); });
        _stackedLayout->addWidget(made.get());
        page = made.release();
    }
    page->setContentFontSize(30);
    page->enterWindow();
    _stackedLayout->setCurrentWidget(page);
}

void FactoryModeWidget::Impl::showAgeWidget()
{
    showTestPage(_ageWidget);
}

void FactoryModeWidget::Impl::showCompleteMachineWidget()
{
    showTestPage(_completeMachineWidget);
}

// Selects the first row of the menu, not the row from which the page was opened.
void FactoryModeWidget::Impl::returnFromTestPage()
{
    if (_stackedLayout)
        _stackedLayout->setCurrentWidget(_menuPage);
    showLevel1();
    focusFirstRow(_listLevel1);
}

}
