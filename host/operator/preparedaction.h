#pragma once

#include "operator/operatoraction.h"

#include <functional>

namespace panelhost {

class OperatorTarget;

/// An operator action that was checked against the current state of the device and the page. Its arguments are complete
/// and typed, so that it looks the same in the journal wherever it came from.
struct PreparedAction
{
    OperatorAction action;
    std::function<void()> perform; ///< performs the action; empty if it isn't possible
    QString error;                 ///< why it isn't possible, in one sentence
};

/// Checks @p action and prepares it. GUI thread.
PreparedAction prepareAction(OperatorTarget &target, const OperatorAction &action);

}
