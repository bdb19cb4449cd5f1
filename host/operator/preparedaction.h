#pragma once

#include "operator/operatoraction.h"

#include <functional>

namespace panelhost {

class Session;

/// An action made ready: checked against the device and the page as they are, its arguments complete and of their
/// own types, so that it reads the same whoever asked for it.
struct PreparedAction
{
    OperatorAction action;
    std::function<void()> run; ///< empty when it can't be done
    QString error;             ///< why not, in one sentence
};

PreparedAction prepareAction(Session &session, const OperatorAction &action);

}
