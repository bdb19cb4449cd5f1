#include "playing/menunavigator.h"

#include "check/configfile.h"
#include "lcd/screenreader.h"

namespace panelhost {

namespace {

const QString ItemTag = QStringLiteral("MenuItem");

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString keyOf(const QDomElement &item)
{
    const auto key = item.attribute(QStringLiteral("Key"));
    return key.isEmpty() ? item.attribute(QStringLiteral("key")) : key;
}

class MenuNavigator
{
public:
    explicit MenuNavigator(Session &session)
        : m_session(session), m_file(session.shareDirectory() + QStringLiteral("/factorymenu.xml"))
    {
        if (m_file.load())
            m_parent = m_file.list(QStringLiteral("MenuBar"));
    }

    bool open(const QStringList &path, QString *error);

private:
    bool openEntry(const QString &name, QString *error);
    int rowOf(const QString &name, const QStringList &titles) const;
    void navigate(const QString &key, int times = 1);
    QVariantMap screen() const { return readScreen(m_session.lcd()); }

    Session &m_session;
    ConfigFile m_file;
    QDomElement m_parent; ///< the element in the menu file whose children are shown
};

bool MenuNavigator::open(const QStringList &path, QString *error)
{
    const auto page = screen().value(QStringLiteral("page")).toString();
    if (page != QLatin1String("menu")) {
        *error = QStringLiteral("the page is \"%1\", expected the menu").arg(page);
        return false;
    }
    if (screen().value(QStringLiteral("menu.level")).toInt() == 2)
        navigate(QStringLiteral("back"));
    for (int level = 1; level <= path.size(); ++level) {
        const int shown = screen().value(QStringLiteral("menu.level")).toInt();
        if (shown != level) {
            *error = QStringLiteral("\"%1\" opens no second level").arg(path.first());
            return false;
        }
        if (!openEntry(path.at(level - 1), error))
            return false;
    }
    return true;
}

bool MenuNavigator::openEntry(const QString &name, QString *error)
{
    const auto shown = screen();
    const auto titles = shown.value(QStringLiteral("menu.items")).toStringList();
    const int row = rowOf(name, titles);
    if (row < 0) {
        *error =
            QStringLiteral("the menu has no entry \"%1\": it shows %2").arg(name, titles.join(QStringLiteral(", ")));
        return false;
    }
    const int from = shown.value(QStringLiteral("menu.row")).toInt();
    navigate(row < from ? QStringLiteral("up") : QStringLiteral("down"), qAbs(row - from));
    navigate(QStringLiteral("enter"));
    m_parent = childrenOf(m_parent, ItemTag).value(row);
    return true;
}

int MenuNavigator::rowOf(const QString &name, const QStringList &titles) const
{
    for (int row = 0; row < titles.size(); ++row) {
        if (isSame(titles.at(row), name))
            return row;
    }
    const auto items = childrenOf(m_parent, ItemTag);
    for (int row = 0; row < qMin(items.size(), titles.size()); ++row) {
        const auto key = keyOf(items.at(row));
        if (isSame(key, name) || isSame(key.section(QLatin1Char('.'), -1), name))
            return row;
    }
    return -1;
}

void MenuNavigator::navigate(const QString &key, int times)
{
    for (int i = 0; i < times; ++i)
        m_session.panelOperator().perform({OperatorAction::Kind::Navigate, {{QStringLiteral("key"), key}}});
}

}

bool openMenuEntry(Session &session, const QStringList &path, QString *error)
{
    return MenuNavigator(session).open(path, error);
}

}
