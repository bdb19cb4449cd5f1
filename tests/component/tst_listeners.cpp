#include "listeners.h"

#include <QtTest/QtTest>

using namespace LCD::FactoryModeImpl;

class ListenersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        table.clear();
        heard.clear();
    }

    void secondRegistrationTakesThePlaceOfTheFirst()
    {
        registerListener(table, "a", listener(QStringLiteral("first")));
        registerListener(table, "a", listener(QStringLiteral("second")));
        QCOMPARE(table.size(), std::size_t(1));
        notifyRequester(table, "a", 7);
        QCOMPARE(heard, QStringList{QStringLiteral("second 7")});
    }

    void emptyFunctionChangesNothing()
    {
        registerListener(table, "a", listener(QStringLiteral("first")));
        registerListener(table, "a", std::function<void(int)>());
        registerListener(table, "b", std::function<void(int)>());
        QCOMPARE(table.size(), std::size_t(1));
        notifyRequester(table, "a", 7);
        QCOMPARE(heard, QStringList{QStringLiteral("first 7")});
    }

    void emptyNameIsAName()
    {
        registerListener(table, {}, listener(QStringLiteral("nameless")));
        notifyRequester(table, {}, 1);
        QCOMPARE(heard, QStringList{QStringLiteral("nameless 1")});
    }

    void emptyNameIsRefusedWhereListenersMustHaveOne()
    {
        registerNamedListener(table, {}, listener(QStringLiteral("nameless")));
        registerNamedListener(table, "a", listener(QStringLiteral("named")));
        QCOMPARE(table.size(), std::size_t(1));
        QCOMPARE(table.begin()->first, std::string("a"));
    }

    void requesterIsComparedByteForByte()
    {
        for (const std::string &name : {std::string("a"), std::string("A"), std::string("ab"), std::string("a\0b", 3)})
            registerListener(table, name, listener(QString::number(name.size())));
        notifyRequester(table, std::string("a\0b", 3), 1);
        notifyRequester(table, "b", 2);
        notifyRequester(table, {}, 3);
        QCOMPARE(heard, QStringList{QStringLiteral("3 1")});
    }

    void allAreCalledInAscendingOrderOfName()
    {
        for (const char *name : {"c", "a", "", "b"})
            registerListener(table, name, listener(QStringLiteral("<%1>").arg(QLatin1String(name))));
        notifyAll(table, 4);
        QCOMPARE(heard,
                 (QStringList{QStringLiteral("<> 4"), QStringLiteral("<a> 4"), QStringLiteral("<b> 4"),
                              QStringLiteral("<c> 4")}));
    }

    void entryWithoutFunctionStaysSilent()
    {
        table["a"] = nullptr;
        table["b"] = listener(QStringLiteral("b"));
        notifyRequester(table, "a", 1);
        notifyAll(table, 2);
        QCOMPARE(heard, QStringList{QStringLiteral("b 2")});
    }

    void listenerMayRegisterAnotherInItsOwnPlace()
    {
        registerListener(table, "a", std::function<void(int)>([this](int value) {
                             registerListener(table, "a", listener(QStringLiteral("new")));
                             heard << QStringLiteral("old %1").arg(value);
                         }));
        notifyRequester(table, "a", 1);
        notifyAll(table, 2);
        QCOMPARE(heard, (QStringList{QStringLiteral("old 1"), QStringLiteral("new 2")}));
    }

private:
    std::function<void(int)> listener(const QString &name)
    {
        return [this, name](int value) { heard << QStringLiteral("%1 %2").arg(name).arg(value); };
    }

    Listeners<int> table;
    QStringList heard;
};

QTEST_APPLESS_MAIN(ListenersTest)
#include "tst_listeners.moc"
