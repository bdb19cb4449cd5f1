#include "device/board/netlinks.h"

#include <algorithm>

#include <linux/if.h>
#include <linux/rtnetlink.h>
#include <netlink/cache.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/object.h>
#include <netlink/route/link.h>
#include <netlink/socket.h>
#include <sys/socket.h>

namespace panelhost {

namespace {

// Other sources have their turn after so many messages.
constexpr int MaxMessages = 64;

QString problemOf(const QString &interface, bool exists, bool isUp)
{
    if (!exists)
        return QStringLiteral("There is no network interface \"%1\". \"ip link\" lists those that there are.")
            .arg(interface);
    if (!isUp)
        return QStringLiteral("The network interface \"%1\" is down, so it never has a link. \"ip link set %1 up\" "
                              "switches it on.")
            .arg(interface);
    return {};
}

}

void NetLinks::SocketDeleter::operator()(nl_sock *socket) const
{
    nl_socket_free(socket);
}

NetLinks::NetLinks(const Configuration &configuration, Callbacks callbacks)
    : m_configuration(configuration), m_callbacks(std::move(callbacks))
{
    for (const QString &interface : configuration.interfaces)
        m_ports.push_back({interface, false, {}});
}

NetLinks::~NetLinks() = default;

bool NetLinks::start(QString *error)
{
    if (!listen(error))
        return false;
    // Listening has begun before, so that no change is lost in between.
    m_hasLost = !readAll();
    report();
    return true;
}

bool NetLinks::listen(QString *error)
{
    m_socket.reset(nl_socket_alloc());
    m_requests.reset(nl_socket_alloc());
    const auto update = [](nl_msg *message, void *self) -> int {
        const auto parsed = [](nl_object *object, void *argument) {
            auto *link = reinterpret_cast<rtnl_link *>(object);
            static_cast<NetLinks *>(argument)->update(*link, nl_object_get_msgtype(object));
        };
        nl_msg_parse(message, parsed, self);
        return NL_OK;
    };
    nl_socket_disable_seq_check(m_socket.get());
    nl_socket_modify_cb(m_socket.get(), NL_CB_VALID, NL_CB_CUSTOM, update, this);
    int result = nl_connect(m_requests.get(), NETLINK_ROUTE);
    if (result == 0)
        result = nl_connect(m_socket.get(), NETLINK_ROUTE);
    if (result == 0)
        result = nl_socket_add_membership(m_socket.get(), RTNLGRP_LINK);
    if (result == 0)
        result = nl_socket_set_nonblocking(m_socket.get());
    if (result != 0) {
        *error = QStringLiteral("The links of the network interfaces can't be read: %1.")
                     .arg(QString::fromLocal8Bit(nl_geterror(result)));
        m_socket.reset();
        return false;
    }
    const int size = m_configuration.receiveBuffer;
    if (setsockopt(fd(), SOL_SOCKET, SO_RCVBUFFORCE, &size, sizeof size) != 0)
        setsockopt(fd(), SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    return true;
}

int NetLinks::fd() const
{
    return m_socket ? nl_socket_get_fd(m_socket.get()) : -1;
}

// After an overrun, the messages that are still in the buffer are older than what readAll() returns. They are read
// first, otherwise they would seem to be changes.
void NetLinks::ready()
{
    for (int message = 0; message < MaxMessages; ++message) {
        const int result = nl_recvmsgs_default(m_socket.get());
        if (result == -NLE_NOMEM) { // ENOBUFS: the kernel has dropped messages
            m_hasLost = true;
        } else if (result == -NLE_AGAIN) {
            if (m_hasLost && readAll()) {
                m_hasLost = false;
                report();
            }
            return;
        }
    }
}

NetLinks::Interface NetLinks::interfaceOf(rtnl_link &link)
{
    const unsigned flags = rtnl_link_get_flags(&link);
    // The kernel sets IFF_LOWER_UP only while the interface is up.
    return {QString::fromLocal8Bit(rtnl_link_get_name(&link)), (flags & IFF_UP) != 0, (flags & IFF_LOWER_UP) != 0};
}

void NetLinks::update(rtnl_link &link, int messageType)
{
    // A bridge reports the interfaces that join and leave it by messages of its own.
    if (rtnl_link_get_family(&link) == AF_BRIDGE)
        return;
    const int index = rtnl_link_get_ifindex(&link);
    if (messageType == RTM_DELLINK)
        m_interfaces.erase(index);
    else if (messageType == RTM_NEWLINK)
        m_interfaces[index] = interfaceOf(link);
    else
        return;
    report();
}

// Fails if an interface changed in between. That change is also sent as a message, and ready() tries again after it.
bool NetLinks::readAll()
{
    nl_cache *cache = nullptr;
    if (rtnl_link_alloc_cache(m_requests.get(), AF_UNSPEC, &cache) != 0)
        return false;
    m_interfaces.clear();
    for (nl_object *object = nl_cache_get_first(cache); object; object = nl_cache_get_next(object)) {
        auto *link = reinterpret_cast<rtnl_link *>(object);
        m_interfaces[rtnl_link_get_ifindex(link)] = interfaceOf(*link);
    }
    nl_cache_free(cache);
    return true;
}

void NetLinks::report()
{
    for (std::size_t port = 0; port < m_ports.size(); ++port) {
        const auto found = std::find_if(m_interfaces.begin(), m_interfaces.end(),
                                        [&](const auto &each) { return each.second.name == m_ports[port].interface; });
        report(static_cast<int>(port), found == m_interfaces.end() ? nullptr : &found->second);
    }
}

void NetLinks::report(int port, const Interface *interface)
{
    Port &state = m_ports[static_cast<std::size_t>(port)];
    const QString problem = problemOf(state.interface, interface != nullptr, interface && interface->isUp);
    if (std::exchange(state.problem, problem) != problem && m_callbacks.status)
        m_callbacks.status(port, problem);
    const bool isLinked = interface && interface->hasCarrier;
    if (std::exchange(state.isLinked, isLinked) != isLinked)
        m_callbacks.changed(port, isLinked);
}

}
