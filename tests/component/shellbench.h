#pragma once

#include "calls.h"
#include "factorymodewidget.h"
#include "recordinghost.h"

#include <QtWidgets/QListWidget>

/// The share directory of this test program, empty at first and after it.
class ShareDirectory
{
public:
    ShareDirectory();
    ~ShareDirectory();
    ShareDirectory(const ShareDirectory &) = delete;
    ShareDirectory &operator=(const ShareDirectory &) = delete;

    static QString path();
    static void write(const QString &name, const QByteArray &content);
    /// The files with an <LCD> around @p content.
    static void writeMenu(const QByteArray &content);
    static void writeKeys(const QByteArray &content);
};

void writeFile(const QString &path, const QByteArray &content);

/// A menu of two submenus, an empty entry, a container and the two test pages; the last two come fourth and fifth.
extern const QByteArray SampleMenu;

/// The widget's lists and pages as somebody outside finds them.
class MenuView
{
public:
    explicit MenuView(const LCD::FactoryModeImpl::FactoryModeWidget &widget);

    QListWidget *level1;
    QListWidget *level2;
    QWidget *page;
};

QStringList titlesOf(const QListWidget &list);
/// Delivers posted events and timers that are due.
void settle();
/// Presses the left button in the middle of @p row.
void clickRow(QListWidget *list, int row);
