#pragma once

#include "factorymenuconfigparser.h"
#include "factorymodewidget.h"
#include "listeners.h"

#include <QtCore/QObject>

class QListWidget;
class QListWidgetItem;
class QStackedLayout;
class QVBoxLayout;

namespace LCD::FactoryModeImpl {

class AgeTestWidget;
class CompleteMachineTestWidget;

/// The data and the widgets of the menu. factorymodewidget.cpp loads the data and fills the lists;
/// factorymodenavigation.cpp handles keys and clicks.
///
/// Threads: the GUI thread only.
class FactoryModeWidget::Impl : public QObject
{
public:
    explicit Impl(FactoryModeWidget *widget);

    void createMenu();
    void loadAtStart();

    static QString sharePath();
    bool loadMenuConfig(const QString &dir);
    bool loadFactoryKeyCheckListConfig(const QString &dir);
    void loadFrom(const QString &dir);
    void reloadIfEmpty();

    void buildLevel1List();
    void buildLevel2List(const QList<FactoryMenuLevel2Item> &children);
    void showLevel1();
    void showLevel2(const QList<FactoryMenuLevel2Item> &children);
    void showTopOfLevel1();
    static void focusFirstRow(QListWidget *list);
    void focusOpenedRow();

    void registerTestPatternDisplayCallback(const std::string &name,
                                            const std::function<void(int, int, int)> &callback);
    void notifyTestPatternChanged(int patternType, int patternIndex, int level) const;

    bool openLevel1Row(const QListWidgetItem *row);
    void openLevel2Row(const QListWidgetItem *row);
    bool enterOnList(QListWidget *list);
    bool backOnWidget();
    bool backOnList(QListWidget *list);

    void showAgeWidget();
    void showCompleteMachineWidget();
    template <class Page>
    void showTestPage(Page *&page);
    void returnFromTestPage();

    static const QString ContainerKeyCompleteMachine;
    static const QString ContainerKeyAge;

    FactoryModeWidget *q;
    bool _inFactoryMode = false;
    QList<FactoryMenuLevel1Item> _level1Items;
    QString _menuConfigPath;
    QList<QPair<int, QString>> _factoryKeyCheckList;
    QStackedLayout *_stackedLayout = nullptr;
    QWidget *_menuPage = nullptr;
    QVBoxLayout *_menuPageLayout = nullptr;
    QListWidget *_listLevel1 = nullptr;
    QListWidget *_listLevel2 = nullptr;
    QList<FactoryMenuLevel2Item> _level2Items;
    CompleteMachineTestWidget *_completeMachineWidget = nullptr;
    AgeTestWidget *_ageWidget = nullptr;
    Listeners<int, int, int> _testPatternCallbacks;

private:
    QListWidget *createList(bool visible);
    void addLevel1Row(int index);
};

}
