#include "linkpayload.h"

#include "recordinghost.h"

#include <QtTest/QtTest>

#include <typeinfo>

using namespace LCD::FactoryModeImpl;

namespace {

struct Record
{
    int value;
};
using Records = std::vector<Record>;

constexpr LinkPayloadTexts Texts = {"Test: need type X, got", "Test: ptr is nullptr"};

}

class LinkPayloadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsComeOutAsTheyWentIn()
    {
        const LogCapture log;
        const auto sent = std::make_shared<Records>(Records{{1}, {2}});
        QCOMPARE(unpackLinkPayload<Record>(sent, Texts), sent);
        QCOMPARE(log.lines(), QStringList());
    }

    void wrongType_data()
    {
        QTest::addColumn<std::any>("payload");
        QTest::addColumn<QString>("typeName");
        QTest::newRow("nothing") << std::any() << QString::fromLatin1(typeid(void).name());
        QTest::newRow("a number") << std::any(42) << QString::fromLatin1(typeid(int).name());
        QTest::newRow("the list itself") << std::any(Records()) << QString::fromLatin1(typeid(Records).name());
        QTest::newRow("a pointer to constant records")
            << std::any(std::make_shared<const Records>())
            << QString::fromLatin1(typeid(std::shared_ptr<const Records>).name());
        QTest::newRow("a pointer to other records")
            << std::any(std::make_shared<std::vector<int>>())
            << QString::fromLatin1(typeid(std::shared_ptr<std::vector<int>>).name());
    }

    void wrongType()
    {
        QFETCH(std::any, payload);
        QFETCH(QString, typeName);
        const LogCapture log;
        QVERIFY(!unpackLinkPayload<Record>(std::move(payload), Texts));
        QCOMPARE(log.lines(), QStringList{QStringLiteral("warning|Test: need type X, got ") + typeName});
        QVERIFY(!typeName.startsWith(QLatin1Char('*')));
        QCOMPARE(log.entries().at(0).category, QByteArray("default"));
    }

    void typeLocalToOneFileIsNamedWithoutItsStar()
    {
        struct Local
        {
        };
        const LogCapture log;
        QVERIFY(!unpackLinkPayload<Record>(std::any(Local()), Texts));
        QCOMPARE(log.warnings().size(), 1);
        QVERIFY2(!log.warnings().at(0).contains(QLatin1Char('*')), qPrintable(log.warnings().at(0)));
    }

    void nullPointer()
    {
        const LogCapture log;
        QVERIFY(!unpackLinkPayload<Record>(std::any(std::shared_ptr<Records>()), Texts));
        QCOMPARE(log.lines(), QStringList{QStringLiteral("warning|Test: ptr is nullptr")});
    }
};

QTEST_APPLESS_MAIN(LinkPayloadTest)
#include "tst_linkpayload.moc"
