#include "lcd/screenlogger.h"

#include "journal/journal.h"
#include "lcd/screenreader.h"

namespace panelhost {

void ScreenLogger::logChanges()
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
    if (!changes.isEmpty())
        m_journal.add(Journal::Kind::Screen, QStringLiteral("screen"), QJsonObject::fromVariantMap(changes));
}

}
