// What each operation of the frame puts on the screen, as its properties tell it.

#include "frametest.h"

#include <QtCore/QSet>
#include <QtGui/QScreen>
#include <QtGui/private/qfont_p.h>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

using namespace LCD::Widget;

namespace {

/// Counts how often a widget is painted, and where.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }

    int count = 0;
    QRect area;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            area |= static_cast<QPaintEvent *>(event)->rect();
        }
        return false;
    }
};

/// Arranges the frame and paints it. Arranging is an event, which posts the event that paints.
void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

/// Returns the sizes in pixels of the fonts that Qt unloads when it cleans up, because only its cache refers to them.
QSet<int> unusedFontSizes()
{
    QSet<int> sizes;
    const auto &fonts = QFontCache::instance()->engineDataCache;
    for (auto font = fonts.begin(); font != fonts.end(); ++font) {
        if (font.value()->ref.loadRelaxed() == 1)
            sizes << qRound(font.key().pixelSize);
    }
    return sizes;
}

}

class TestFrameScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAWidgetAndOnePointer();
    void startsEmptyWithoutButtons();
    void showsTitleAndIcon();
    void showsTheHeading();
    void hidesTheHeading();
    void addTestStepsReplacesTheList();
    void addTestStepAppendsInItsColor();
    void aBlankLineIsALine();
    void clearAllStepsRemovesLinesAndMarks();
    void marksALine();
    void aMarkSurvivesWhatIsNotTheList();
    void ignoresAMarkForNoLine();
    void anUnknownMarkIsNone();
    void showsCaptionsAndButtons();
    void showsTheStatusIcon();
    void keepsTheKeyMode();
    void keepsTheContentFontSize();
    void showsTheLogOnlyWhenThereIsOne();
    void keepsTheLastLogLines();
    void logsOnAConstantFrame();
    void paintsOnlyPartsThatChange();
    void stepsThatAreSetAgainAreNotPainted();
    void aMarkIsPaintedAlone();
    void aMarkOfAVerdictPaintsTheVerdict();
    void scrolledStepsThatAreSetAgainArePaintedFromTheTop();
    void fontsOfThePartsAreKept_data();
    void fontsOfThePartsAreKept();
    void aMarkThatIsNotPaintedLoadsNoFont();
};

void TestFrameScreen::isAWidgetAndOnePointer()
{
    QCOMPARE(sizeof(FactoryTestFrame), sizeof(QWidget) + sizeof(void *));
    QCOMPARE(FactoryTestFrame::staticMetaObject.methodCount() - QWidget::staticMetaObject.methodCount(), 3);
}

void TestFrameScreen::startsEmptyWithoutButtons()
{
    FactoryTestFrame frame(nullptr);
    QCOMPARE(frame.property("title").toString(), QString());
    QCOMPARE(frame.property("steps").toList(), QVariantList());
    QCOMPARE(frame.property("leftVisible").toBool(), false);
    QCOMPARE(frame.property("rightVisible").toBool(), false);
    QCOMPARE(frame.property("statusIconVisible").toBool(), false);
    QCOMPARE(frame.property("controlFocus").toString(), QStringLiteral("none"));
    QCOMPARE(frame.property("keyEventsEnabled").toBool(), true);
    QCOMPARE(frame.property("respondsToBack").toBool(), true);
    QCOMPARE(frame.property("leftEnabled").toBool(), true);
}

void TestFrameScreen::showsTitleAndIcon()
{
    FrameTest test;
    test.frame->setTitle(QStringLiteral("Aging test"));
    test.frame->setTitleIcon(QStringLiteral("FactoryIconLabel"), QStringLiteral("AgingMode"));
    QCOMPARE(test.shown("title").toString(), QStringLiteral("Aging test"));
    QCOMPARE(test.shown("titleIcon").toString(), QStringLiteral("AgingMode"));
    const auto *icon = test.frame->findChild<QWidget *>(QStringLiteral("FactoryIconLabel"));
    QVERIFY(icon && icon->isVisible());
    QCOMPARE(test.frame->findChild<QLabel *>(QStringLiteral("FactoryTitleLabel"))->text(),
             QStringLiteral("Aging test"));
    test.frame->setTitleIcon(QStringLiteral("OtherName"), QStringLiteral("MachineMode"));
    QCOMPARE(icon->objectName(), QStringLiteral("OtherName"));
}

void TestFrameScreen::showsTheHeading()
{
    FrameTest test;
    test.frame->setStepTitle(QStringLiteral("Test steps"), QColor(1, 2, 3));
    QCOMPARE(test.shown("stepTitle").toString(), QStringLiteral("Test steps"));
    QCOMPARE(test.shown("stepTitleColor").toString(), QStringLiteral("#010203"));
    const auto *heading = test.frame->findChild<QLabel *>(QStringLiteral("FactoryStepTitle"));
    QTRY_VERIFY(heading->isVisible());
    QCOMPARE(heading->text(), QStringLiteral("Test steps"));
    QCOMPARE(heading->palette().color(QPalette::WindowText), QColor(1, 2, 3));
}

void TestFrameScreen::hidesTheHeading()
{
    FrameTest test;
    test.frame->setStepTitle(QStringLiteral("Test steps"), Qt::white);
    test.frame->setStepTitleVisible(false);
    const auto *heading = test.frame->findChild<QLabel *>(QStringLiteral("FactoryStepTitle"));
    QTRY_VERIFY(!heading->isVisible());
    QCOMPARE(test.shown("stepTitleVisible").toBool(), false);
    QCOMPARE(test.shown("stepTitle").toString(), QStringLiteral("Test steps"));
    test.frame->setStepTitleVisible(true);
    QTRY_VERIFY(heading->isVisible());
}

void TestFrameScreen::addTestStepsReplacesTheList()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a"), QStringLiteral("b")});
    test.frame->setStepIcon(0, IconPass);
    test.frame->addTestSteps({QStringLiteral("c"), QStringLiteral("d")});
    QCOMPARE(test.lines(), (QStringList{QStringLiteral("c"), QStringLiteral("d")}));
    QCOMPARE(test.marks(), (QStringList{QStringLiteral("none"), QStringLiteral("none")}));
    QCOMPARE(test.shown("steps").toList().first().toMap().value(QStringLiteral("color")).toString(),
             QStringLiteral("#ffffff"));
}

void TestFrameScreen::addTestStepAppendsInItsColor()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a")});
    test.frame->addTestStep(QStringLiteral("b"), Qt::red, false);
    QCOMPARE(test.lines(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(test.shown("steps").toList().last().toMap().value(QStringLiteral("color")).toString(),
             QStringLiteral("#ff0000"));
}

void TestFrameScreen::aBlankLineIsALine()
{
    FrameTest test;
    test.frame->addTestStep(QStringLiteral("a"), Qt::white, false);
    test.frame->addTestStep(QStringLiteral(" "), Qt::red, false);
    QCOMPARE(test.lines(), (QStringList{QStringLiteral("a"), QStringLiteral(" ")}));
}

void TestFrameScreen::clearAllStepsRemovesLinesAndMarks()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a")});
    test.frame->setStepIcon(0, IconPass);
    test.frame->clearAllSteps();
    QCOMPARE(test.lines(), QStringList());
    test.frame->addTestStep(QStringLiteral("b"), Qt::white, false);
    QCOMPARE(test.marks(), QStringList{QStringLiteral("none")});
}

void TestFrameScreen::marksALine()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    const QImage unmarked = test.frame->grab().toImage();
    test.frame->setStepIcon(0, IconPass);
    test.frame->setStepIcon(1, IconNotPass);
    QCOMPARE(test.marks(), QStringLiteral("pass|notpass|none").split(QLatin1Char('|')));
    const QImage marked = test.frame->grab().toImage();
    QVERIFY(marked != unmarked);
    test.frame->setStepIcon(0, IconNone);
    test.frame->setStepIcon(1, IconNone);
    QCOMPARE(test.frame->grab().toImage(), unmarked);
}

void TestFrameScreen::aMarkSurvivesWhatIsNotTheList()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a"), QStringLiteral("b")});
    test.frame->setStepIcon(1, IconPass);
    test.frame->setTitle(QStringLiteral("T-Bar"));
    test.frame->setStepTitle(QStringLiteral("Steps"), Qt::white);
    test.frame->setStepTitleVisible(false);
    test.frame->setRightBtnText(QStringLiteral("Next"));
    test.frame->setStatusIconVisible(true);
    test.frame->setContentFontSize(20);
    test.frame->addTestStep(QStringLiteral("c"), Qt::red, false);
    test.resize(480, 320);
    test.hide();
    test.show();
    QCOMPARE(test.marks(), QStringLiteral("none|pass|none").split(QLatin1Char('|')));
}

void TestFrameScreen::ignoresAMarkForNoLine()
{
    FrameTest test;
    test.frame->setStepIcon(0, IconPass);
    test.frame->addTestSteps({QStringLiteral("a")});
    for (int index : {-1, 1, 1000000})
        test.frame->setStepIcon(index, IconPass);
    QCOMPARE(test.marks(), QStringList{QStringLiteral("none")});
}

void TestFrameScreen::anUnknownMarkIsNone()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a")});
    test.frame->setStepIcon(0, static_cast<IconType>(7));
    QCOMPARE(test.marks(), QStringList{QStringLiteral("none")});
    QVERIFY(!test.frame->grab().isNull());
}

void TestFrameScreen::showsCaptionsAndButtons()
{
    FrameTest test;
    QCOMPARE(test.shown("leftText").toString(), QStringLiteral("Fail"));
    QCOMPARE(test.shown("rightText").toString(), QStringLiteral("Pass"));
    QVERIFY(test.left()->isVisible() && test.right()->isVisible());
    QVERIFY(test.left()->geometry().right() < test.right()->geometry().left());
    test.frame->setLeftBtnVisible(false);
    QVERIFY(!test.left()->isVisible() && test.right()->isVisible());
    QCOMPARE(test.shown("leftVisible").toBool(), false);
    test.frame->setRighttBtnVisible(false);
    QVERIFY(!test.right()->isVisible());
    QCOMPARE(test.shown("rightVisible").toBool(), false);
}

void TestFrameScreen::showsTheStatusIcon()
{
    FrameTest test;
    const auto *icon = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStatusIcon"));
    test.frame->setStatusIcon(QStringLiteral("NetPass"));
    QVERIFY2(!icon->isVisible(), "a prepared icon stays hidden");
    test.frame->setStatusIconVisible(true);
    QVERIFY(icon->isVisible());
    QCOMPARE(test.shown("statusIcon").toString(), QStringLiteral("NetPass"));
    QCOMPARE(test.shown("statusIconVisible").toBool(), true);
    QTRY_VERIFY2(icon->height() > test.height() / 3, "large enough to be seen from afar");
    test.frame->setStatusIconVisible(false);
    QVERIFY(!icon->isVisible());
}

void TestFrameScreen::keepsTheKeyMode()
{
    FrameTest test;
    test.frame->setFactoryTestKeyMode(QStringLiteral("mode-2"));
    QCOMPARE(test.shown("keyMode").toString(), QStringLiteral("mode-2"));
}

void TestFrameScreen::keepsTheContentFontSize()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a line")});
    test.frame->setContentFontSize(30);
    QCoreApplication::processEvents();
    const QImage small = test.frame->grab().toImage();
    test.frame->setContentFontSize(44);
    QCOMPARE(test.shown("contentFontSize").toInt(), 44);
    QTRY_VERIFY(test.frame->grab().toImage() != small);
    for (int size : {0, -5, 100000})
        test.frame->setContentFontSize(size);
    QVERIFY(!test.frame->grab().isNull());
}

void TestFrameScreen::showsTheLogOnlyWhenThereIsOne()
{
    FrameTest test;
    const auto *pane = test.frame->findChild<FactoryTestRightFrame *>();
    QVERIFY(!pane->isVisible());
    test.frame->log(QStringLiteral("Net port pass"), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
    test.frame->log(QStringLiteral("Test failed"), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogError);
    QCOMPARE(test.shown("log").toStringList(),
             (QStringList{QStringLiteral("Net port pass"), QStringLiteral("Test failed")}));
    QTRY_VERIFY(pane->isVisible());
}

void TestFrameScreen::keepsTheLastLogLines()
{
    FrameTest test;
    for (int i = 0; i < 600; ++i)
        test.frame->log(QString::number(i), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
    const QStringList log = test.shown("log").toStringList();
    QCOMPARE(log.size(), 500);
    QCOMPARE(log.first(), QStringLiteral("100"));
    QCOMPARE(log.last(), QStringLiteral("599"));
}

void TestFrameScreen::logsOnAConstantFrame()
{
    FrameTest test;
    const FactoryTestFrame &frame = *test.frame;
    frame.log(QStringLiteral("line"), static_cast<FactoryTestRightFrame::FactoryTestLogType>(0),
              static_cast<FactoryTestRightFrame::FactoryTestLogLevel>(2));
    QCOMPARE(test.shown("log").toStringList(), QStringList{QStringLiteral("line")});
}

// A page repeats most of its screen with each step. The log is the most expensive part.
void TestFrameScreen::paintsOnlyPartsThatChange()
{
    FrameTest test;
    const auto showScreen = [&test](const QStringList &steps) {
        test.frame->setTitle(QStringLiteral("Net port"));
        test.frame->setStepTitle(QStringLiteral("Test step"), Qt::white);
        test.frame->addTestSteps(steps);
        test.frame->setLeftBtnText(QStringLiteral("Fail"));
        test.frame->setRightBtnText(QStringLiteral("Next"));
        test.frame->setControlFocus(FocusRightButton);
        settle();
    };
    test.frame->log(QStringLiteral("Screen pass"), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
    showScreen({QStringLiteral("One")});
    QTRY_VERIFY(test.frame->findChild<QWidget *>(QStringLiteral("FactoryLogPane"))->isVisible());
    showScreen({QStringLiteral("Two")});
    PaintCounter steps(test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList")));
    PaintCounter log(test.frame->findChild<QWidget *>(QStringLiteral("FactoryLogPane")));
    PaintCounter title(test.frame->findChild<QWidget *>(QStringLiteral("FactoryTitleLabel")));
    PaintCounter heading(test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepTitle")));
    PaintCounter left(test.left());
    PaintCounter right(test.right());
    showScreen({QStringLiteral("Three")});
    QCOMPARE(steps.count, 1);
    QCOMPARE(log.count, 0);
    QCOMPARE(title.count, 0);
    QCOMPARE(heading.count, 0);
    QCOMPARE(left.count, 0);
    QCOMPARE(right.count, 0);
}

void TestFrameScreen::stepsThatAreSetAgainAreNotPainted()
{
    FrameTest test;
    const auto setSteps = [&test](const QColor &color) {
        test.frame->clearAllSteps();
        test.frame->addTestStep(QStringLiteral("One"), Qt::white, false);
        test.frame->addTestStep(QStringLiteral("Two"), color, false);
        settle();
    };
    setSteps(Qt::white);
    auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    PaintCounter steps(list);
    setSteps(Qt::white);
    QCOMPARE(steps.count, 0);
    setSteps(Qt::green);
    QCOMPARE(steps.count, 1);
    QCOMPARE(steps.area, list->rect());
}

void TestFrameScreen::aMarkIsPaintedAlone()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
    settle();
    auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    PaintCounter steps(list);
    test.frame->setStepIcon(1, IconPass);
    settle();
    QCOMPARE(steps.count, 1);
    QVERIFY2(steps.area.width() < list->width() / 4, "only the mark is painted, not its line");
    const QImage picture = test.screen()->grabWindow(test.winId()).toImage();
    QCOMPARE(picture, test.grab().toImage().convertToFormat(picture.format()));
}

void TestFrameScreen::aMarkOfAVerdictPaintsTheVerdict()
{
    FrameTest test;
    test.frame->addTestStep(QStringLiteral("Passed"), Qt::green, false);
    settle();
    auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    PaintCounter steps(list);
    test.frame->setStepIcon(0, IconNotPass);
    settle();
    QCOMPARE(steps.count, 1);
    QCOMPARE(steps.area, list->rect());
}

void TestFrameScreen::scrolledStepsThatAreSetAgainArePaintedFromTheTop()
{
    FrameTest test;
    QStringList lines;
    for (int line = 0; line < 200; ++line)
        lines << QString::number(line);
    const auto setSteps = [&] {
        test.frame->addTestSteps(lines);
        settle();
    };
    setSteps();
    auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    test.press(Qt::Key_Down);
    settle();
    PaintCounter steps(list);
    setSteps();
    QCOMPARE(steps.count, 1);
    QCOMPARE(steps.area, list->rect());
}

void TestFrameScreen::fontsOfThePartsAreKept_data()
{
    QTest::addColumn<FrameChange>("change");
    const auto row = [](const char *part, const FrameChange &change) { QTest::newRow(part) << change; };
    row("title", [](auto &frame, const QString &text) { frame.setTitle(text); });
    row("heading", [](auto &frame, const QString &text) { frame.setStepTitle(text, Qt::white); });
    row("steps", [](auto &frame, const QString &text) { frame.addTestSteps({text, text, text}); });
    row("verdict", [](auto &frame, const QString &text) {
        frame.clearAllSteps();
        frame.addTestStep(text, Qt::green, false);
    });
    row("caption", [](auto &frame, const QString &text) { frame.setLeftBtnText(text); });
    row("name of an icon", [](auto &frame, const QString &text) { frame.setTitleIcon(QStringLiteral("Icon"), text); });
    row("log", [](auto &frame, const QString &text) {
        frame.log(text, FactoryTestRightFrame::LogSystem, FactoryTestRightFrame::LogInfo);
    });
}

void TestFrameScreen::fontsOfThePartsAreKept()
{
    QFETCH(const FrameChange, change);
    FrameTest test;
    change(*test.frame, QStringLiteral("Short"));
    settle();
    const QSet<int> before = unusedFontSizes();
    test.resize(877, 533); // leads to sizes that no other test uses
    test.frame->setContentFontSize(61);
    change(*test.frame, QStringLiteral("Long enough for some smaller fonts ").repeated(4));
    settle();
    change(*test.frame, QStringLiteral("Short"));
    settle();
    QCOMPARE((unusedFontSizes() - before).values(), QList<int>());
}

void TestFrameScreen::aMarkThatIsNotPaintedLoadsNoFont()
{
    FrameTest test;
    test.setUpdatesEnabled(false);
    test.frame->setContentFontSize(59); // a size that no other test uses
    test.frame->addTestSteps({QStringLiteral("One"), QStringLiteral("Two")});
    settle();
    const int fonts = QFontCache::instance()->engineDataCache.size();
    test.frame->setStepIcon(1, IconPass);
    settle();
    QCOMPARE(QFontCache::instance()->engineDataCache.size(), fonts);
    test.setUpdatesEnabled(true);
    settle();
    const QImage picture = test.screen()->grabWindow(test.winId()).toImage();
    QCOMPARE(picture, test.grab().toImage().convertToFormat(picture.format()));
}

QTEST_MAIN(TestFrameScreen)
#include "tst_framescreen.moc"
