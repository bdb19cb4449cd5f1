#include "frametest.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

using LCD::Widget::FactoryTestFrame;

FrameTest::FrameTest()
    : frame(new FactoryTestFrame(this)), back(frame, &FactoryTestFrame::signalBackPrevious),
      leftClicks(frame, &FactoryTestFrame::signalLeftBtnClicked),
      rightClicks(frame, &FactoryTestFrame::signalRightBtnClicked)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);
    frame->setLeftBtnText(QStringLiteral("Fail"));
    frame->setRightBtnText(QStringLiteral("Pass"));
    frame->setLeftBtnVisible(true);
    frame->setRighttBtnVisible(true);
    resize(800, 480);
    show();
    activateWindow();
    if (!QTest::qWaitForWindowActive(this))
        qFatal("the window of the frame does not become active");
}

QPushButton *FrameTest::left() const
{
    return frame->findChild<QPushButton *>(QStringLiteral("FactoryLeftButton"));
}

QPushButton *FrameTest::right() const
{
    return frame->findChild<QPushButton *>(QStringLiteral("FactoryRightButton"));
}

QStringList FrameTest::lines() const
{
    return ofEachStep(QStringLiteral("text"));
}

QStringList FrameTest::marks() const
{
    return ofEachStep(QStringLiteral("mark"));
}

QStringList FrameTest::ofEachStep(const QString &field) const
{
    QStringList values;
    const QVariantList steps = shown("steps").toList();
    for (const QVariant &step : steps)
        values << step.toMap().value(field).toString();
    return values;
}

void FrameTest::press(Qt::Key key)
{
    QTest::keyClick(windowHandle(), key);
}

void FrameTest::keyPressEvent(QKeyEvent *event)
{
    keysTravelledUp << event->key();
}
