#include "listeners.h"

#include <QtTest/QtTest>

#include <atomic>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>

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

    void aListenerKeepsItsOwnState()
    {
        registerListener(table, "a", counting());
        notifyRequester(table, "a", 7);
        notifyAll(table, 7);
        notifyRequester(table, "a", 7);
        QCOMPARE(heard, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    }

    void aSingleListenerKeepsItsOwnState()
    {
        Listener<int> single;
        setListener(single, counting());
        for (int call = 0; call < 3; ++call)
            currentListener(single)(7);
        QCOMPARE(heard, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    }

    void aListenerWithoutAFunctionThrows()
    {
        Listener<int> single;
        QVERIFY(!single);
        QVERIFY_EXCEPTION_THROWN(single(7), std::bad_function_call);
    }

    void aReplacedListenerLivesAsLongAsItRuns_data()
    {
        QTest::addColumn<bool>("all");
        QTest::newRow("of one requester") << false;
        QTest::newRow("of all") << true;
    }

    void aReplacedListenerLivesAsLongAsItRuns()
    {
        QFETCH(const bool, all);
        auto own = std::make_shared<int>(5);
        const std::weak_ptr<int> watched = own;
        bool livedOn = false;
        registerListener(table, "a", std::function<void(int)>([this, &watched, &livedOn, own](int) {
                             registerListener(table, "a", listener(QStringLiteral("new")));
                             livedOn = !watched.expired();
                         }));
        own.reset();
        if (all)
            notifyAll(table, 1);
        else
            notifyRequester(table, "a", 1);
        QVERIFY(livedOn);
        QVERIFY(watched.expired());
    }

    void aReplacedListenerIsDeletedWithoutTheMutex_data() { aReplacedListenerLivesAsLongAsItRuns_data(); }

    void aReplacedListenerIsDeletedWithoutTheMutex()
    {
        QFETCH(const bool, all);
        bool deleted = false;
        bool wasFree = false;
        const auto onDeletion = [&deleted, &wasFree](const int *value) {
            delete value;
            deleted = true;
            std::thread([&wasFree] {
                wasFree = std::unique_lock(listenersMutex, std::try_to_lock).owns_lock();
            }).join();
        };
        std::shared_ptr<int> own(new int(5), onDeletion);
        registerListener(table, "a", std::function<void(int)>([this, own](int) {
                             registerListener(table, "a", listener(QStringLiteral("new")));
                         }));
        own.reset();
        if (all)
            notifyAll(table, 1);
        else
            notifyRequester(table, "a", 1);
        QVERIFY(deleted);
        QVERIFY(wasFree);
    }

    void aListenerMayReplaceAnotherAndRegisterNewOnes()
    {
        registerListener(table, "b", std::function<void(int)>([this](int value) {
                             registerListener(table, "a", listener(QStringLiteral("before")));
                             registerListener(table, "c", listener(QStringLiteral("replaced")));
                             registerListener(table, "d", listener(QStringLiteral("behind")));
                             heard << QStringLiteral("b %1").arg(value);
                         }));
        registerListener(table, "c", listener(QStringLiteral("c")));
        notifyAll(table, 1);
        QCOMPARE(heard, (QStringList{QStringLiteral("b 1"), QStringLiteral("c 1")}));
        heard.clear();
        notifyAll(table, 2);
        QCOMPARE(heard,
                 (QStringList{QStringLiteral("before 2"), QStringLiteral("b 2"), QStringLiteral("replaced 2"),
                              QStringLiteral("behind 2")}));
    }

    void theLastListenerMayRegisterAnotherBehindItself()
    {
        registerListener(table, "b", std::function<void(int)>([this](int) {
                             registerListener(table, "c", listener(QStringLiteral("behind")));
                         }));
        notifyAll(table, 1);
        QCOMPARE(heard, QStringList());
        notifyAll(table, 2);
        QCOMPARE(heard, QStringList{QStringLiteral("behind 2")});
    }

    void aListenerMayDestroyTheTable()
    {
        auto own = std::make_unique<Listeners<int>>();
        registerListener(*own, "a", std::function<void(int)>([&own](int) { own.reset(); }));
        registerListener(*own, "b", listener(QStringLiteral("b")));
        notifyAll(*own, 1);
        QVERIFY(!own);
        QCOMPARE(heard, QStringList{QStringLiteral("b 1")});
    }

    void oneThreadMayRegisterWhileAnotherNotifies()
    {
        constexpr int Names = 500;
        std::atomic<int> calls{0};
        const std::function<void(int)> count = [&calls](int) { ++calls; };
        registerListener(table, "0", count);
        std::thread registering([this, &count] {
            for (int name = 0; name < Names; ++name)
                registerListener(table, std::to_string(name), count);
        });
        for (int call = 0; call < Names; ++call) {
            notifyAll(table, call);
            notifyRequester(table, "0", call);
        }
        registering.join();
        QCOMPARE(table.size(), std::size_t(Names));
        QVERIFY(calls >= 2 * Names);
    }

    void oneThreadMayChangeTheRequesterWhileAnotherNotifies()
    {
        std::string requester = "a long name, so that it has memory of its own";
        std::atomic<int> calls{0};
        for (const std::string &name : {requester, std::string("another long name with memory of its own")})
            registerListener(table, name, std::function<void(int)>([&calls](int) { ++calls; }));
        std::thread changing([&] {
            for (int change = 0; change < 500; ++change)
                setRequester(requester, (change % 2 == 0 ? std::next(table.begin()) : table.begin())->first);
        });
        for (int call = 0; call < 500; ++call)
            notifyRequester(table, requester, call);
        changing.join();
        QCOMPARE(calls.load(), 500);
        QCOMPARE(currentRequester(requester), table.begin()->first);
    }

private:
    std::function<void(int)> listener(const QString &name)
    {
        return [this, name](int value) { heard << QStringLiteral("%1 %2").arg(name).arg(value); };
    }
    std::function<void(int)> counting()
    {
        return [this, n = 0](int) mutable { heard << QString::number(++n); };
    }

    Listeners<int> table;
    QStringList heard;
};

QTEST_APPLESS_MAIN(ListenersTest)
#include "tst_listeners.moc"
