#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// Reads the keys of the button function test from XML, each a key code of the keyboard service and a name, in the
/// order of the test. Holds no state. Every operation returns true when @p keys are valid to use; what is wrong with
/// a file goes to the log, and only a file without a list of keys empties @p keys.
///
/// Threads: may be used on any thread.
class FactoryKeyCheckListConfigParser
{
public:
    static const char *defaultConfigFileName();

    /// Reads the file of the default name in @p dir.
    bool load(const QString &dir, QList<QPair<int, QString>> &keys);
    bool loadFromFile(const QString &path, QList<QPair<int, QString>> &keys) const;
    /// @p path serves in log lines only.
    bool parseDocument(const QByteArray &data, const QString &path, QList<QPair<int, QString>> &keys) const;
};

}
