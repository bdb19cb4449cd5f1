#include "agemodel.h"

AgeModel::AgeModel(ModelHost &host)
    : net{host, LinkModel::Net, [](int) {}, [this](const auto &links) { onLinks(3, links); }},
      usb{host, LinkModel::Usb, [](int) {}, [this](const auto &links) { onLinks(4, links); }},
      m_host(host), m_screens{host, LevelModel::Screens, [this](int state) { onState(state); }},
      m_patterns{host, [this](int state) { onState(state); }}, m_keys{host, LevelModel::Keys, [this](int state) {
                                                                          if (state == 101)
                                                                              m_host.lines
                                                                                  << QStringLiteral("finished");
                                                                          onState(state);
                                                                      }}
{
}

void AgeModel::start()
{
    m_step = 0;
    m_failed.clear();
    stopTimers();
    m_hears = true;
    net.takesReports = false;
    usb.takesReports = false;
    runStep();
}

void AgeModel::stop()
{
    writeText(false);
    m_step = 0;
    m_failed.clear();
    const bool showsPatterns = m_timers[1].due.has_value();
    stopTimers();
    if (showsPatterns)
        m_patterns.finish(0);
    m_screens.reset();
    m_screens.restore();
    m_keys.reset();
}

void AgeModel::runStep()
{
    writeText(false);
    switch (m_step) {
    case 0:
        m_screens.enter();
        m_screens.startTest();
        return startTimer(0);
    case 1:
        m_patterns.enter();
        m_patterns.startTest();
        return startTimer(1);
    case 2:
        m_keys.enter();
        m_keys.startTest();
        return startTimer(2);
    case 3:
        net.enter();
        return net.startTest();
    default:
        usb.enter();
        return usb.startTest();
    }
}

void AgeModel::nextStep()
{
    stopTimers();
    m_step = (m_step + 1) % 5;
    runStep();
}

void AgeModel::onState(int state)
{
    if (m_hears && state == 101)
        nextStep();
}

void AgeModel::onLinks(int step, const std::vector<bool> &links)
{
    if (!m_hears)
        return;
    m_failed.remove(step);
    for (const bool linked : links) {
        if (!linked)
            m_failed.insert(step);
    }
    nextStep();
}

void AgeModel::startTimer(int step)
{
    Timer &timer = m_timers[step];
    timer.due = m_now + timer.interval;
    timer.number = ++m_starts;
}

void AgeModel::stopTimers()
{
    for (Timer &timer : m_timers)
        timer.due.reset();
}

void AgeModel::advance(int milliseconds)
{
    const qint64 until = m_now + milliseconds;
    for (;;) {
        Timer *next = nullptr;
        for (Timer &timer : m_timers) {
            if (timer.due && *timer.due <= until
                && (!next || *timer.due < *next->due || (*timer.due == *next->due && timer.number < next->number)))
                next = &timer;
        }
        if (!next)
            break;
        m_now = *next->due;
        fire(*next);
    }
    m_now = until;
}

void AgeModel::fire(Timer &timer)
{
    startTimer(timer.step);
    if (timer.step == 1)
        return m_patterns.nextStep();
    (timer.step == 0 ? m_screens : m_keys).nextStep();
    writeText(false);
}

void AgeModel::writeText(bool recount)
{
    static const char *const keys[5] = {"FCScreenLight", "FCScreenBadPixel", "FCBtnLight", "FCNet", "FCUSB"};
    static const QMap<int, QString> levels = {{0, QStringLiteral(" 10%")},  {10, QStringLiteral(" 10%")},
                                              {30, QStringLiteral(" 30%")}, {50, QStringLiteral(" 50%")},
                                              {70, QStringLiteral(" 70%")}, {100, QStringLiteral(" 100%")}};
    QString text = QStringLiteral("white {FCAging}{%1}").arg(QLatin1String(keys[m_step]));
    if (m_step == 0)
        text += levels.value(m_screens.state);
    if (m_step == 2)
        text += levels.value(m_keys.state);
    m_host.lines << QStringLiteral("clear") << m_host.expanded(text);
    if (recount) {
        m_failed.clear();
        return;
    }
    static const QString failures[4] = {QString(), QStringLiteral("{FCAgeNetNoPass}"),
                                        QStringLiteral("{FCAgeUSBNoPass}"),
                                        QStringLiteral("{FCAgeNetNoPass}、{FCAgeUSBNoPass}")};
    const int failed = (m_failed.contains(3) ? 1 : 0) + (m_failed.contains(4) ? 2 : 0);
    m_host.lines << m_host.expanded(QStringLiteral("red  ") + failures[failed]);
}
