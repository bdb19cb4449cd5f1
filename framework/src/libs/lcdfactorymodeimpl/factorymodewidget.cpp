#include "factorymodewidget.h"

#include "factorykeychecklistconfigparser.h"
#include "factorymodewidget_p.h"
#include "log.h"
#include "translation.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtGui/QPainter>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStackedLayout>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace LCD::FactoryModeImpl {

namespace {

enum class Wording {
    Fixed,
    Translated,
};

struct TitleRow
{
    template <int KeySize, int TitleSize>
    constexpr TitleRow(const char (&rowKey)[KeySize], const char (&rowTitle)[TitleSize],
                       Wording rowWording = Wording::Fixed)
        : key(rowKey, KeySize - 1), title(rowTitle, TitleSize - 1), wording(rowWording)
    {
    }

    QLatin1String key;
    /// The title itself, or the catalog's key for it.
    QLatin1String title;
    Wording wording;
};

// The first row that matches decides, ignoring case.
constexpr TitleRow titles[] = {
    {"AgingMode", "FCAgeMode", Wording::Translated},
    {"completemachine", "MachineMode", Wording::Translated},
    {"FactoryMode", "Factory Mode"},
    {"LogExport", "Log Export"},
    {"ResetFactory", "Factory Reset"},
    {"ScreenLight", "Screen Light"},
    {"ScreenBadPixel", "Screen Bad Pixel"},
    {"screenbadpixels", "Screen Bad Pixel"},
    {"ButtonLight", "Button Light"},
    {"ButtonFunction", "Button Function"},
    {"Knob", "Factory Knob"},
    {"Joystick", "JoyStick"},
    {"Tbar", "T-Bar"},
    {"Genlock", "Genlock"},
    {"Typec", "TYPE-C"},
    {"Net", "Factory Net"},
    {"Input", "Input"},
    {"Output", "Output"},
    {"MVR", "MVR"},
    {"LTC", "LTC"},
    {"MIC", "MIC"},
    {"ExpandSource", "EXP Source"},
    {"expandsource", "EXP Source"},
    {"TouchScreen", "Touch Screen"},
    {"touchscreen", "Touch Screen"},
    {"USB", "USB"},
    {"usb", "USB"},
    {"typecnet", "TYPE-C Net"},
    {"DC", "DC"},
    {"typecpowersupply", "TYPE-C Power Supply"},
    {"POE", "POE"},
    {"poe", "POE"},
    {"madi", "MADI"},
};

std::unique_ptr<QListWidgetItem> createRow(const QString &title)
{
    auto row = std::make_unique<QListWidgetItem>(title);
    row->setData(Qt::ForegroundRole, QBrush(Qt::white));
    return row;
}

}

static QString titleForKey(const QString &key)
{
    if (key.isEmpty())
        return {};
    for (const TitleRow &row : titles) {
        if (key.size() == row.key.size() && key.compare(row.key, Qt::CaseInsensitive) == 0)
            return row.wording == Wording::Translated ? translated(row.title) : QString(row.title);
    }
    return key;
}

void FactoryModeItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    if (row.state & QStyle::State_Selected)
        painter->fillRect(row.rect, row.palette.brush(QPalette::Highlight));

    const QString title = index.data(Qt::DisplayRole).toString();
    const QString arrow = QStringLiteral(">");
    QColor color(QStringLiteral("#FFFFFF"));
    const QVariant foreground = index.data(Qt::ForegroundRole);
    if (foreground.isValid())
        color = foreground.value<QColor>();

    painter->save();
    painter->setPen(color);
    painter->setFont(row.font);
    const int arrowLeft = row.rect.right() - 20 - QFontMetrics(row.font).horizontalAdvance(arrow);
    const QRect inner = row.rect.adjusted(20, 5, -21, -5);
    QRect titleRect = inner;
    titleRect.setRight(arrowLeft - 10);
    painter->drawText(titleRect, Qt::AlignLeft | Qt::AlignVCenter, title);
    QRect arrowRect = inner;
    arrowRect.setLeft(arrowLeft);
    painter->drawText(arrowRect, Qt::AlignRight | Qt::AlignVCenter, arrow);
    painter->restore();
}

QSize FactoryModeItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 10);
}

FactoryModeWidget::Impl::Impl(FactoryModeWidget *widget) : q(widget)
{
}

void FactoryModeWidget::Impl::createMenu()
{
    _stackedLayout = new QStackedLayout(q);
    _stackedLayout->setContentsMargins(0, 0, 0, 0);
    _menuPage = new QWidget(q);
    _menuPageLayout = new QVBoxLayout(_menuPage);
    _menuPageLayout->setContentsMargins(0, 0, 0, 0);
    _menuPageLayout->setSpacing(0);
    _listLevel1 = createList(true);
    _listLevel2 = createList(false);
    _stackedLayout->addWidget(_menuPage);
    connect(_listLevel1, &QListWidget::itemClicked, q, [this](const QListWidgetItem *row) {
        if (row)
            openLevel1Row(row);
    });
    connect(_listLevel2, &QListWidget::itemClicked, q, [this](const QListWidgetItem *row) {
        if (row)
            openLevel2Row(row);
    });
}

QListWidget *FactoryModeWidget::Impl::createList(bool visible)
{
    auto *list = new QListWidget(_menuPage);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    list->setAttribute(Qt::WA_StyledBackground);
    list->setProperty("style", QStringLiteral("miniWidget"));
    list->setItemDelegate(new FactoryModeItemDelegate(q));
    list->installEventFilter(q);
    list->setVisible(visible);
    _menuPageLayout->addWidget(list, 1);
    return list;
}

void FactoryModeWidget::Impl::loadAtStart()
{
    const QString dir = sharePath();
    const QString path = QStringLiteral("%1/factorymenu.xml").arg(dir);
    qCDebug(componentLog) << "[FactoryModeWidget] Constructor: sharePath =" << dir;
    qCDebug(componentLog) << "[FactoryModeWidget] Constructor: Looking for factorymenu.xml in:" << path;
    qCDebug(componentLog) << "[FactoryModeWidget] Constructor: File exists:" << QFileInfo::exists(path)
                          << "Absolute path:" << QFileInfo(path).absoluteFilePath();
    if (loadMenuConfig(dir)) {
        qCDebug(componentLog) << "[FactoryModeWidget] Menu config loaded successfully, Level1 items count:"
                              << _level1Items.count();
        buildLevel1List();
        qCDebug(componentLog) << "[FactoryModeWidget] buildLevel1List completed, list widget has"
                              << _listLevel1->count() << "items";
    } else {
        qCWarning(componentLog) << "[FactoryModeWidget] Failed to load menu config from share path:" << dir;
    }
    loadFactoryKeyCheckListConfig(dir);
}

QString FactoryModeWidget::Impl::sharePath()
{
    return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/../share")).absolutePath();
}

bool FactoryModeWidget::Impl::loadMenuConfig(const QString &dir)
{
    if (!FactoryMenuConfigParser().load(dir, _level1Items)) {
        qCWarning(componentLog) << "[FactoryModeWidget] Failed to load menu config from:" << dir;
        return false;
    }
    _menuConfigPath = QStringLiteral("%1/%2").arg(dir, QLatin1String(FactoryMenuConfigParser::defaultConfigFileName()));
    qCDebug(componentLog) << "[FactoryModeWidget] Menu config loaded, path:" << _menuConfigPath
                          << "items:" << _level1Items.count();
    return true;
}

bool FactoryModeWidget::Impl::loadFactoryKeyCheckListConfig(const QString &dir)
{
    if (!FactoryKeyCheckListConfigParser().load(dir, _factoryKeyCheckList)) {
        qCWarning(componentLog) << "[FactoryModeWidget] Failed to load factory key check list config from:" << dir;
        return false;
    }
    qCDebug(componentLog) << "[FactoryModeWidget] Factory key check list config loaded, path:" << dir
                          << "items:" << _factoryKeyCheckList.count();
    return true;
}

void FactoryModeWidget::Impl::loadFrom(const QString &dir)
{
    if (loadMenuConfig(dir))
        buildLevel1List();
    loadFactoryKeyCheckListConfig(dir);
}

void FactoryModeWidget::Impl::reloadIfEmpty()
{
    if (!_level1Items.isEmpty())
        return;
    if (loadMenuConfig(sharePath())) {
        buildLevel1List();
        qCDebug(componentLog) << "[FactoryModeWidget] Config reloaded from share path:" << sharePath();
    }
    loadFactoryKeyCheckListConfig(sharePath());
}

void FactoryModeWidget::Impl::buildLevel1List()
{
    if (!_listLevel1) {
        qCWarning(componentLog) << "[FactoryModeWidget] buildLevel1List: _listLevel1 is null!";
        return;
    }
    _listLevel1->clear();
    qCDebug(componentLog) << "[FactoryModeWidget] buildLevel1List: Starting, _level1Items count:"
                          << _level1Items.count();
    if (_level1Items.isEmpty()) {
        qCWarning(componentLog) << "[FactoryModeWidget] buildLevel1List: _level1Items is empty! Cannot build list.";
        return;
    }
    for (int i = 0; i < _level1Items.count(); ++i)
        addLevel1Row(i);
    qCDebug(componentLog) << "[FactoryModeWidget] buildLevel1List: Completed, _listLevel1 now has"
                          << _listLevel1->count() << "items";
    _listLevel1->update();
}

void FactoryModeWidget::Impl::addLevel1Row(int index)
{
    const FactoryMenuLevel1Item &item = _level1Items.at(index);
    QString title = titleForKey(item.titleKey);
    if (title.isEmpty()) {
        title = item.key;
        qCDebug(componentLog) << "[FactoryModeWidget] buildLevel1List: titleKey" << item.titleKey
                              << "not found, using key:" << item.key;
    }
    std::unique_ptr<QListWidgetItem> row = createRow(title);
    row->setData(Qt::UserRole, item.key);
    row->setData(Qt::UserRole + 1, index);
    _listLevel1->insertItem(_listLevel1->count(), row.release());
    qCDebug(componentLog) << "[FactoryModeWidget] buildLevel1List: Added item" << index << "- title:" << title
                          << "key:" << item.key << "titleKey:" << item.titleKey;
}

void FactoryModeWidget::Impl::buildLevel2List(const QList<FactoryMenuLevel2Item> &children)
{
    if (!_listLevel2)
        return;
    _listLevel2->clear();
    for (const FactoryMenuLevel2Item &item : children) {
        const QString title = titleForKey(item.titleKey);
        std::unique_ptr<QListWidgetItem> row = createRow(title.isEmpty() ? item.key : title);
        row->setData(Qt::UserRole, item.containerKey);
        _listLevel2->insertItem(_listLevel2->count(), row.release());
    }
}

void FactoryModeWidget::Impl::showLevel1()
{
    if (_listLevel1) {
        _listLevel1->show();
        _listLevel1->setFocus(Qt::OtherFocusReason);
        if (_listLevel1->count() > 0 && _listLevel1->currentRow() < 0)
            _listLevel1->setCurrentRow(0);
        qCDebug(componentLog) << "[FactoryModeWidget] showLevel1: List1 visible=" << _listLevel1->isVisible()
                              << "count=" << _listLevel1->count() << "size=" << _listLevel1->size()
                              << "geometry=" << _listLevel1->geometry();
        _listLevel1->update();
    }
    if (_listLevel2)
        _listLevel2->hide();
}

void FactoryModeWidget::Impl::showLevel2(const QList<FactoryMenuLevel2Item> &children)
{
    _level2Items = children;
    buildLevel2List(children);
    if (_listLevel1)
        _listLevel1->hide();
    if (!_listLevel2)
        return;
    _listLevel2->show();
    _listLevel2->setFocus(Qt::OtherFocusReason);
    if (_listLevel2->count() > 0)
        _listLevel2->setCurrentRow(0);
    if (QScrollBar *bar = _listLevel2->verticalScrollBar())
        bar->setValue(0);
}

void FactoryModeWidget::Impl::registerTestPatternDisplayCallback(const std::string &name,
                                                                 const std::function<void(int, int, int)> &callback)
{
    registerNamedListener(_testPatternCallbacks, name, callback);
}

void FactoryModeWidget::Impl::notifyTestPatternChanged(int patternType, int patternIndex, int level) const
{
    notifyAll(_testPatternCallbacks, patternType, patternIndex, level);
}

FactoryModeWidget::FactoryModeWidget(QWidget *parent) : ILcdFactoryMode(parent), d(nullptr)
{
    // If the constructor throws, the destructor isn't called. The smart pointer deletes the object then.
    auto impl = std::make_unique<Impl>(this);
    d = impl.get();
    setWindowFlags(Qt::WindowFlags());
    setAttribute(Qt::WA_StyledBackground);
    setProperty("style", QStringLiteral("miniWidget"));
    setProperty("borderRadius", QStringLiteral("px_0"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(200, 200);
    installEventFilter(this);
    d->createMenu();
    d->loadAtStart();
    QTimer::singleShot(0, this, [this] { setVisible(false); });
    static_cast<void>(impl.release()); // d owns it from now on
}

FactoryModeWidget::~FactoryModeWidget()
{
    delete d;
}

void FactoryModeWidget::enterFactoryMode()
{
    if (!d)
        return;
    d->_inFactoryMode = true;
    d->reloadIfEmpty();
    d->showTopOfLevel1();
    show();
    update();
}

void FactoryModeWidget::exitFactoryMode()
{
    if (!d)
        return;
    d->_inFactoryMode = false;
    hide();
    qCDebug(componentLog) << "[FactoryModeWidget] exitFactoryMode";
}

bool FactoryModeWidget::isFactoryMode() const
{
    return d && d->_inFactoryMode;
}

void FactoryModeWidget::setFactoryModeData(const QString &key, const QVariant &value)
{
    if (!d || key != QLatin1String("menuConfigPath") || !value.canConvert<QString>())
        return;
    const QString path = value.toString();
    if (path.isEmpty())
        return;
    const QFileInfo info(path);
    if (info.isFile())
        d->_menuConfigPath = path;
    d->loadFrom(info.isFile() ? info.absolutePath() : path);
}

void FactoryModeWidget::setFactoryModeSize(const QSize &size)
{
    if (!d || size.width() <= 0 || size.height() <= 0)
        return;
    resize(size);
    qCDebug(componentLog) << "[FactoryModeWidget] setFactoryModeSize:" << size.width() << "x" << size.height();
}

void FactoryModeWidget::registerTestPatternDisplayCallback(const std::string &name,
                                                           const std::function<void(int, int, int)> &callback)
{
    if (d)
        d->registerTestPatternDisplayCallback(name, callback);
}

void FactoryModeWidget::notifyTestPatternChanged(int patternType, int patternIndex, int level)
{
    if (d)
        d->notifyTestPatternChanged(patternType, patternIndex, level);
}

QList<QPair<int, QString>> FactoryModeWidget::getFactoryKeyCheckList() const
{
    return d ? d->_factoryKeyCheckList : QList<QPair<int, QString>>();
}

void FactoryModeWidget::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
}

}
