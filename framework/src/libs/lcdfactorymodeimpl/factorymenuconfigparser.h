#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// An entry of the second menu level.
struct FactoryMenuLevel2Item
{
    /// As written in the file.
    QString key;
    /// The last part of the key. It determines the title.
    QString titleKey;
    /// The container that the entry opens.
    QString containerKey;
};

/// An entry of the first menu level. It is a submenu if it has children.
struct FactoryMenuLevel1Item
{
    QString key;
    QString titleKey;
    QString containerKey;
    QList<FactoryMenuLevel2Item> children;
};

/// Reads the factory menu from XML. Every function returns true if @p items are valid. Otherwise it logs a warning with
/// the reason and doesn't change @p items, except that a file without a MenuBar clears them.
///
/// Threads: reentrant; the class has no state.
class FactoryMenuConfigParser
{
public:
    static const char *defaultConfigFileName();

    /// Reads the file with the default name in @p dir.
    bool load(const QString &dir, QList<FactoryMenuLevel1Item> &items);
    bool loadFromFile(const QString &path, QList<FactoryMenuLevel1Item> &items);
    /// Reads the menu from @p data. @p path is used in log lines only.
    bool parseDocument(const QByteArray &data, const QString &path, QList<FactoryMenuLevel1Item> &items) const;
};

}
