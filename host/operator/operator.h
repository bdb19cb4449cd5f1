#pragma once

#include "operator/operatoraction.h"
#include "time/virtualclock.h"

#include <QtCore/QObject>

namespace panelhost {

class OperatorTarget;

/// Performs operator actions on a target, such as a session. GUI thread.
class Operator : public QObject
{
    Q_OBJECT

public:
    explicit Operator(OperatorTarget &target);

    /// Performs @p action now and processes what is due after it. Returns false and sets @p error if the device has no
    /// such key, port or fault, or the page has no such button.
    bool perform(const OperatorAction &action, QString *error = nullptr);

Q_SIGNALS:
    /// Emitted when @p action was performed at the time @p at. Its arguments are complete and typed as in the journal.
    void performed(const panelhost::OperatorAction &action, panelhost::Milliseconds at);

private:
    OperatorTarget &m_target;
};

}
