#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// What the LCD shows, as a value. Updated by the screen lines of the journal.
class LcdState
{
public:
    /// Applies the data of a screen line. A property that is null is removed.
    void apply(const QJsonObject &changes);

    QString page() const { return text("page"); }
    QString text(const char *name) const { return m_values.value(QLatin1String(name)).toString(); }
    int number(const char *name) const { return m_values.value(QLatin1String(name)).toInt(); }
    QStringList list(const char *name) const;
    /// Returns the color of the only step line as "#rrggbb"; empty if there is no line or several.
    QString onlyStepColor() const;
    bool hasSteps() const;
    /// Returns the mark of the first step line: "pass", "notpass" or "none"; empty if there is no line.
    QString firstStepMark() const;

private:
    QJsonObject m_values;
};

}
