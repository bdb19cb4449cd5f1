#include "playing/screenshotnames.h"

#include <QtCore/QFileInfo>

namespace panelhost {

QString ScreenshotNames::unused(const QString &wanted, const QHash<QString, QString> &given)
{
    const auto values = given.values();
    QString name = wanted;
    for (int number = 2; values.contains(name); ++number)
        name = QStringLiteral("%1-%2").arg(wanted).arg(number);
    return name;
}

QString ScreenshotNames::fileName(const QString &scenarioFile, const QString &name)
{
    const auto file = QFileInfo(scenarioFile).absoluteFilePath();
    if (!m_scenarios.contains(file))
        m_scenarios.insert(file, unused(QFileInfo(file).completeBaseName(), m_scenarios));
    const auto key = file + QLatin1Char('\n') + name;
    if (!m_names.contains(key))
        m_names.insert(key, unused(QStringLiteral("%1-%2").arg(m_scenarios.value(file), name), m_names));
    return m_names.value(key) + QStringLiteral(".png");
}

}
