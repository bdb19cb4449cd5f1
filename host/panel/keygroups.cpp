#include "panel/keygroups.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

namespace panelhost {

constexpr int SmallestGroup = 3;

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
    QHash<QString, int> places;
    KeyGroup others{QStringLiteral("FUNCTION"), {}};
    for (const KeyState &key : keys) {
        const QString title = stem(key.name);
        if (title.isEmpty() || counts.value(title) < SmallestGroup) {
            others.keys.append(key);
            continue;
        }
        if (!places.contains(title)) {
            places.insert(title, groups.size());
            groups.append({title, {}});
        }
        groups[places.value(title)].keys.append(key);
    }
    if (!others.keys.isEmpty())
        groups.append(others);
    return groups;
}

}
