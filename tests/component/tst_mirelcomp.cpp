#include "menufixture.h"
#include "mirelcomp.h"

#include <QtTest/QtTest>

#include <cstring>
#include <new>

using namespace LCD;
using FactoryModeImpl::FactoryModeWidget;

static bool memoryHasRunOut = false;

// The form of operator new that the creator uses.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    try {
        return memoryHasRunOut ? nullptr : ::operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

namespace {

struct PlainMode final : FactoryMode::ILcdFactoryMode
{
    void enterFactoryMode() override {}
    void exitFactoryMode() override {}
    bool isFactoryMode() const override { return false; }
    void registerTestPatternDisplayCallback(const std::string &, const std::function<void(int, int, int)> &) override {}
    void notifyTestPatternChanged(int, int, int) override {}
};

template <class Value>
Value readAt(const void *record, std::size_t offset)
{
    Value value;
    std::memcpy(&value, static_cast<const char *>(record) + offset, sizeof value);
    return value;
}

mirel::ComponentInfo &component()
{
    return *lcdfactorymodeimpl_mirel_componentInfoTable[0];
}

}

class tst_MirelComp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordBeforeInit()
    {
        QVERIFY(!mirel::api::get().host());
        const void *record = pluginfo();
        QCOMPARE(readAt<const char *>(record, 0), "0.1");
        QVERIFY(readAt<const void *>(record, 8) == lcdfactorymodeimpl_mirel_componentInfoTable);
        QCOMPARE(readAt<const char *>(record, 16), "lcdfactorymodeimpl");
        QCOMPARE(readAt<const char *>(record, 24), "1.0.0");
        QCOMPARE(readAt<const char *>(record, 32), "{\"end\":0 }");
        QCOMPARE(std::strlen(readAt<const char *>(record, 32)), std::size_t(10));
    }
    void tableHoldsOneComponent()
    {
        QCOMPARE(sizeof lcdfactorymodeimpl_mirel_componentInfoTable, std::size_t(16));
        int count = 0;
        while (lcdfactorymodeimpl_mirel_componentInfoTable[count])
            ++count;
        QCOMPARE(count, 1);
        QCOMPARE(&component(), &mirel::ComponentTmpl<FactoryModeWidget>::componentInfo);
        QCOMPARE(readAt<const char *>(&component(), 96), "lcd.factory.mode");
        QCOMPARE(readAt<const char *>(&component(), 104), "{\"end\":0 }\r\n");
        QCOMPARE(std::strlen(readAt<const char *>(&component(), 104)), std::size_t(12));
    }
    void lookupWithoutHost()
    {
        QVERIFY(!mirel::api::get().service<void>("lcdKeyboardEvent"));
        FactoryModeWidget widget(nullptr);
        widget.enterFactoryMode();
        QVERIFY(widget.isVisible());
    }
    void initStoresTheHostEachTime()
    {
        RecordingHost first;
        RecordingHost second;
        pluginit(static_cast<mirel::IHost *>(&first));
        QCOMPARE(mirel::api::get().host(), &first);
        QCOMPARE(readAt<void *>(&mirel::api::get(), 0), static_cast<mirel::IHost *>(&first));
        pluginit(static_cast<mirel::IHost *>(&second));
        QCOMPARE(mirel::api::get().host(), &second);
        QVERIFY(!mirel::api::get().service<void>("unknown"));
        QCOMPARE(second.lookups, QStringList{QStringLiteral("unknown")});
        QCOMPARE(readAt<void *>(&mirel::api::get(), 8), nullptr);
        QCOMPARE(readAt<void *>(&mirel::api::get(), 16), nullptr);
        pluginit(nullptr);
    }
    void creatorGivesTheWidgetsPrimaryAddress()
    {
        void *object = component().creator();
        auto *widget = static_cast<FactoryModeWidget *>(object);
        QVERIFY(static_cast<FactoryMode::ILcdFactoryMode *>(widget) == object);
        QVERIFY(static_cast<QWidget *>(widget) == object);
        QVERIFY(!widget->parent());
        QVERIFY(!component().getMessageHandler(object));
        QVERIFY(!component().getMessageHandler(nullptr));
        const QPointer<QWidget> watched(widget);
        component().deletor(object);
        QVERIFY(!watched);
    }
    void creatorWithoutMemoryGivesNull()
    {
        memoryHasRunOut = true;
        void *const object = component().creator();
        memoryHasRunOut = false;
        QVERIFY(!object);
        QVERIFY(QApplication::allWidgets().isEmpty());
    }
    void deletorOfNull() { component().deletor(nullptr); }
    void eachCallMakesAnother()
    {
        void *first = component().creator();
        void *second = component().creator();
        QVERIFY(first != second);
        component().deletor(first);
        component().deletor(second);
    }
    void interfaceDefaultsDoNothing()
    {
        PlainMode mode;
        const QSize before = mode.size();
        mode.setFactoryModeData(QStringLiteral("menuConfigPath"), QStringLiteral("/"));
        mode.setFactoryModeSize(QSize(321, 123));
        QCOMPARE(mode.size(), before);
    }
    // A pointer to a virtual member function holds its offset in the table plus one.
    void orderOfTheVirtualOperations()
    {
        using Mode = FactoryMode::ILcdFactoryMode;
        const auto offset = [](auto operation) { return readAt<std::ptrdiff_t>(&operation, 0); };
        const std::vector<std::ptrdiff_t> offsets{
            offset(&Mode::enterFactoryMode),        offset(&Mode::exitFactoryMode),
            offset(&Mode::isFactoryMode),           offset(&Mode::setFactoryModeData),
            offset(&Mode::setFactoryModeSize),      offset(&Mode::registerTestPatternDisplayCallback),
            offset(&Mode::notifyTestPatternChanged)};
        for (std::size_t i = 1; i < offsets.size(); ++i)
            QCOMPARE(offsets[i] - offsets[i - 1], std::ptrdiff_t(sizeof(void *)));
        QVERIFY(offsets.front() > offset(&QWidget::setVisible));
    }
    void metaObjectOfTheInterface()
    {
        const QMetaObject &meta = FactoryMode::ILcdFactoryMode::staticMetaObject;
        QCOMPARE(meta.className(), "LCD::FactoryMode::ILcdFactoryMode");
        QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
        const int first = meta.methodOffset();
        QCOMPARE(meta.methodCount() - first, 2);
        QCOMPARE(meta.method(first).methodSignature(), QByteArray("requestShowContainer(QString)"));
        QCOMPARE(meta.method(first).parameterNames(), QList<QByteArray>{"containerKey"});
        QCOMPARE(meta.method(first + 1).methodSignature(), QByteArray("requestExitFactoryMode()"));
        QCOMPARE(meta.method(first).methodType(), QMetaMethod::Signal);
        QCOMPARE(sizeof(FactoryModeWidget), std::size_t(56));
    }
};

QTEST_MAIN(tst_MirelComp)
#include "tst_mirelcomp.moc"
