#pragma once

#include "device/board/eventsource.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <map>
#include <memory>
#include <vector>

struct nl_object;
struct nl_sock;
struct rtnl_link;

namespace panelhost {

/// The links of network interfaces, as the kernel reports them through rtnetlink. An interface is found by its name,
/// even if it appears later or is renamed. Its link is up if the interface is up and has a carrier.
class NetLinks final : public EventSource
{
public:
    struct Configuration
    {
        QStringList interfaces; ///< one for each port, such as "eth0"
        /// Size of the socket's buffer in bytes. The system limits it if the process has no CAP_NET_ADMIN.
        int receiveBuffer = 8 * 1024 * 1024;
    };

    struct Callbacks
    {
        /// Called when the link of the interface number @c port (an index into Configuration::interfaces) has changed.
        std::function<void(int port, bool linked)> changed;
        /// Called with a sentence when the interface is missing or is down, and with an empty one when it works again.
        std::function<void(int port, const QString &problem)> status;
    };

    NetLinks(const Configuration &configuration, Callbacks callbacks);
    ~NetLinks() override;

    /// Begins to listen and reports the current links: `changed` for each that is up, and each `status` that isn't
    /// empty. Returns false and sets @p error if the kernel's interface can't be used.
    bool start(QString *error);
    QList<EventSource *> sources() { return {this}; }

    bool isLinked(int port) const { return m_ports.at(static_cast<std::size_t>(port)).isLinked; }

    int fd() const override;
    void ready() override;

private:
    struct SocketDeleter
    {
        void operator()(nl_sock *socket) const;
    };
    using Socket = std::unique_ptr<nl_sock, SocketDeleter>;

    struct Interface
    {
        QString name;
        bool isUp = false;
        bool hasCarrier = false;
    };

    struct Port
    {
        QString interface;
        bool isLinked = false;
        QString problem;
    };

    bool listen(QString *error);
    void update(rtnl_link &link, int messageType);
    static Interface interfaceOf(rtnl_link &link);
    bool readAll();
    void report();
    void report(int port, const Interface *interface);

    const Configuration m_configuration;
    const Callbacks m_callbacks;
    Socket m_socket;
    Socket m_requests;                     // for reading all interfaces
    std::map<int, Interface> m_interfaces; // by the kernel's index, which stays the same if one is renamed
    std::vector<Port> m_ports;
    bool m_hasLost = false;
};

}
