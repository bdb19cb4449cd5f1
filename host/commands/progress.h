#pragma once

#include "playing/scenarioresult.h"

#include <QtCore/QTextStream>

namespace panelhost {

/// Prints the progress of playing scenarios: one line that is updated on a terminal, one line per step otherwise.
class Progress
{
public:
    Progress();

    void begin(const QString &file, qint64 steps);
    void step(const StepResult &step, qint64 number);
    void end(const ScenarioResult &result);
    void summary(const ScenarioResults &results);

private:
    void writeBar(const StepResult &step, qint64 number);
    void writeLine(const StepResult &step);

    void flush();

    QString m_text; ///< not written yet
    QTextStream m_out;
    bool m_isTerminal;
    QString m_file;
    qint64 m_steps = 0;
};

}
