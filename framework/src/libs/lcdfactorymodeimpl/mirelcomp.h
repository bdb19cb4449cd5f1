#pragma once

#include "mirel/api.h"
#include "mirel/component.h"

namespace LCD::FactoryModeImpl {
class FactoryModeWidget;
}

namespace mirel {

// The functions that the host calls to load this library. "mirel" is the framework by which hosts load components.

// The component of this library: creator() creates its object, deletor() deletes it, and there is no message handler.
// The library defines all four members itself and doesn't use the SDK's definitions.
template <>
void *ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::creator();
template <>
void ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::deletor(void *object);
template <>
IMessageHandler *ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::getMessageHandler(void *object);
template <>
ComponentInfo ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::componentInfo;

}

extern "C" {

/// The records of the components. Ends with a null pointer.
extern mirel::ComponentInfo *const lcdfactorymodeimpl_mirel_componentInfoTable[2];

/// Returns the record of this library. May be called at any time after loading.
const mirel::PluginInfo *pluginfo();

/// Sets the host, a mirel::IHost that must outlive every component. Until then the component finds no service.
void pluginit(void *host);
}
