#pragma once

#include "mirel/api.h"
#include "mirel/component.h"

namespace LCD::RepairPages {
class RepairMode;
}

namespace mirel {

// The one component of this library.
template <>
void *ComponentTmpl<LCD::RepairPages::RepairMode>::creator();
template <>
void ComponentTmpl<LCD::RepairPages::RepairMode>::deletor(void *object);
template <>
IMessageHandler *ComponentTmpl<LCD::RepairPages::RepairMode>::getMessageHandler(void *object);
template <>
ComponentInfo ComponentTmpl<LCD::RepairPages::RepairMode>::componentInfo;

} // namespace mirel

extern "C" {

/// Ends with a null pointer.
extern mirel::ComponentInfo *const repairpages_mirel_componentInfoTable[2];

/// What this library is and offers. May be called at any time after loading.
const mirel::PluginInfo *pluginfo();

/// Hands over the host, a mirel::IHost that outlives every component. Before
/// this no service is found.
void pluginit(void *host);
}
