#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// An entry of the menu's second level.
struct FactoryMenuLevel2Item
{
    /// As written in the file.
    QString key;
    /// The last part of the key; decides the title.
    QString titleKey;
    /// The container that the entry opens.
    QString containerKey;
};

/// An entry of the menu's first level; a submenu if it has children.
struct FactoryMenuLevel1Item
{
    QString key;
    QString titleKey;
    QString containerKey;
    QList<FactoryMenuLevel2Item> children;
};

/// Reads the factory menu from XML. Holds no state. Every operation returns true when @p items are valid to use;
/// what is wrong with a file goes to the log, and only a file without a MenuBar empties @p items.
///
/// Threads: may be used on any thread.
class FactoryMenuConfigParser
{
public:
    static const char *defaultConfigFileName();

    /// Reads the file of the default name in @p dir.
    bool load(const QString &dir, QList<FactoryMenuLevel1Item> &items);
    bool loadFromFile(const QString &path, QList<FactoryMenuLevel1Item> &items);
    /// @p path serves in log lines only.
    bool parseDocument(const QByteArray &data, const QString &path, QList<FactoryMenuLevel1Item> &items) const;
};

}
