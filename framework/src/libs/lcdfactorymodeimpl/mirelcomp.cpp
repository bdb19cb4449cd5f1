#include "mirelcomp.h"

#include "factorymodewidget.h"

#include <cstddef>
#include <new>

// The records by which the host finds, creates and deletes the component, and the two functions that it calls first.

// The host reads the records by the offsets of their fields.
static_assert(sizeof(mirel::PluginInfo) == 40 && alignof(mirel::PluginInfo) == 8);
static_assert(offsetof(mirel::PluginInfo, interfaceVersion) == 0);
static_assert(offsetof(mirel::PluginInfo, componentInfoTable) == 8);
static_assert(offsetof(mirel::PluginInfo, pluginName) == 16);
static_assert(offsetof(mirel::PluginInfo, pluginVersion) == 24);
static_assert(offsetof(mirel::PluginInfo, pluginMeta) == 32);
static_assert(sizeof(mirel::ComponentInfo) == 112 && alignof(mirel::ComponentInfo) == 8);
static_assert(sizeof(mirel::ComponentInfo::creator) == 32 && sizeof(mirel::ComponentInfo::deletor) == 32);
static_assert(sizeof(mirel::ComponentInfo::getMessageHandler) == 32);

using LCD::FactoryModeImpl::FactoryModeWidget;
using Component = mirel::ComponentTmpl<FactoryModeWidget>;

template <>
void *Component::creator()
{
    return new (std::nothrow) FactoryModeWidget(nullptr);
}

template <>
void Component::deletor(void *object)
{
    delete static_cast<FactoryModeWidget *>(object);
}

template <>
mirel::IMessageHandler *Component::getMessageHandler(void *)
{
    return nullptr;
}

template <>
mirel::ComponentInfo Component::componentInfo = {&Component::creator, &Component::deletor,
                                                 &Component::getMessageHandler, "lcd.factory.mode", "{\"end\":0 }\r\n"};

mirel::ComponentInfo *const lcdfactorymodeimpl_mirel_componentInfoTable[2] = {&Component::componentInfo, nullptr};

static const mirel::PluginInfo pinfo = {"0.1", lcdfactorymodeimpl_mirel_componentInfoTable, "lcdfactorymodeimpl",
                                        "1.0.0", "{\"end\":0 }"};

const mirel::PluginInfo *pluginfo()
{
    return &pinfo;
}

void pluginit(void *host)
{
    mirel::api::get().setHost(host);
}
