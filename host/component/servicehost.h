#pragma once

#include "mirel/api.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace panelhost {

class Faults;
class Journal;

/// The host as a component sees it: services and components by name. Lookups on any thread; a service whose fault
/// "service-absent" is on isn't found.
class ServiceHost final : public mirel::IHost
{
public:
    ServiceHost(Journal &journal, const Faults &faults) : m_journal(journal), m_faults(faults) {}

    void *getComponent(const char *name) override;

    /// A null @p object takes the name away.
    void offer(const std::string &name, void *object);
    std::vector<std::string> names() const;

private:
    Journal &m_journal;
    const Faults &m_faults;
    mutable std::mutex m_mutex;
    std::map<std::string, void *> m_objects;
};

}
