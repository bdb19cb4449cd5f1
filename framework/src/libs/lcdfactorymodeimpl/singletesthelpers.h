#pragma once

#include "lcd/factorymode/ifactorymodebiz.h"

namespace LCD::FactoryModeImpl {

// Functions that several single tests share. They work on the members of the test.

/// Sets the state of @p test and notifies its listeners.
template <class Test>
void setStateAndNotify(Test &test, int code)
{
    test.state = code;
    test.notifyStateChanged(test.state);
}

/// Tells the device which single test is active. Does nothing if @p service is null.
inline void setTestType(FactoryMode::IFactoryModeBiz *service, int testType)
{
    if (service)
        service->setFactoryTestType(testType);
}

}
