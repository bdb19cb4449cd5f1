#pragma once
#include <functional>
namespace mirel {
class IMessageHandler;
struct ComponentInfo
{
    std::function<void *()> creator;
    std::function<void(void *)> deletor;
    std::function<IMessageHandler *(void *)> getMessageHandler;
    const char *componentName;
    const char *componentMeta;
};
struct PluginInfo
{
    const char *interfaceVersion;
    ComponentInfo *const *componentInfoTable;
    const char *pluginName;
    const char *pluginVersion;
    const char *pluginMeta;
};
// This SDK brings bodies; a library that specialises them must not mind.
template <class T>
struct ComponentTmpl
{
    static void *creator() { return new T(nullptr); }
    static void deletor(void *object) { delete static_cast<T *>(object); }
    static IMessageHandler *getMessageHandler(void *) { return nullptr; }
    static ComponentInfo componentInfo;
};
}
