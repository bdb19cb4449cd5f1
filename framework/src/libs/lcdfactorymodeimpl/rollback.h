#pragma once

#include <new>

namespace LCD::FactoryModeImpl {

/// Calls @p call. If it throws std::bad_alloc, calls @p rollBack, which undoes a change that has already been made, and
/// throws the exception again. @p rollBack must not allocate memory.
template <class Call, class RollBack>
void callOrRollBack(const Call &call, const RollBack &rollBack)
{
    try {
        call();
    } catch (const std::bad_alloc &) {
        rollBack();
        throw;
    }
}

}
