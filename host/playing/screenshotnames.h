#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

namespace panelhost {

/// Gives file names to screenshots, and keeps those of scenario files with the same base name apart.
class ScreenshotNames
{
public:
    /// Returns "<scenario>-<name>.png". A number is added to the scenario if another file has the same name, and to the
    /// whole name if another screenshot has it. The result for the same arguments is always the same.
    QString fileName(const QString &scenarioFile, const QString &name);

private:
    static QString unused(const QString &wanted, const QHash<QString, QString> &given);

    QHash<QString, QString> m_scenarios; ///< by file
    QHash<QString, QString> m_names;     ///< by file and name
};

}
