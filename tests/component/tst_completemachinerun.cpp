#include "machinepage.h"
#include "virtualtime.h"

#include <QtCore/QFile>
#include <QtTest/QtTest>

namespace {

/// The expected session: for each action of the operator, a line "> <action>" and the calls that follow it.
QStringList sessionFile(const QString &name)
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/tests/component/data/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// A session of an operator. Records the calls that follow each action.
class WrittenSession
{
public:
    WrittenSession() { page.take(); }

    void act(const QString &what, const std::function<void()> &action)
    {
        action();
        m_lines << QStringLiteral("> ") + what << page.take();
    }
    void right(const QString &why)
    {
        act(QStringLiteral("right: ") + why, [this] { page.clickRight(); });
    }
    void seconds(int count)
    {
        act(QStringLiteral("%1 s go by").arg(count), [count] { VirtualTime::advance(count * 1000); });
    }
    const QStringList &lines() const { return m_lines; }

    MachinePage page;

private:
    QStringList m_lines;
};

void passLevels(WrittenSession &session, const QString &why)
{
    for (int tick = 0; tick < 10; ++tick)
        session.seconds(2);
    session.right(why);
}

void passPatterns(WrittenSession &session)
{
    for (int pattern = 2; pattern <= 12; ++pattern)
        session.right(QStringLiteral("pattern %1").arg(pattern));
    session.right(QStringLiteral("no more patterns"));
    session.right(QStringLiteral("patterns pass"));
}

void passKeys(WrittenSession &session)
{
    for (const unsigned key : {10U, 27U, 33U}) {
        session.act(QStringLiteral("key %1").arg(key), [&] { session.page.host.keyboard.press(key); });
    }
    session.right(QStringLiteral("keys pass"));
}

void passTBar(WrittenSession &session)
{
    session.right(QStringLiteral("T-Bar starts"));
    for (int line = 1; line <= 6; ++line)
        session.right(QStringLiteral("T-Bar line %1 done").arg(line));
    session.right(QStringLiteral("T-Bar complete"));
}

void passPorts(WrittenSession &session)
{
    session.right(QStringLiteral("net ports start"));
    session.act(QStringLiteral("port 0 up"), [&] { session.page.operate.netReport({{0, true}, {1, false}}); });
    session.act(QStringLiteral("port 1 up"), [&] { session.page.operate.netReport({{0, true}, {1, true}}); });
    session.right(QStringLiteral("net ports pass"));
    session.act(QStringLiteral("USB port up"), [&] { session.page.operate.usbReport({{1}}); });
    session.right(QStringLiteral("USB ports pass"));
}

}

/// One session of the complete machine test, from the entry screen to the pass screen and back to the menu.
class CompleteMachineRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPassingRun()
    {
        WrittenSession session;
        session.act(QStringLiteral("enter"), [&] { session.page.widget->enterWindow(); });
        session.right(QStringLiteral("start"));
        passLevels(session, QStringLiteral("screens pass"));
        passPatterns(session);
        passLevels(session, QStringLiteral("key lights pass"));
        passKeys(session);
        passTBar(session);
        passPorts(session);
        session.right(QStringLiteral("Type-C communication passes"));
        session.right(QStringLiteral("Type-C power passes"));
        session.right(QStringLiteral("POE passes"));
        session.act(QStringLiteral("back"), [&] { session.page.goBack(); });

        const QStringList expected = sessionFile(QStringLiteral("completemachine_pass.txt"));
        if (session.lines() != expected)
            save(session.lines());
        QCOMPARE(session.lines(), expected);
    }

    void aSecondRunIsTheSameAsTheFirst()
    {
        WrittenSession session;
        session.page.startAndPassTo(11);
        session.page.clickLeft();
        const QStringList again = session.page.take();
        session.page.widget->enterWindow();
        session.page.take();
        session.page.clickRight();
        QCOMPARE(session.page.take(), again);
    }

private:
    static void save(const QStringList &lines)
    {
        QFile file(QStringLiteral(LCD_BUILD_DIR "/completemachine_pass.actual.txt"));
        if (file.open(QIODevice::WriteOnly))
            file.write(lines.join(QLatin1Char('\n')).toUtf8() + '\n');
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineRunTest)
#include "tst_completemachinerun.moc"
