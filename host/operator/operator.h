#pragma once

#include "operator/operatoraction.h"
#include "time/virtualclock.h"

#include <QtCore/QObject>

namespace panelhost {

class Session;

/// Does actions to the device and tells of each that was done. GUI thread.
class Operator : public QObject
{
    Q_OBJECT

public:
    explicit Operator(Session &session);

    /// Does @p action at the present instant and settles. False, with a sentence in @p error, if the device has no
    /// such key, port or fault, or the page no such button.
    bool perform(const OperatorAction &action, QString *error = nullptr);

Q_SIGNALS:
    /// @p action as it is in the journal: its arguments complete and each of its own type.
    void performed(const panelhost::OperatorAction &action, panelhost::Milliseconds at);

private:
    Session &m_session;
};

}
