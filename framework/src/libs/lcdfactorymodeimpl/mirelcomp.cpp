#include "mirelcomp.h"

#include "factorymodewidget.h"

#include <new>

// The records by which the host finds, creates and deletes the component, and the two functions that it calls first.

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
