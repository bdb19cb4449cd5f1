// Nothing is cut and nothing overlaps: every typical page, in every language, on every size of screen. The build runs
// it at scale 1 and at scale 2.

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "softbutton.h"
#include "steplist.h"
#include "typicalpages.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

#include <cmath>

using namespace LCD::Widget;

Q_DECLARE_METATYPE(QVector<LCD::Widget::TestStep>)

namespace {

constexpr int SmallestReadableFont = 12; // physical pixels

/// What a reader would call a fault of the page, each as a sentence.
class Faults
{
public:
    explicit Faults(FactoryTestFrame &frame) : m_frame(frame)
    {
        frame.grab(); // a title chooses its font when it is painted
        findMisplacedParts();
        for (const QLabel *label : frame.findChildren<QLabel *>())
            checkLine(label, label->text(), label->font(), label->contentsRect());
        for (const SoftButton *button : frame.findChildren<SoftButton *>())
            checkLine(button, button->text(), button->captionFont(), button->captionArea());
        checkSteps(*frame.findChild<StepList *>());
    }

    QStringList found;

private:
    QVector<const QWidget *> visibleParts() const
    {
        QVector<const QWidget *> parts;
        const auto children = m_frame.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget *child : children) {
            const auto *list = qobject_cast<const StepList *>(child);
            if (child->isVisible() && !(list && list->steps().isEmpty()))
                parts << child;
        }
        return parts;
    }

    void findMisplacedParts()
    {
        const QVector<const QWidget *> parts = visibleParts();
        for (int i = 0; i < parts.size(); ++i) {
            if (!m_frame.rect().contains(parts[i]->geometry()))
                found << QStringLiteral("%1 is not inside the frame").arg(parts[i]->objectName());
            for (int j = 0; j < i; ++j) {
                if (parts[i]->geometry().intersects(parts[j]->geometry()))
                    found << QStringLiteral("%1 overlaps %2").arg(parts[i]->objectName(), parts[j]->objectName());
            }
        }
    }

    void checkFont(const QWidget *widget, const QFont &font)
    {
        if (font.pixelSize() * m_frame.devicePixelRatioF() < SmallestReadableFont)
            found << QStringLiteral("%1 has text of %2 px").arg(widget->objectName()).arg(font.pixelSize());
    }

    void checkLine(const QWidget *widget, const QString &text, const QFont &font, const QRect &area)
    {
        if (!widget->isVisible() || text.isEmpty())
            return;
        const QRect bounds =
            QFontMetrics(font).boundingRect(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
        if (!area.contains(bounds))
            found << QStringLiteral("%1 cuts \"%2\"").arg(widget->objectName(), text);
        checkFont(widget, font);
    }

    void checkSteps(const StepList &list)
    {
        if (list.steps().isEmpty())
            return;
        const QFont font = list.fitted().font;
        const StepLayout layout = list.fitted().layout;
        if (layout.height > list.height() || !layout.fitsWidth)
            found << QStringLiteral("the step lines do not fit at %1 px").arg(font.pixelSize());
        for (int i = 0; i < list.steps().size(); ++i) {
            if (layout.marks[i].intersects(layout.texts[i]))
                found << QStringLiteral("the mark of line %1 is in its text").arg(i);
            if (i > 0 && layout.texts[i].top() <= layout.texts[i - 1].bottom())
                found << QStringLiteral("line %1 overlaps the one above").arg(i);
        }
        checkFont(&list, font);
    }

    const FactoryTestFrame &m_frame;
};

const QVector<QSize> Screens = {{480, 320}, {800, 480}, {1280, 800}};

}

class TestFrameLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void pagesFit_data();
    void pagesFit();
    void aPageFollowsItsScreen();
    void anOverlongListScrollsToItsEnd();
    void overlongTitleAndCaptionsFit();
    void verdictsAreReadableFromTwoMetres_data() { pagesFit_data(); }
    void verdictsAreReadableFromTwoMetres();
    void aVerdictIsPaintedInItsColor_data();
    void aVerdictIsPaintedInItsColor();
    void aVerdictLeavesRoomForItsReasons();
    void headingsAreLargerThanTheText();
    void aHeadingThatRepeatsTheTitleIsNotShown();
    void aDangerousButtonDoesNotStandOut();
    void aRepeatedLogLineIsPaintedOnce();
};

void TestFrameLayout::initTestCase()
{
    QCOMPARE(qApp->devicePixelRatio(), qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
}

void TestFrameLayout::pagesFit_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("size");
    for (const QString &language : LCDFWTranslateManager::instance()->languages()) {
        for (const QSize &screen : Screens) {
            // A screen is given in the pixels of its panel, or in those that the scale leaves to the page.
            for (int divisor = 1; divisor <= qApp->devicePixelRatio(); ++divisor) {
                const QSize size = screen / divisor;
                const QByteArray name =
                    QStringLiteral("%1 %2x%3")
                        .arg(language, QString::number(size.width()), QString::number(size.height()))
                        .toLatin1();
                if (divisor == 1 || !Screens.contains(size))
                    QTest::newRow(name.constData()) << language << size;
            }
        }
    }
}

void TestFrameLayout::pagesFit()
{
    QFETCH(QString, language);
    QFETCH(QSize, size);
    QVERIFY(LCDFWTranslateManager::instance()->setLanguage(language));
    QStringList faults;
    for (const TypicalPage &page : typicalPages()) {
        FactoryTestFrame frame(nullptr);
        frame.resize(size);
        frame.show();
        page.show(frame);
        QCoreApplication::sendPostedEvents();
        for (const QString &fault : Faults(frame).found)
            faults << QStringLiteral("%1: %2").arg(QString::fromLatin1(page.name), fault);
    }
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
}

void TestFrameLayout::aPageFollowsItsScreen()
{
    LCDFWTranslateManager::instance()->setLanguage(QStringLiteral("en"));
    for (const TypicalPage &page : typicalPages()) {
        FactoryTestFrame frame(nullptr);
        page.show(frame);
        frame.show();
        for (const QSize &screen : {Screens[2], Screens[0], Screens[1]}) {
            frame.resize(screen);
            QCoreApplication::sendPostedEvents();
            const QStringList faults = Faults(frame).found;
            QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
        }
    }
}

void TestFrameLayout::anOverlongListScrollsToItsEnd()
{
    StepList list(nullptr);
    list.resize(400, 200);
    list.setFontRange(13, 30);
    for (int i = 0; i < 100; ++i)
        list.append({QStringLiteral("line %1").arg(i), Qt::white, IconNone});
    QCOMPARE(list.fitted().font.pixelSize(), 13);
    const QImage top = list.grab().toImage();
    QVERIFY(list.scroll(1000));
    const QImage end = list.grab().toImage();
    QVERIFY(end != top);
    QVERIFY(list.scroll(1));
    QCOMPARE(list.grab().toImage(), end);
    list.setSteps({{QStringLiteral("one"), Qt::white, IconNone}});
    QVERIFY2(!list.scroll(1), "a list in sight doesn't scroll");
}

void TestFrameLayout::overlongTitleAndCaptionsFit()
{
    const QString sentence = QStringLiteral("A title or a caption of a length that nobody has planned for");
    FactoryTestFrame frame(nullptr);
    frame.resize(800, 480);
    frame.show();
    frame.setTitle(sentence);
    frame.setTitleIcon(QStringLiteral("FactoryIconLabel"), QStringLiteral("AnIconWithoutADrawing"));
    frame.setStepTitle(sentence, Qt::white);
    frame.setLeftBtnText(sentence);
    frame.setRightBtnText(sentence);
    frame.setLeftBtnVisible(true);
    frame.setRighttBtnVisible(true);
    QCoreApplication::sendPostedEvents();
    const QStringList faults =
        Faults(frame).found.filter(QStringLiteral("cuts")) + Faults(frame).found.filter(QStringLiteral("overlaps"));
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
}

// A verdict is read from two metres: on each screen and in each language its mark is at least an eighth of the page's
// height, and its text, if it is one of the short ones, a sixteenth.
void TestFrameLayout::verdictsAreReadableFromTwoMetres()
{
    QFETCH(QString, language);
    QFETCH(QSize, size);
    QVERIFY(LCDFWTranslateManager::instance()->setLanguage(language));
    for (const TypicalPage &page : typicalPages()) {
        const QByteArray name(page.name);
        if (name != "passed" && name != "failed" && name != "failed-with-reasons" && name != "aging-failing")
            continue;
        FactoryTestFrame frame(nullptr);
        frame.resize(size);
        frame.show();
        page.show(frame);
        QCoreApplication::sendPostedEvents();
        const auto banner = frame.findChild<StepList *>()->fitted().layout.banner;
        QVERIFY2(banner, page.name);
        QVERIFY2(banner->mark.height() >= size.height() / 8, page.name);
        QVERIFY2(banner->font.pixelSize() >= size.height() / 16 || name == "aging-failing",
                 qPrintable(QStringLiteral("%1: %2 px").arg(QString::fromLatin1(name)).arg(banner->font.pixelSize())));
        QVERIFY2(banner->area.width() > size.width() / 2, page.name);
    }
}

void TestFrameLayout::aVerdictIsPaintedInItsColor_data()
{
    QTest::addColumn<QVector<TestStep>>("steps");
    QTest::addColumn<QColor>("color"); // invalid: no verdict
    const QColor green(18, 154, 55);
    const QColor red(255, 72, 60);
    const TestStep white{QStringLiteral("line"), Qt::white, IconNone};
    const TestStep passed{QStringLiteral("Passed"), green, IconPass};
    const TestStep failed{QStringLiteral("Failed"), red, IconNone};
    const TestStep blank{QStringLiteral(" "), Qt::red, IconNone};
    QTest::newRow("pass alone") << QVector<TestStep>{passed} << green;
    QTest::newRow("fail alone") << QVector<TestStep>{failed} << red;
    QTest::newRow("fail and reasons") << QVector<TestStep>{failed, failed, white} << red;
    QTest::newRow("what runs, and what has failed") << QVector<TestStep>{white, failed} << red;
    QTest::newRow("what runs, and no failure") << QVector<TestStep>{white, blank} << QColor();
    QTest::newRow("instructions") << QVector<TestStep>{white, white} << QColor();
    QTest::newRow("instructions and a failed key") << QVector<TestStep>{white, white, failed} << QColor();
    QTest::newRow("no line") << QVector<TestStep>() << QColor();
}

void TestFrameLayout::aVerdictIsPaintedInItsColor()
{
    QFETCH(QVector<TestStep>, steps);
    QFETCH(QColor, color);
    StepList list(nullptr);
    list.resize(600, 300);
    list.setFontRange(13, 30);
    list.setVerdictHeight(96);
    list.setSteps(steps);
    const auto banner = list.fitted().layout.banner;
    QCOMPARE(banner.has_value(), color.isValid());
    if (!banner)
        return;
    const QImage image = list.grab().toImage();
    const QPoint besideTheMark = QPoint(banner->mark.left() - 2, banner->mark.center().y()) * image.devicePixelRatio();
    QCOMPARE(image.pixelColor(besideTheMark).name(), color.name());
    const QPoint inTheMark =
        (banner->mark.center() + QPoint(0, banner->mark.height() * 2 / 5)) * image.devicePixelRatio();
    QCOMPARE(image.pixelColor(inTheMark).name(), QColor(Qt::white).name());
}

// The other lines keep their size: the banner is lower if they need the room.
void TestFrameLayout::aVerdictLeavesRoomForItsReasons()
{
    StepList list(nullptr);
    list.resize(600, 300);
    list.setFontRange(13, 30);
    list.setVerdictHeight(96);
    QVector<TestStep> steps{{QStringLiteral("Failed"), Qt::red, IconNotPass}};
    list.setSteps(steps);
    QCOMPARE(list.fitted().layout.banner->area.height(), 192);
    steps << TestStep{QStringLiteral("why"), Qt::red, IconNone};
    list.setSteps(steps);
    QCOMPARE(list.fitted().layout.banner->area.height(), 192);
    QCOMPARE(list.fitted().font.pixelSize(), 30);
    for (int i = 0; i < 3; ++i)
        steps << steps.last();
    list.setSteps(steps);
    QCOMPARE(list.fitted().layout.banner->area.height(), 96);
    QCOMPARE(list.fitted().font.pixelSize(), 30);
    QVERIFY(list.fitted().layout.height <= list.height());
}

void TestFrameLayout::headingsAreLargerThanTheText()
{
    FactoryTestFrame frame(nullptr);
    frame.resize(800, 480);
    frame.show();
    for (const QSize &screen : Screens) {
        frame.resize(screen);
        frame.setStepTitle(QStringLiteral("Test"), Qt::white);
        frame.clearAllSteps();
        frame.addTestStep(QStringLiteral("Connect a port"), Qt::white, false);
        QCoreApplication::processEvents();
        frame.grab();
        const auto *heading = frame.findChild<QLabel *>(QStringLiteral("FactoryStepTitle"));
        QVERIFY(heading && heading->isVisible());
        QVERIFY2(heading->font().pixelSize() > frame.findChild<StepList *>()->fitted().font.pixelSize(),
                 qPrintable(QStringLiteral("%1x%2").arg(screen.width()).arg(screen.height())));
    }
}

void TestFrameLayout::aHeadingThatRepeatsTheTitleIsNotShown()
{
    FactoryTestFrame frame(nullptr);
    frame.resize(800, 480);
    frame.show();
    frame.setTitle(QStringLiteral("Test complete"));
    frame.setStepTitle(QStringLiteral("Test complete"), Qt::white);
    QCoreApplication::processEvents();
    const auto *heading = frame.findChild<QLabel *>(QStringLiteral("FactoryStepTitle"));
    QVERIFY(!heading->isVisible());
    QCOMPARE(frame.property("stepTitle").toString(), QStringLiteral("Test complete"));
    QCOMPARE(frame.property("stepTitleVisible").toBool(), true);
    frame.setTitle(QStringLiteral("Machine test"));
    QCoreApplication::processEvents();
    QVERIFY(heading->isVisible());
}

// Whether it has the focus or not, its area stays as dark as the page.
void TestFrameLayout::aDangerousButtonDoesNotStandOut()
{
    FactoryTestFrame frame(nullptr);
    frame.resize(800, 480);
    frame.show();
    frame.setLeftBtnText(QStringLiteral("Reset"));
    frame.setRightBtnText(QStringLiteral("Cancel"));
    frame.setLeftBtnVisible(true);
    frame.setRighttBtnVisible(true);
    frame.setProperty("dangerousButton", QStringLiteral("left"));
    const auto lightness = [&frame](const char *button) {
        auto *widget = frame.findChild<SoftButton *>(QLatin1String(button));
        const QImage image = widget->grab().toImage();
        return image.pixelColor(image.width() / 2, image.height() / 6).lightness();
    };
    for (const FocusType focus : {FocusRightButton, FocusLeftButton}) {
        frame.setControlFocus(focus);
        QVERIFY2(lightness("FactoryLeftButton") < lightness("FactoryRightButton"), qPrintable(QString::number(focus)));
    }
    frame.setControlFocus(FocusLeftButton);
    frame.setProperty("dangerousButton", QString());
    QVERIFY(lightness("FactoryLeftButton") > lightness("FactoryRightButton"));
}

void TestFrameLayout::aRepeatedLogLineIsPaintedOnce()
{
    FactoryTestRightFrame once(nullptr);
    FactoryTestRightFrame twice(nullptr);
    const auto write = [](FactoryTestRightFrame &log, const char *text) {
        log.resize(240, 300);
        log.append(QLatin1String(text), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
    };
    write(once, "Net port pass");
    write(once,
          "Test failed \xd7"
          "2");
    write(twice, "Net port pass");
    write(twice, "Test failed");
    write(twice, "Test failed");
    QCOMPARE(twice.lines().size(), 3);
    QCOMPARE(twice.grab().toImage(), once.grab().toImage());
    write(twice, "Net port pass");
    write(once, "Net port pass");
    QCOMPARE(twice.grab().toImage(), once.grab().toImage());
}

QTEST_MAIN(TestFrameLayout)
#include "tst_framelayout.moc"
