#pragma once

#include "mirel/api.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace panelhost {

class Faults;
class Journal;

/// The host's side of the contract: the component looks services up by name. A service isn't found while the fault
/// "service-absent" is on for it. Thread-safe.
class ServiceHost final : public mirel::IHost
{
public:
    ServiceHost(Journal &journal, const Faults &faults) : m_journal(journal), m_faults(faults) {}

    void *getComponent(const char *name) override;

    /// Makes @p object, which must not be null, known by @p name. It must outlive the host or be removed.
    void addService(const std::string &name, void *object);
    void removeService(const std::string &name);
    std::vector<std::string> serviceNames() const;

private:
    Journal &m_journal;
    const Faults &m_faults;
    mutable std::mutex m_mutex;
    std::map<std::string, void *> m_services;
};

}
