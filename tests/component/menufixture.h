#pragma once

#include "calls.h"
#include "factorymodewidget.h"
#include "recordinghost.h"

#include <QtWidgets/QListWidget>

/// The share directory of this test program. It is empty before and after the lifetime of this object.
class ShareDirectory
{
public:
    ShareDirectory();
    ~ShareDirectory();
    ShareDirectory(const ShareDirectory &) = delete;
    ShareDirectory &operator=(const ShareDirectory &) = delete;

    static QString path();
    static void write(const QString &name, const QByteArray &content);
    /// Write the configuration files, with an <LCD> element around @p content.
    static void writeMenu(const QByteArray &content);
    static void writeKeys(const QByteArray &content);
};

void writeFile(const QString &path, const QByteArray &content);

/// A menu of two submenus, an empty entry, a container and the two test pages; the last two come fourth and fifth.
extern const QByteArray SampleMenu;

/// Finds the lists and pages of the widget without access to its private part.
class MenuView
{
public:
    explicit MenuView(const LCD::FactoryModeImpl::FactoryModeWidget &widget);

    QListWidget *level1;
    QListWidget *level2;
    QWidget *page;
};

QStringList titlesOf(const QListWidget &list);
/// Delivers posted events and expired timers.
void settle();
/// Clicks the middle of @p row with the left mouse button.
void clickRow(QListWidget *list, int row);
