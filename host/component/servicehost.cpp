#include "component/servicehost.h"

#include "device/faults.h"
#include "journal/journal.h"

namespace panelhost {

void *ServiceHost::getComponent(const char *name)
{
    const std::string wanted = name ? name : "";
    const QString text = QString::fromStdString(wanted);
    void *object = nullptr;
    if (!m_faults.isOn(QStringLiteral("service-absent"), QStringLiteral("service"), text)) {
        const std::lock_guard lock(m_mutex);
        const auto found = m_services.find(wanted);
        object = found == m_services.end() ? nullptr : found->second;
    }
    m_journal.add(Journal::Kind::Call, QStringLiteral("getComponent"),
                  {{QStringLiteral("name"), text}, {QStringLiteral("found"), object != nullptr}});
    return object;
}

void ServiceHost::addService(const std::string &name, void *object)
{
    const std::lock_guard lock(m_mutex);
    m_services[name] = object;
}

void ServiceHost::removeService(const std::string &name)
{
    const std::lock_guard lock(m_mutex);
    m_services.erase(name);
}

std::vector<std::string> ServiceHost::serviceNames() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> names;
    for (const auto &[name, object] : m_services)
        names.push_back(name);
    return names;
}

}
