#include "check/keylistcheck.h"

#include "check/configfile.h"

#include <QtCore/QHash>

namespace panelhost {

namespace {

class KeyListCheck
{
public:
    explicit KeyListCheck(const QString &path) : m_file(path) {}

    Findings run();

private:
    void checkKeys(const QDomElement &list);
    /// The value that the component reads.
    int checkValue(const QDomElement &key);
    void checkDuplicate(const QDomElement &key, int value);

    ConfigFile m_file;
    QHash<int, int> m_lineOfValue;
};

QString nameOf(const QDomElement &key)
{
    return key.attribute(QStringLiteral("Name")).trimmed();
}

Findings KeyListCheck::run()
{
    if (!m_file.load())
        return m_file.findings();
    const auto list = m_file.list(QStringLiteral("LcdKeys"));
    if (!list.isNull())
        checkKeys(list);
    return m_file.findings();
}

void KeyListCheck::checkKeys(const QDomElement &list)
{
    const auto keys = childrenOf(list, QStringLiteral("LcdKey"));
    if (keys.isEmpty())
        return m_file.warn(list, QStringLiteral("LcdKeys holds no LcdKey: the button function test has nothing to do"));
    bool hasCut = false;
    for (const auto &key : keys) {
        checkDuplicate(key, checkValue(key));
        hasCut = hasCut || nameOf(key) == QLatin1String("CUT");
    }
    if (!hasCut)
        m_file.warn(list, QStringLiteral("no LcdKey has the Name \"CUT\""));
}

int KeyListCheck::checkValue(const QDomElement &key)
{
    const auto text = key.attribute(QStringLiteral("Value"));
    bool isNumber = false;
    const int value = text.toInt(&isNumber, 10);
    if (text.isEmpty())
        m_file.warn(key, QStringLiteral("LcdKey has no Value: it reads as 0"));
    else if (!isNumber)
        m_file.warn(key, QStringLiteral("Value \"%1\" reads as 0, expected a decimal number").arg(text));
    return value;
}

void KeyListCheck::checkDuplicate(const QDomElement &key, int value)
{
    const int line = m_lineOfValue.value(value);
    if (line > 0)
        m_file.warn(key, QStringLiteral("key %1 stands in line %2 already").arg(value).arg(line));
    else
        m_lineOfValue.insert(value, m_file.placeOf(key).line);
}

}

Findings checkKeyList(const QString &path)
{
    return KeyListCheck(path).run();
}

}
