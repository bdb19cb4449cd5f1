#include "menufixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>
#include <QtWidgets/QStackedLayout>

using LCD::FactoryModeImpl::FactoryModeWidget;

const QByteArray SampleMenu = R"(<MenuBar>
    <MenuItem Key="em.factorytest.RepairMode">
        <MenuItem Key="em.factorytest.repairmode.ScreenLight"/>
        <MenuItem Key="em.factorytest.Tbar"/>
        <MenuItem/>
        <MenuItem Key="em.factorytest.AgingMode"/>
        <MenuItem Key="em.factorytest.completemachine"/>
    </MenuItem>
    <MenuItem Key="em.factorytest.LogExport"/>
    <MenuItem/>
    <MenuItem Key="em.factorytest.AgingMode"/>
    <MenuItem Key="em.factorytest.completemachine"/>
    <MenuItem Key="em.sub.AgingMode"><MenuItem Key="em.factorytest.Net"/></MenuItem>
</MenuBar>)";

ShareDirectory::ShareDirectory()
{
    QDir(path()).removeRecursively();
    QDir().mkpath(path());
}

ShareDirectory::~ShareDirectory()
{
    QDir(path()).removeRecursively();
}

QString ShareDirectory::path()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share"));
}

void ShareDirectory::write(const QString &name, const QByteArray &content)
{
    writeFile(path() + QLatin1Char('/') + name, content);
}

void ShareDirectory::writeMenu(const QByteArray &content)
{
    write(QStringLiteral("factorymenu.xml"), "<LCD>" + content + "</LCD>");
}

void ShareDirectory::writeKeys(const QByteArray &content)
{
    write(QStringLiteral("factorykeychecklist.xml"), "<LCD>" + content + "</LCD>");
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s can't be written", qPrintable(path));
}

MenuView::MenuView(const FactoryModeWidget &widget)
    : level1(widget.findChildren<QListWidget *>().at(0)), level2(widget.findChildren<QListWidget *>().at(1)),
      page(level1->parentWidget())
{
}

QStringList titlesOf(const QListWidget &list)
{
    QStringList titles;
    for (int row = 0; row < list.count(); ++row)
        titles << list.item(row)->text();
    return titles;
}

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void clickRow(QListWidget *list, int row)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(row)).center());
}
