#include "records/lcdstate.h"

#include <QtCore/QJsonArray>
#include <QtCore/QVariant>

namespace panelhost {

void LcdState::apply(const QJsonObject &changes)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isNull())
            m_values.remove(change.key());
        else
            m_values.insert(change.key(), change.value());
    }
}

QStringList LcdState::list(const char *name) const
{
    return m_values.value(QLatin1String(name)).toVariant().toStringList();
}

QString LcdState::onlyStepColor() const
{
    const QJsonArray steps = m_values.value(QLatin1String("steps")).toArray();
    return steps.size() == 1 ? steps.first().toObject().value(QLatin1String("color")).toString() : QString();
}

QString LcdState::firstStepMark() const
{
    const QJsonArray steps = m_values.value(QLatin1String("steps")).toArray();
    return steps.isEmpty() ? QString() : steps.first().toObject().value(QLatin1String("mark")).toString();
}

bool LcdState::hasSteps() const
{
    return !m_values.value(QLatin1String("steps")).toArray().isEmpty();
}

}
