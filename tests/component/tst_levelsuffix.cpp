#include "levelsuffix.h"

#include <QtTest/QtTest>

using namespace LCD::FactoryModeImpl;

class LevelSuffixTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void suffix_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("percent");
        for (const int level : {10, 30, 50, 70, 100}) {
            const QString text = QStringLiteral(" %1%").arg(level);
            QTest::addRow("%d", level) << level << text << text;
        }
        QTest::newRow("idle") << 0 << QString() << QStringLiteral(" 10%");
        for (const int level : {-10, -1, 1, 9, 11, 20, 99, 101, 102, 103, 1000})
            QTest::addRow("%d", level) << level << QString() << QString();
    }

    void suffix()
    {
        QFETCH(const int, level);
        QFETCH(const QString, suffix);
        QFETCH(const QString, percent);
        QCOMPARE(levelSuffix(level), suffix);
        QCOMPARE(brightnessPercentSuffix(level), percent);
    }
};

QTEST_APPLESS_MAIN(LevelSuffixTest)
#include "tst_levelsuffix.moc"
