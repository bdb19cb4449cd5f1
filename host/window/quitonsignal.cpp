#include "window/quitonsignal.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

namespace panelhost {

QuitOnSignal::QuitOnSignal()
    : m_wakeUp(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      m_notifier(std::make_unique<QSocketNotifier>(m_wakeUp, QSocketNotifier::Read))
{
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    m_interruption.emplace(m_wakeUp);
}

QuitOnSignal::~QuitOnSignal()
{
    m_interruption.reset();
    m_notifier.reset();
    ::close(m_wakeUp);
}

bool QuitOnSignal::isAsked()
{
    return Interruption::signalNumber() != 0;
}

void QuitOnSignal::endProcessIfAsked()
{
    if (isAsked())
        Interruption::endProcess();
}

}
