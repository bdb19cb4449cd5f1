// The libraries work in a process that doesn't link them and gets them with a library that it loads.

#include <QtCore/QFile>
#include <QtCore/QLibrary>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <memory>

class TestLateLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bringsIconsAndTextsAlong();
};

void TestLateLoading::bringsIconsAndTextsAlong()
{
    const QString icon = QStringLiteral(":/lcdwidgets/icons/NetTest.svg");
    QVERIFY(!QFile::exists(icon));
    QLibrary library(QStringLiteral(LATE_PAGE_LIBRARY));
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto makePage = reinterpret_cast<QWidget *(*)()>(library.resolve("makeLatePage"));
    QVERIFY2(makePage, qPrintable(library.errorString()));
    const std::unique_ptr<QWidget> page(makePage());
    QCOMPARE(page->property("title").toString(), QStringLiteral("Net ports"));
    QVERIFY(QFile::exists(icon));
    page->resize(800, 480);
    const QImage picture = page->grab().toImage();
    QVERIFY2(picture.pixel(2, 2) != qRgb(0, 0, 0), "the page has painted");
}

QTEST_MAIN(TestLateLoading)
#include "tst_lateloading.moc"
