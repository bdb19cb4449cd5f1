// log() and setStepIcon() on threads that know nothing of Qt.

#include "frametest.h"

#include <QtTest/QtTest>

#include <memory>
#include <thread>
#include <vector>

using namespace LCD::Widget;

namespace {

void log(const FactoryTestFrame &frame, const QString &text)
{
    frame.log(text, FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
}

void logNumbered(const FactoryTestFrame &frame, int thread, int count)
{
    for (int i = 0; i < count; ++i)
        log(frame, QStringLiteral("%1/%2").arg(thread).arg(i));
}

QStringList logOf(const FactoryTestFrame &frame)
{
    return frame.property("log").toStringList();
}

}

class TestFrameThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOwnThreadLogsAtOnce();
    void anotherThreadLogsWhenTheLoopComesRound();
    void theOrderOfEachThreadIsKept();
    void theOrderAcrossThreadsIsKept();
    void anotherThreadMarksALine();
    void aMarkMeansTheListOfItsTime();
    void whatWaitsIsDroppedWithTheFrame();
    void logsWhileThePageChanges();
};

void TestFrameThreads::theOwnThreadLogsAtOnce()
{
    FactoryTestFrame frame(nullptr);
    log(frame, QStringLiteral("line"));
    QCOMPARE(logOf(frame), QStringList{QStringLiteral("line")});
}

void TestFrameThreads::anotherThreadLogsWhenTheLoopComesRound()
{
    FactoryTestFrame frame(nullptr);
    std::thread([&] { logNumbered(frame, 1, 3); }).join();
    QCOMPARE(logOf(frame), QStringList());
    QTRY_COMPARE(logOf(frame), QStringLiteral("1/0|1/1|1/2").split(QLatin1Char('|')));
}

void TestFrameThreads::theOrderOfEachThreadIsKept()
{
    FactoryTestFrame frame(nullptr);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&frame, thread] { logNumbered(frame, thread, 100); });
    for (std::thread &thread : threads)
        thread.join();
    QTRY_COMPARE(logOf(frame).size(), 400);
    for (int thread = 0; thread < 4; ++thread) {
        const QStringList own = logOf(frame).filter(QRegularExpression(QStringLiteral("^%1/").arg(thread)));
        for (int i = 0; i < 100; ++i)
            QCOMPARE(own[i], QStringLiteral("%1/%2").arg(thread).arg(i));
    }
}

void TestFrameThreads::theOrderAcrossThreadsIsKept()
{
    FactoryTestFrame frame(nullptr);
    std::thread([&] { log(frame, QStringLiteral("first")); }).join();
    log(frame, QStringLiteral("second"));
    QCOMPARE(logOf(frame), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    QCoreApplication::processEvents();
    QCOMPARE(logOf(frame).size(), 2);
}

void TestFrameThreads::anotherThreadMarksALine()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a"), QStringLiteral("b")});
    std::thread([&] {
        test.frame->setStepIcon(0, IconNotPass);
        test.frame->setStepIcon(0, IconPass);
    }).join();
    QCOMPARE(test.marks(), (QStringList{QStringLiteral("none"), QStringLiteral("none")}));
    QTRY_COMPARE(test.marks(), (QStringList{QStringLiteral("pass"), QStringLiteral("none")}));
}

void TestFrameThreads::aMarkMeansTheListOfItsTime()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("a")});
    std::thread([&] { test.frame->setStepIcon(0, IconPass); }).join();
    test.frame->addTestSteps({QStringLiteral("b")});
    QCoreApplication::processEvents();
    QCOMPARE(test.marks(), QStringList{QStringLiteral("none")});
}

void TestFrameThreads::whatWaitsIsDroppedWithTheFrame()
{
    auto frame = std::make_unique<FactoryTestFrame>(nullptr);
    frame->addTestSteps({QStringLiteral("a")});
    std::thread([&] {
        logNumbered(*frame, 1, 50);
        frame->setStepIcon(0, IconPass);
    }).join();
    const QPointer<FactoryTestFrame> gone = frame.get();
    frame.reset();
    QCoreApplication::processEvents();
    QVERIFY(gone.isNull());
}

void TestFrameThreads::logsWhileThePageChanges()
{
    FrameTest test;
    std::thread reports([&] {
        for (int i = 0; i < 300; ++i) {
            log(*test.frame, QString::number(i));
            test.frame->setStepIcon(i % 6, i % 2 ? IconPass : IconNotPass);
        }
    });
    for (int i = 0; i < 300; ++i) {
        test.frame->addTestSteps({QStringLiteral("a"), QStringLiteral("b")});
        test.frame->setTitle(QString::number(i));
        QCoreApplication::processEvents();
    }
    reports.join();
    QTRY_COMPARE(test.shown("log").toStringList().size(), 300);
    QCOMPARE(test.shown("log").toStringList().last(), QStringLiteral("299"));
}

QTEST_MAIN(TestFrameThreads)
#include "tst_framethreads.moc"
