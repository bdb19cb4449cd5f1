#include "lcd/screenlogger.h"

#include "journal/journal.h"
#include "lcd/screenreader.h"

#include <QtCore/QEvent>

namespace panelhost {

// This is called after each turn. Most turns change one property of a test page or nothing.
void ScreenLogger::logChanges()
{
    const ShownPage page = findShownPage(&m_lcd);
    const bool isSamePage = page.frame && page.frame == m_frame && m_last.value(QStringLiteral("page")) == page.name;
    const QVariantMap changes = isSamePage ? changesOfFrame() : changesOfScreen();
    watch(page.frame);
    if (!changes.isEmpty())
        m_journal.add(Journal::Kind::Screen, QStringLiteral("screen"), QJsonObject::fromVariantMap(changes));
}

QVariantMap ScreenLogger::changesOfScreen()
{
    const QVariantMap screen = readScreen(&m_lcd);
    QVariantMap changes;
    for (auto value = screen.begin(); value != screen.end(); ++value) {
        const auto before = m_last.constFind(value.key());
        if (before == m_last.constEnd() || *before != *value)
            changes.insert(value.key(), *value);
    }
    for (auto value = m_last.constBegin(); value != m_last.constEnd(); ++value) {
        if (!screen.contains(value.key()))
            changes.insert(value.key(), QVariant());
    }
    m_last = screen;
    return changes;
}

QVariantMap ScreenLogger::changesOfFrame()
{
    QVariantMap values;
    for (const QByteArray &property : qAsConst(m_changedProperties))
        readFrameProperty(*m_frame, property, values);
    QVariantMap changes;
    for (auto value = values.constBegin(); value != values.constEnd(); ++value) {
        QVariant &last = m_last[value.key()];
        if (last == *value)
            continue;
        last = *value;
        changes.insert(value.key(), *value);
    }
    return changes;
}

// Everything that the frame has changed so far is read.
void ScreenLogger::watch(QWidget *frame)
{
    m_changedProperties.clear();
    if (frame == m_frame)
        return;
    if (m_frame)
        m_frame->removeEventFilter(this);
    m_frame = frame;
    if (frame)
        frame->installEventFilter(this);
}

// A frame describes itself by dynamic properties.
bool ScreenLogger::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange)
        m_changedProperties.insert(static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName());
    return QObject::eventFilter(watched, event);
}

}
