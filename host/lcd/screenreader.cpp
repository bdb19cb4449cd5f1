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

/// A value of the screen that a frame has as a property.
struct FrameValue
{
    const char *key;
    const char *property;
    const char *visible; ///< the property that says whether the value is shown; nullptr: always
    QVariant::Type type;
};

constexpr FrameValue frameValues[] = {
    {"title", "title", nullptr, QVariant::String},
    {"titleIcon", "titleIcon", nullptr, QVariant::String},
    {"stepTitle", "stepTitle", "stepTitleVisible", QVariant::String},
    {"steps", "steps", nullptr, QVariant::List},
    {"statusIcon", "statusIcon", "statusIconVisible", QVariant::String},
    {"left", "leftText", "leftVisible", QVariant::String},
    {"right", "rightText", "rightVisible", QVariant::String},
    {"leftEnabled", "leftEnabled", nullptr, QVariant::Bool},
    {"focus", "controlFocus", nullptr, QVariant::String},
    {"log", "log", nullptr, QVariant::StringList},
};

// Returns an empty value of the type if the value isn't shown or the frame doesn't have it.
QVariant read(const QWidget &frame, const FrameValue &value)
{
    const bool isShown = !value.visible || frame.property(value.visible).toBool();
    QVariant content = isShown ? frame.property(value.property) : QVariant();
    return content.convert(value.type) ? content : QVariant(value.type);
}

void readFrame(const QWidget &frame, QVariantMap &screen)
{
    for (const FrameValue &value : frameValues)
        screen.insert(QString::fromLatin1(value.key), read(frame, value));
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

ShownPage findShownPage(QWidget *lcd)
{
    const Widgets visible = visibleWidgets(*lcd);
    return {pageName(visible), findClass(visible, containerClass) ? nullptr : findClass(visible, frameClass)};
}

void readFrameProperty(const QWidget &frame, const QByteArray &property, QVariantMap &screen)
{
    for (const FrameValue &value : frameValues) {
        if (property == value.property || property == value.visible)
            screen.insert(QString::fromLatin1(value.key), read(frame, value));
    }
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
