#pragma once

#include <type_traits>

namespace mirel {

/// The interface of the host for component libraries. The host owns the object, which outlives every component.
class IHost
{
public:
    /// Returns the service or component named @p name, or nullptr if there is none. The type isn't checked: the pointer
    /// must point to exactly the interface that the caller expects. The host keeps ownership.
    virtual void *getComponent(const char *name) = 0;

protected:
    ~IHost() = default;
};

/// The process-wide handle of the host. All libraries that include this header share one instance, so one call of
/// `pluginit` sets the host for all of them. Not thread-safe: set the host before other threads read it.
class api
{
public:
    /// Returns the handle of this process.
    static api &get()
    {
        static api instance;
        return instance;
    }

    /// Returns the host, or nullptr before setHost(). The host isn't owned.
    IHost *host() const { return m_host; }
    /// Sets the host. @p host must point to an IHost that outlives all components, or be null.
    void setHost(void *host) { m_host = static_cast<IHost *>(host); }

    /// Returns the service named @p name, or nullptr if no host is set or the host has no such service.
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
