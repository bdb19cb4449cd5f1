#include "panel/keygroups.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

namespace panelhost {

constexpr int MinGroupSize = 3;

static QString stem(const QString &name)
{
    static const QRegularExpression numbered(QStringLiteral("^(.*?)[\\s_-]*\\d+$"));
    return numbered.match(name).captured(1).toUpper();
}

QList<KeyGroup> groupKeys(const QList<KeyState> &keys)
{
    QHash<QString, int> counts;
    for (const KeyState &key : keys)
        ++counts[stem(key.name)];
    QList<KeyGroup> groups;
    QHash<QString, int> indexes;
    KeyGroup others{QStringLiteral("FUNCTION"), {}};
    for (const KeyState &key : keys) {
        const QString title = stem(key.name);
        if (title.isEmpty() || counts.value(title) < MinGroupSize) {
            others.keys.append(key);
            continue;
        }
        if (!indexes.contains(title)) {
            indexes.insert(title, groups.size());
            groups.append({title, {}});
        }
        groups[indexes.value(title)].keys.append(key);
    }
    if (!others.keys.isEmpty())
        groups.append(others);
    return groups;
}

}
