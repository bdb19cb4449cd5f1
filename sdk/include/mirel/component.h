#pragma once

#include <cstddef>
#include <functional>

namespace mirel {

class IMessageHandler;

/// The record of one component: the functions that create and delete its object, and its name. A library provides one
/// record per component.
/// Call the functions on the GUI thread.
struct ComponentInfo
{
    /// Returns a new object, which the caller owns, or nullptr if memory runs out.
    std::function<void *()> creator;
    /// Deletes an object that creator() returned. Nullptr is allowed.
    std::function<void(void *)> deletor;
    /// Returns the message handler of an object, or nullptr if it has none.
    std::function<IMessageHandler *(void *)> getMessageHandler;
    const char *componentName; ///< the name by which IHost::getComponent() finds the component
    const char *componentMeta; ///< additional data; may be empty
};

/// The record of a library. The library owns it and all that it points to, and it is valid for the life of the process.
struct PluginInfo
{
    const char *interfaceVersion;             ///< the version of these records, which the host checks
    ComponentInfo *const *componentInfoTable; ///< the components; ends with a null pointer
    const char *pluginName;                   ///< the name of the library
    const char *pluginVersion;                ///< the version of the library
    const char *pluginMeta;                   ///< additional data; may be empty
};

/// The functions and the record of the component class @p T. The library that contains T specializes all four.
template <class T>
struct ComponentTmpl
{
    /// See ComponentInfo::creator.
    static void *creator();
    /// See ComponentInfo::deletor. @p object is a T or null.
    static void deletor(void *object);
    /// See ComponentInfo::getMessageHandler. @p object is a T.
    static IMessageHandler *getMessageHandler(void *object);
    /// The record with these functions.
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
