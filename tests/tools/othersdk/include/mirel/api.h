#pragma once
namespace mirel {
class IHost
{
public:
    virtual void *getComponent(const char *name) = 0;

protected:
    ~IHost() = default;
};
class api
{
public:
    static api &get()
    {
        static api theOne;
        return theOne;
    }
    IHost *host() const { return static_cast<IHost *>(words[0]); }
    void setHost(void *host) { words[0] = host; }
    template <class Service>
    Service *service(const char *name) const
    {
        return host() ? static_cast<Service *>(host()->getComponent(name)) : nullptr;
    }

private:
    void *words[3] = {};
};
}
