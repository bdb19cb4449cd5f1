#include "singletestsupport.h"

#include "factorymodewidget.h"

#include <QtCore/QFile>
#include <QtCore/QThread>

#include <mutex>
#include <thread>

namespace {

// Uses a standard mutex, because a thread sanitizer doesn't see the locks inside Qt.
class EventThread final : public QThread
{
public:
    explicit EventThread(const std::function<void()> &event) : m_event(event) {}

protected:
    void run() override
    {
        const std::lock_guard locker(m_handover);
        m_event();
    }

private:
    friend void runOnQtThread(const std::function<void()> &event);

    std::mutex m_handover;
    const std::function<void()> m_event;
};

void runOnQtThread(const std::function<void()> &event)
{
    EventThread thread(event);
    std::unique_lock handover(thread.m_handover);
    thread.start();
    handover.unlock();
    QVERIFY(thread.wait(60000));
    handover.lock();
}

}

void runOn(Origin origin, const std::function<void()> &event)
{
    switch (origin) {
    case Origin::Caller:
        event();
        break;
    case Origin::QtThread:
        runOnQtThread(event);
        break;
    case Origin::StdThread:
        std::thread(event).join();
        break;
    }
}

void addOrigins()
{
    QTest::addColumn<int>("origin");
    QTest::newRow("the caller's thread") << static_cast<int>(Origin::Caller);
    QTest::newRow("a thread of Qt") << static_cast<int>(Origin::QtThread);
    QTest::newRow("a plain thread") << static_cast<int>(Origin::StdThread);
}

Origin fetchOrigin()
{
    return static_cast<Origin>(*static_cast<int *>(QTest::qData("origin", QMetaType::Int)));
}

QString bitText(const std::vector<bool> &bits)
{
    QStringList texts;
    for (const bool bit : bits)
        texts << (bit ? QStringLiteral("true") : QStringLiteral("false"));
    return texts.join(QStringLiteral(", "));
}

RecordingWidget::RecordingWidget(RecordingHost &host) : m_calls(host.calls)
{
    host.offer("lcdFactoryModeWidget", static_cast<LCD::FactoryMode::ILcdFactoryMode *>(this));
}

void RecordingWidget::notifyTestPatternChanged(int patternType, int patternIndex, int level)
{
    m_calls.add(
        QStringLiteral("widget.notifyTestPatternChanged(%1, %2, %3)").arg(patternType).arg(patternIndex).arg(level));
}

KeyListWidget::KeyListWidget(RecordingHost &host, const QList<QPair<int, QString>> &keys)
    : m_widget(std::make_unique<LCD::FactoryModeImpl::FactoryModeWidget>(nullptr))
{
    load(keys);
    host.offer("lcdFactoryModeWidget", m_widget.get());
}

KeyListWidget::~KeyListWidget() = default;

void KeyListWidget::load(const QList<QPair<int, QString>> &keys)
{
    QFile file(m_directory.filePath(QStringLiteral("factorykeychecklist.xml")));
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(file.errorString()));
    file.write("<LCD version=\"1.0\"><LcdKeys>");
    for (const auto &[halKey, name] : keys)
        file.write(QStringLiteral("<LcdKey Value=\"%1\" Name=\"%2\"/>").arg(halKey).arg(name).toUtf8());
    file.write("</LcdKeys></LCD>");
    file.close();
    m_widget->setFactoryModeData(QStringLiteral("menuConfigPath"), m_directory.path());
}
