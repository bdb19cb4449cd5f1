#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// Reads the key check list from XML: the hal key and the name of each key, in the order of the key walk. Every
/// function returns true if @p keys are valid. Otherwise it logs a warning with the reason and doesn't change @p keys,
/// except that a file without a list of keys clears them.
///
/// Threads: reentrant; the class has no state.
class FactoryKeyCheckListConfigParser
{
public:
    static const char *defaultConfigFileName();

    /// Reads the file with the default name in @p dir.
    bool load(const QString &dir, QList<QPair<int, QString>> &keys);
    bool loadFromFile(const QString &path, QList<QPair<int, QString>> &keys) const;
    /// Reads the keys from @p data. @p path is used in log lines only.
    bool parseDocument(const QByteArray &data, const QString &path, QList<QPair<int, QString>> &keys) const;
};

}
