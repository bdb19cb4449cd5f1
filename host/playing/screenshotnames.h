#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

namespace panelhost {

/// Names the files of screenshots, so that those of two scenarios with the same file name don't replace each other.
class ScreenshotNames
{
public:
    /// "<scenario>-<name>.png". A number is added to the scenario if another file has its name, and to the whole if
    /// another screenshot has it. The same @p scenarioFile and @p name always give the same.
    QString fileName(const QString &scenarioFile, const QString &name);

private:
    static QString unused(const QString &wanted, const QHash<QString, QString> &given);

    QHash<QString, QString> m_scenarios; ///< by file
    QHash<QString, QString> m_names;     ///< by file and name
};

}
