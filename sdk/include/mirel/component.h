#pragma once

#include <cstddef>
#include <functional>

namespace mirel {

class IMessageHandler;

/// The record of one component: the functions that create and delete its object, and its name. A library provides one
/// record per component.
///
/// creator() returns a new object, which the caller owns, or nullptr if memory runs out. deletor() deletes an object
/// that creator() returned; nullptr is allowed.
struct ComponentInfo
{
    std::function<void *()> creator;
    std::function<void(void *)> deletor;
    std::function<IMessageHandler *(void *)> getMessageHandler;
    const char *componentName;
    const char *componentMeta;
};

/// The record of a library. `componentInfoTable` lists its components and ends with a null pointer. The library owns
/// the record, which is valid for the life of the process.
struct PluginInfo
{
    const char *interfaceVersion;
    ComponentInfo *const *componentInfoTable;
    const char *pluginName;
    const char *pluginVersion;
    const char *pluginMeta;
};

/// The functions and the record of the component class @p T. The library that contains T specializes all four.
template <class T>
struct ComponentTmpl
{
    static void *creator();
    static void deletor(void *object);
    static IMessageHandler *getMessageHandler(void *object);
    static ComponentInfo componentInfo;
};

// The compiler doesn't treat std::function as a standard-layout type, but its layout in memory is that of one.
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
