#pragma once

#include <cstddef>
#include <functional>

namespace mirel {

class IMessageHandler;

/// What a library tells the host of one component: how to make and end it, and its name.
struct ComponentInfo
{
    std::function<void *()> creator;
    std::function<void(void *)> deletor;
    std::function<IMessageHandler *(void *)> getMessageHandler;
    const char *componentName;
    const char *componentMeta;
};

/// What a library tells the host of itself. `componentInfoTable` ends with a null pointer.
struct PluginInfo
{
    const char *interfaceVersion;
    ComponentInfo *const *componentInfoTable;
    const char *pluginName;
    const char *pluginVersion;
    const char *pluginMeta;
};

/// The functions and the record of the component class @p T. The library that offers T specialises all four.
template <class T>
struct ComponentTmpl
{
    static void *creator();
    static void deletor(void *object);
    static IMessageHandler *getMessageHandler(void *object);
    static ComponentInfo componentInfo;
};

// std::function is no standard-layout type to the compiler, and lies in memory like one all the same.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(sizeof(ComponentInfo) == 112);
static_assert(offsetof(ComponentInfo, creator) == 0);
static_assert(offsetof(ComponentInfo, deletor) == 32);
static_assert(offsetof(ComponentInfo, getMessageHandler) == 64);
static_assert(offsetof(ComponentInfo, componentName) == 96);
static_assert(offsetof(ComponentInfo, componentMeta) == 104);
#pragma GCC diagnostic pop

static_assert(sizeof(PluginInfo) == 40);
static_assert(offsetof(PluginInfo, interfaceVersion) == 0);
static_assert(offsetof(PluginInfo, componentInfoTable) == 8);
static_assert(offsetof(PluginInfo, pluginName) == 16);
static_assert(offsetof(PluginInfo, pluginVersion) == 24);
static_assert(offsetof(PluginInfo, pluginMeta) == 32);

}
