#include "lcd/screenreader.h"

#include <QtWidgets/QListWidget>

#include <algorithm>

namespace panelhost {

namespace {

// Classes of other libraries, known only by name.
constexpr char agingPageClass[] = "LCD::FactoryModeImpl::AgeTestWidget";
constexpr char machinePageClass[] = "LCD::FactoryModeImpl::CompleteMachineTestWidget";
constexpr char repairModeClass[] = "LCD::RepairMode::ILcdRepairMode";
constexpr char frameClass[] = "LCD::Widget::FactoryTestFrame";
constexpr char containerClass[] = "panelhost::ContainerPage";

const QString menuPage = QStringLiteral("menu");
const QString hiddenPage = QStringLiteral("hidden");

using Widgets = QVector<QWidget *>;

// Adds the widgets in @p parent that are visible if @p parent is, in the order of QObject::findChildren().
void addVisible(const QWidget &parent, Widgets &widgets)
{
    for (QObject *child : parent.children()) {
        if (!child->isWidgetType())
            continue;
        auto *widget = static_cast<QWidget *>(child);
        if (widget->isHidden())
            continue;
        widgets.append(widget);
        addVisible(*widget, widgets);
    }
}

Widgets visibleWidgets(const QWidget &lcd)
{
    Widgets widgets;
    addVisible(lcd, widgets);
    return widgets;
}

QWidget *findClass(const Widgets &widgets, const char *className)
{
    const auto isOfClass = [className](const QWidget *widget) { return widget->inherits(className); };
    const auto found = std::find_if(widgets.begin(), widgets.end(), isOfClass);
    return found == widgets.end() ? nullptr : *found;
}

void readMenu(const QList<QListWidget *> &lists, int level, QVariantMap &screen)
{
    const QListWidget *list = lists.at(level);
    QStringList items;
    for (int row = 0; row < list->count(); ++row)
        items << list->item(row)->text();
    const QListWidgetItem *current = list->currentItem();
    screen.insert(QStringLiteral("menu.level"), level + 1);
    screen.insert(QStringLiteral("menu.items"), items);
    screen.insert(QStringLiteral("menu.row"), list->currentRow());
    screen.insert(QStringLiteral("menu.current"), current ? current->text() : QString());
}

// The lists are in the order of their levels.
bool readVisibleMenu(QWidget *lcd, QVariantMap &screen)
{
    const QList<QListWidget *> lists = lcd->findChildren<QListWidget *>();
    for (int level = 0; level < lists.size(); ++level) {
        if (lists.at(level)->isVisibleTo(lcd)) {
            readMenu(lists, level, screen);
            return true;
        }
    }
    return false;
}

void readFrame(const QWidget &frame, QVariantMap &screen)
{
    const auto shown = [&frame](const char *value, const char *visible) {
        return frame.property(visible).toBool() ? frame.property(value).toString() : QString();
    };
    screen.insert(QStringLiteral("title"), frame.property("title").toString());
    screen.insert(QStringLiteral("titleIcon"), frame.property("titleIcon").toString());
    screen.insert(QStringLiteral("stepTitle"), shown("stepTitle", "stepTitleVisible"));
    screen.insert(QStringLiteral("steps"), frame.property("steps").toList());
    screen.insert(QStringLiteral("statusIcon"), shown("statusIcon", "statusIconVisible"));
    screen.insert(QStringLiteral("left"), shown("leftText", "leftVisible"));
    screen.insert(QStringLiteral("right"), shown("rightText", "rightVisible"));
    screen.insert(QStringLiteral("leftEnabled"), frame.property("leftEnabled").toBool());
    screen.insert(QStringLiteral("focus"), frame.property("controlFocus").toString());
    screen.insert(QStringLiteral("log"), frame.property("log").toStringList());
}

const QVector<std::pair<const char *, QString>> &pagesByClass()
{
    static const QVector<std::pair<const char *, QString>> pages = {
        {containerClass, QStringLiteral("container")},
        {agingPageClass, QStringLiteral("aging")},
        {machinePageClass, QStringLiteral("machine")},
        {repairModeClass, QStringLiteral("repair")},
    };
    return pages;
}

QString pageName(const Widgets &visible)
{
    for (const auto &[className, name] : pagesByClass()) {
        if (findClass(visible, className))
            return name;
    }
    return hiddenPage;
}

}

QWidget *findTestFrame(QWidget *lcd)
{
    return findClass(visibleWidgets(*lcd), frameClass);
}

QStringList pageNames()
{
    QStringList names{menuPage, hiddenPage};
    for (const auto &[className, name] : pagesByClass())
        names << name;
    return names;
}

QVariantMap readScreen(QWidget *lcd)
{
    QVariantMap screen;
    const Widgets visible = visibleWidgets(*lcd);
    QString page = pageName(visible);
    if (const QWidget *container = findClass(visible, containerClass))
        screen.insert(QStringLiteral("container"), container->property("containerKey"));
    else if (const QWidget *frame = findClass(visible, frameClass))
        readFrame(*frame, screen);
    else if (readVisibleMenu(lcd, screen))
        page = menuPage;
    screen.insert(QStringLiteral("page"), page);
    return screen;
}

}
