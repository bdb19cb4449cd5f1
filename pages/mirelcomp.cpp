#include "mirelcomp.h"

#include "repairmode.h"

#include <new>

using LCD::RepairPages::RepairMode;
using Component = mirel::ComponentTmpl<RepairMode>;

template <>
void *Component::creator()
{
    return new (std::nothrow) RepairMode(nullptr);
}

template <>
void Component::deletor(void *object)
{
    delete static_cast<RepairMode *>(object);
}

template <>
mirel::IMessageHandler *Component::getMessageHandler(void *)
{
    return nullptr;
}

template <>
mirel::ComponentInfo Component::componentInfo = {&Component::creator, &Component::deletor,
                                                 &Component::getMessageHandler, "lcd.repair.mode", "{\"end\":0 }"};

mirel::ComponentInfo *const repairpages_mirel_componentInfoTable[2] = {&Component::componentInfo, nullptr};

static const mirel::PluginInfo pluginInfo = {"0.1", repairpages_mirel_componentInfoTable, "repairpages", "1.0.0",
                                             "{\"end\":0 }"};

const mirel::PluginInfo *pluginfo()
{
    return &pluginInfo;
}

void pluginit(void *host)
{
    mirel::api::get().setHost(host);
}
