#pragma once

#include <type_traits>

namespace mirel {

/// The host as a component library sees it. The object belongs to the host and outlives every component.
class IHost
{
public:
    /// The service or component called @p name, nullptr when the host has none. No type check is made.
    virtual void *getComponent(const char *name) = 0;

protected:
    ~IHost() = default;
};

/// The process-wide handle of the host. Every library that includes this header shares one instance, so
/// `pluginit` in any of them fills it for all. The pointer is a plain word: set it before other threads read it.
class api
{
public:
    static api &get()
    {
        static api instance;
        return instance;
    }

    IHost *host() const { return m_host; }
    void setHost(void *host) { m_host = static_cast<IHost *>(host); }

    /// Looks @p name up at the host. nullptr when there is no host yet or the host has no such service.
    template <class Service>
    Service *service(const char *name) const
    {
        return m_host ? static_cast<Service *>(m_host->getComponent(name)) : nullptr;
    }

private:
    constexpr api() = default;

    IHost *m_host = nullptr;
    [[maybe_unused]] void *m_unused[2] = {nullptr, nullptr};
};

static_assert(sizeof(api) == 24, "the handle is three words");
static_assert(std::is_standard_layout_v<api>, "the host pointer is the first word");

}
