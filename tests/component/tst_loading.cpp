#include "keytranslation.h"
#include "recordingframe.h"
#include "virtualtime.h"

#include "lcd/factorymode/ilcdfactorymode.h"
#include "mirel/component.h"

#include <QtTest/QtTest>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedLayout>

#include <dlfcn.h>
#include <memory>
#include <thread>

using LCD::FactoryMode::ILcdFactoryMode;

namespace {

/// A library as a host loads it. This program isn't linked to the component.
class Library
{
public:
    explicit Library(const QString &path) : m_handle(dlopen(path.toLocal8Bit(), RTLD_NOW | RTLD_LOCAL))
    {
        if (!m_handle)
            qFatal("%s", dlerror());
    }
    ~Library() { close(); }
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    void close()
    {
        if (m_handle)
            dlclose(std::exchange(m_handle, nullptr));
    }
    void initialize(mirel::IHost *host) const { function<void(void *)>("pluginit")(host); }
    mirel::ComponentInfo *component() const
    {
        return function<const mirel::PluginInfo *()>("pluginfo")()->componentInfoTable[0];
    }

private:
    template <class Function>
    Function *function(const char *name) const
    {
        return reinterpret_cast<Function *>(dlsym(m_handle, name));
    }

    void *m_handle;
};

QString libraryPath(const char *name)
{
    return QStringLiteral(LCD_BUILD_DIR "/lib/") + QLatin1String(name);
}

/// The factory mode widget of a library, with a menu of both test pages. Its calls are recorded by the host.
class Menu
{
public:
    Menu(const Library &library, RecordingHost &host) : m_deletor(library.component()->deletor)
    {
        write("factorymenu.xml", R"(<LCD><MenuBar><MenuItem Key="em.factorytest.AgingMode"/>
                                    <MenuItem Key="em.factorytest.completemachine"/></MenuBar></LCD>)");
        write("factorykeychecklist.xml", R"(<LCD><LcdKeys><LcdKey Value="10" Name="ONE"/>
                                            <LcdKey Value="11" Name="TWO"/></LcdKeys></LCD>)");
        m_widget = static_cast<ILcdFactoryMode *>(library.component()->creator());
        host.offer("lcdFactoryModeWidget", m_widget);
        m_widget->setFactoryModeData(QStringLiteral("menuConfigPath"), m_directory.path());
    }
    ~Menu() { remove(); }
    Menu(const Menu &) = delete;
    Menu &operator=(const Menu &) = delete;

    void remove()
    {
        if (m_widget)
            m_deletor(std::exchange(m_widget, nullptr));
    }
    void open(int row)
    {
        auto *list = m_widget->findChildren<QListWidget *>().at(0);
        Q_EMIT list->itemClicked(list->item(row));
    }
    void openAgingTest() { open(0); }
    void openMachineTest() { open(1); }
    void clickRight(int times = 1)
    {
        for (; times > 0; --times)
            Q_EMIT frame()->signalRightBtnClicked(false);
    }

private:
    void write(const char *name, const char *content) const
    {
        QFile file(m_directory.filePath(QLatin1String(name)));
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
        file.write(content);
    }
    LCD::Widget::FactoryTestFrame *frame() const
    {
        return frameOf(*qobject_cast<QStackedLayout *>(m_widget->layout())->currentWidget());
    }

    QTemporaryDir m_directory;
    std::function<void(void *)> m_deletor;
    ILcdFactoryMode *m_widget = nullptr;
};

/// Goes to the key phase of the machine test.
void goToKeyPhase(Menu &menu)
{
    menu.openMachineTest();
    menu.clickRight(); // starts the run
    VirtualTime::advance(20000);
    menu.clickRight(14); // the levels and twelve patterns
    VirtualTime::advance(20000);
    menu.clickRight();
}

/// Runs the aging test for 30 s and stops it. Returns the calls.
QStringList session(Menu &menu, RecordingHost &host)
{
    host.calls.clear();
    menu.openAgingTest();
    menu.clickRight();
    VirtualTime::advance(30000);
    menu.clickRight();
    return host.calls.take();
}

}

/// Loads and unloads the component, and uses it twice in one process.
class LoadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<RecordingHost>();
        recordFrameCalls(&m_host->calls);
    }
    void cleanup()
    {
        recordFrameCalls(nullptr);
        m_host.reset();
        VirtualTime::settle();
    }

    void aLibraryIsUsedAgainAfterDlclose()
    {
        QStringList first;
        for (int use = 0; use < 5; ++use) {
            Library library(libraryPath("liblcdfactorymodeimpl.so"));
            library.initialize(m_host.get());
            Menu menu(library, *m_host);
            const QStringList calls = session(menu, *m_host);
            QVERIFY(calls.size() > 50);
            if (use == 0)
                first = calls;
            QCOMPARE(calls, first);
        }
    }

    // The timer of the aging test is running, the screen of a key event is queued, and a service keeps its listener.
    void nothingHappensAfterTheWidgetAndTheLibraryAreGone()
    {
        Library library(libraryPath("liblcdfactorymodeimpl.so"));
        library.initialize(m_host.get());
        LCD::FactoryMode::KeyListener listener;
        {
            Menu menu(library, *m_host);
            goToKeyPhase(menu);
            menu.openAgingTest();
            menu.clickRight();
            listener = m_host->keyboard.listener();
            QVERIFY(listener);
            std::thread([&listener] { listener(10, 1.0F, 0, {}, {}, {}); }).join();
            QVERIFY(m_host->calls.take().contains(QStringLiteral("keyboard.setKeyLedUpdating(true)")));
        }
        library.close();
        m_host->calls.clear();
        VirtualTime::advance(100000);
        listener(11, 1.0F, 0, {}, {}, {});
        QCOMPARE(m_host->calls.take(), QStringList());
    }

    // The code stays in memory, so a host may close the library before it deletes the widget.
    void aWidgetWorksAfterDlclose()
    {
        Library library(libraryPath("liblcdfactorymodeimpl.so"));
        library.initialize(m_host.get());
        Menu menu(library, *m_host);
        const QStringList before = session(menu, *m_host);
        library.close();
        QCOMPARE(session(menu, *m_host), session(menu, *m_host));
        QCOMPARE(session(menu, *m_host).size(), before.size() - 1); // the frame is there already
        const Library again(libraryPath("liblcdfactorymodeimpl.so"));
        QVERIFY(again.component()->creator);
    }

    void twoWidgetsOfOneLibraryDoNotDisturbEachOther()
    {
        const Library library(libraryPath("liblcdfactorymodeimpl.so"));
        library.initialize(m_host.get());
        Menu alone(library, *m_host);
        const QStringList calls = session(alone, *m_host);
        alone.remove();

        Menu second(library, *m_host);
        auto first = std::make_unique<Menu>(library, *m_host);
        goToKeyPhase(*first);
        QCOMPARE(session(second, *m_host), calls);
        first.reset();
        second.openMachineTest();
        m_host->calls.clear();
        second.clickRight();
        VirtualTime::advance(20000);
        QVERIFY(m_host->calls.take().contains(QStringLiteral("frame.log(Screen brightness done, 0, 2)")));
    }

    // Two files with the same code: one call of pluginit() is enough for both.
    void librariesShareTheHost()
    {
        QTemporaryDir directory;
        const QString copy = directory.filePath(QStringLiteral("liblcdfactorymodeimpl.so"));
        QVERIFY(QFile::copy(libraryPath("liblcdfactorymodeimpl.so"), copy));
        const Library original(libraryPath("liblcdfactorymodeimpl.so"));
        const Library other(copy);
        m_host->remove("lcdFactoryModeWidget");
        mirel::api::get().setHost(nullptr);
        other.initialize(m_host.get());
        QCOMPARE(mirel::api::get().host(), static_cast<mirel::IHost *>(m_host.get()));

        Menu first(original, *m_host);
        const QStringList calls = session(first, *m_host);
        QVERIFY(calls.contains(QStringLiteral("keyboard.setScreenBrightness(0, 10)")));
        Menu second(other, *m_host);
        QCOMPARE(session(second, *m_host), calls);
        original.initialize(nullptr);
        QVERIFY(!mirel::api::get().host());
    }

#ifdef WITH_REPAIR_PAGES
    void aSecondComponentLibrarySharesTheHost()
    {
        const Library library(libraryPath("liblcdfactorymodeimpl.so"));
        const Library pages(libraryPath("librepairpages.so"));
        library.initialize(m_host.get());
        void *repair = pages.component()->creator();
        QVERIFY(repair);
        pages.component()->deletor(repair);
        pages.initialize(nullptr);
        Menu menu(library, *m_host);
        QVERIFY(!session(menu, *m_host).join(QLatin1Char(' ')).contains(QStringLiteral("keyboard.")));
    }
#endif

private:
    std::unique_ptr<RecordingHost> m_host;
};

VIRTUAL_TIME_TEST_MAIN(LoadingTest)
#include "tst_loading.moc"
