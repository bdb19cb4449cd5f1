#pragma once

#include <new>

namespace LCD::FactoryModeImpl {

/// Runs @p call after a change, which may be one that it makes itself. Without memory for it, @p undo takes the change
/// back, and the exception goes on to the caller. @p undo must need no memory.
template <class Call, class Undo>
void callOrUndo(const Call &call, const Undo &undo)
{
    try {
        call();
    } catch (const std::bad_alloc &) {
        undo();
        throw;
    }
}

}
