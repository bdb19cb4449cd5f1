#pragma once

#include "lcd/factorymode/ifactorymodebiz.h"

namespace LCD::FactoryModeImpl {

// What the test objects do alike, on the members as each of them has them.

/// Sets the state of @p test and announces it.
template <class Test>
void announceAs(Test &test, int code)
{
    test.state = code;
    test.notifyStateChanged(test.state);
}

/// Tells the device which test is active. @p service may be missing.
inline void setTestType(FactoryMode::IFactoryModeBiz *service, int testType)
{
    if (service)
        service->setFactoryTestType(testType);
}

}
