#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// What stands on the LCD, brought up to date by the journal's screen lines.
class LcdState
{
public:
    void apply(const QJsonObject &changes);

    QString page() const { return text("page"); }
    QString text(const char *name) const { return m_values.value(QLatin1String(name)).toString(); }
    int number(const char *name) const { return m_values.value(QLatin1String(name)).toInt(); }
    QStringList list(const char *name) const;
    /// The color of the only step line, "#rrggbb"; empty if there are none or several.
    QString onlyStepColor() const;
    bool hasSteps() const;
    /// The mark of the first step line: "pass", "notpass" or "none"; empty if there is no line.
    QString firstStepMark() const;

private:
    QJsonObject m_values;
};

}
