#include "factorymodewidget.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <malloc.h>
#include <memory>

using namespace LCD::FactoryModeImpl;

namespace {

constexpr size_t MenuLimit = 50 * 1024; // bytes
constexpr size_t Slack = 4 * 1024;      // Qt keeps some blocks
constexpr int Attempts = 5;             // it keeps more if the machine is busy

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::unique_ptr<FactoryModeWidget> openMenu(QWidget &parent)
{
    auto menu = std::make_unique<FactoryModeWidget>(&parent);
    menu->setFactoryModeData(QStringLiteral("menuConfigPath"), QStringLiteral(LCD_SOURCE_DIR "/share"));
    menu->setFactoryModeSize({800, 480});
    QCoreApplication::processEvents();
    menu->enterFactoryMode();
    QCoreApplication::processEvents();
    return menu;
}

}

/// The heap that the component adds to a host. The parent stays hidden, so there is no backing store.
class ComponentMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void menuNeedsLittleAndGivesItBack()
    {
        QWidget parent;
        openMenu(parent); // fills the caches of Qt
        const size_t before = heapInUse();
        auto menu = openMenu(parent);
        const size_t used = heapInUse() - before;
        QVERIFY2(used < MenuLimit, qPrintable(QStringLiteral("%1 bytes").arg(used)));
        QVERIFY(used > Slack);
        menu.reset();
        size_t kept = heapInUse() - before;
        for (int attempt = 1; attempt < Attempts && kept >= Slack; ++attempt) {
            const size_t again = heapInUse();
            openMenu(parent);
            kept = heapInUse() - again;
        }
        QVERIFY2(kept < Slack, qPrintable(QStringLiteral("%1 bytes").arg(kept)));
    }
};

QTEST_MAIN(ComponentMemoryTest)

#include "tst_componentmemory.moc"
