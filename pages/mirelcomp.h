#pragma once

#include "mirel/api.h"
#include "mirel/component.h"

namespace LCD::RepairPages {
class RepairMode;
}

namespace mirel {

// The only component of this library.
template <>
void *ComponentTmpl<LCD::RepairPages::RepairMode>::creator();
template <>
void ComponentTmpl<LCD::RepairPages::RepairMode>::deletor(void *object);
template <>
IMessageHandler *ComponentTmpl<LCD::RepairPages::RepairMode>::getMessageHandler(void *object);
template <>
ComponentInfo ComponentTmpl<LCD::RepairPages::RepairMode>::componentInfo;

}

extern "C" {

/// The records of this library's components. The last entry is nullptr.
extern mirel::ComponentInfo *const repairpages_mirel_componentInfoTable[2];

/// Returns the description of this library. May be called at any time after loading.
const mirel::PluginInfo *pluginfo();

/// Sets the host, a mirel::IHost that must outlive all components. Before this call no service is found.
void pluginit(void *host);
}
