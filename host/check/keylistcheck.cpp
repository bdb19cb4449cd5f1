#include "check/keylistcheck.h"

#include "check/configfile.h"

#include <algorithm>

namespace panelhost {

namespace {

class KeyListCheck
{
public:
    explicit KeyListCheck(const QString &path) : m_file(path) {}

    Diagnostics run();

private:
    void checkKeys(const QDomElement &list);

    ConfigFile m_file;
};

QString nameOf(const QDomElement &key)
{
    return key.attribute(QStringLiteral("Name")).trimmed();
}

Diagnostics KeyListCheck::run()
{
    if (!m_file.load())
        return m_file.diagnostics();
    m_file.validateAgainst(QStringLiteral("factorykeychecklist.xsd"));
    const auto list = m_file.list(QStringLiteral("LcdKeys"));
    if (!list.isNull())
        checkKeys(list);
    return m_file.diagnostics();
}

void KeyListCheck::checkKeys(const QDomElement &list)
{
    const auto keys = childrenOf(list, QStringLiteral("LcdKey"));
    if (keys.isEmpty())
        return m_file.warn(list, QStringLiteral("LcdKeys contains no LcdKey: the key walk has no key to ask for"));
    const auto isCut = [](const QDomElement &key) { return nameOf(key) == QLatin1String("CUT"); };
    if (std::none_of(keys.begin(), keys.end(), isCut))
        m_file.warn(list, QStringLiteral("no LcdKey has the Name \"CUT\""));
}

}

Diagnostics checkKeyList(const QString &path)
{
    return KeyListCheck(path).run();
}

}
