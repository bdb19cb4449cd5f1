#pragma once

#include "operator/action.h"

#include <functional>

namespace panelhost {

class Session;

/// An action made ready: checked against the device and the page as they are, its arguments complete and of their
/// own types, so that it reads the same whoever asked for it.
struct Deed
{
    Action action;
    std::function<void()> run; ///< empty when it can't be done
    QString error;             ///< why not, in one sentence
};

Deed prepareDeed(Session &session, const Action &action);

}
