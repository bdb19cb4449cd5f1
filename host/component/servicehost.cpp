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
        const auto found = m_objects.find(wanted);
        object = found == m_objects.end() ? nullptr : found->second;
    }
    m_journal.add(Journal::Kind::Call, QStringLiteral("getComponent"),
                  {{QStringLiteral("name"), text}, {QStringLiteral("found"), object != nullptr}});
    return object;
}

void ServiceHost::offer(const std::string &name, void *object)
{
    const std::lock_guard lock(m_mutex);
    if (object)
        m_objects[name] = object;
    else
        m_objects.erase(name);
}

std::vector<std::string> ServiceHost::names() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> names;
    for (const auto &[name, object] : m_objects)
        names.push_back(name);
    return names;
}

}
