#include "mockinput.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <mutex>
#include <sys/ioctl.h>
#include <unistd.h>

// umockdev_in_mock_environment() is false as long as there is no test bed.
bool canMock()
{
    return qgetenv("LD_PRELOAD").contains("umockdev");
}

MockBed::MockBed()
    : m_testbed(umockdev_testbed_new()), m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE))
{
    m_thread = std::thread([this] {
        g_main_context_push_thread_default(m_context);
        g_main_loop_run(m_loop);
    });
}

MockBed::~MockBed()
{
    runInLoop([this] { g_main_loop_quit(m_loop); });
    m_thread.join();
    g_object_unref(m_testbed);
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
    for (const int descriptor : m_descriptors)
        ::close(descriptor);
}

// Waits until it is done. The lock shows the thread sanitizer that the call is handed over; it doesn't see the locks of
// GLib.
void MockBed::runInLoop(const std::function<void()> &work)
{
    struct Call
    {
        const std::function<void()> &work;
        std::shared_ptr<std::promise<void>> done;
    } call = {work, std::make_shared<std::promise<void>>()};
    static std::mutex handover;
    std::unique_lock locker(handover);
    locker.unlock();
    const auto run = [](void *argument) -> gboolean {
        std::unique_lock taken(handover);
        taken.unlock();
        const Call pending = *static_cast<Call *>(argument);
        pending.work();
        pending.done->set_value();
        return G_SOURCE_REMOVE;
    };
    GSource *source = g_idle_source_new();
    g_source_set_callback(source, run, &call, nullptr);
    g_source_attach(source, m_context);
    g_source_unref(source);
    call.done->get_future().wait();
}

// The handler is called in the loop in which it was attached.
void MockBed::attachIoctls(const QString &node, UMockdevIoctlBase *handler)
{
    runInLoop([&] {
        GError *error = nullptr;
        if (!umockdev_testbed_attach_ioctl(m_testbed, node.toUtf8().constData(), handler, &error))
            qFatal("%s", error->message);
    });
}

void MockBed::add(const QString &description)
{
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(m_testbed, description.toUtf8().constData(), &error))
        qFatal("%s", error->message);
}

void MockBed::set(const QString &sysPath, const char *attribute, const char *value)
{
    umockdev_testbed_set_attribute(m_testbed, sysPath.toUtf8().constData(), attribute, value);
}

void MockBed::uevent(const QString &sysPath, const char *action)
{
    umockdev_testbed_uevent(m_testbed, sysPath.toUtf8().constData(), action);
}

void MockBed::remove(const QString &sysPath)
{
    umockdev_testbed_remove_device(m_testbed, sysPath.toUtf8().constData());
}

MockInput::MockInput(MockBed &bed, const Description &description)
    : m_bed(bed), m_description(description), m_ioctls(umockdev_ioctl_base_new())
{
    const QString number = QString::number(description.number);
    const QString parent = QStringLiteral("/devices/platform/mock/input/input") + number;
    m_path = QStringLiteral("/sys%1/event%2").arg(parent, number);
    m_node = QStringLiteral("/dev/input/event") + number;
    bed.add(QStringLiteral("P: %1\nE: SUBSYSTEM=input\nE: NAME=\"%2\"\nA: name=%2\\n\n\n").arg(parent, description.name)
            + QStringLiteral("P: %1/event%2\nN: input/event%2\nE: SUBSYSTEM=input\nE: DEVNAME=/dev/input/event%2\n"
                             "E: ID_PATH=%3\nA: dev=13:%4\n\n")
                  .arg(parent, number, description.idPath)
                  .arg(64 + description.number));
    g_signal_connect(m_ioctls, "handle-ioctl", G_CALLBACK(&MockInput::onIoctl), this);
    bed.attachIoctls(m_node, m_ioctls);
    m_events = dup(umockdev_testbed_get_dev_fd(bed.get(), m_node.toUtf8().constData()));
}

MockInput::~MockInput()
{
    umockdev_testbed_detach_ioctl(m_bed.get(), m_node.toUtf8().constData(), nullptr);
    g_object_unref(m_ioctls);
    if (m_events >= 0)
        ::close(m_events);
}

void MockInput::send(unsigned type, unsigned code, int value)
{
    input_event events[2] = {};
    events[0].type = static_cast<__u16>(type);
    events[0].code = static_cast<__u16>(code);
    events[0].value = value;
    if (type == EV_KEY)
        setState(code, value != 0);
    if (write(m_events, events, sizeof events) != sizeof events)
        qFatal("The event can't be written.");
}

void MockInput::setState(unsigned key, bool down)
{
    const std::lock_guard lock(m_mutex);
    if (down)
        m_down.insert(key);
    else
        m_down.remove(key);
}

// The bed can't use the number of a terminal twice, so the node stays open. The bed's own descriptor is replaced by one
// that leads nowhere, so that the bed can close it later.
void MockInput::hangUp()
{
    m_bed.closeLater(::open(m_node.toUtf8().constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    ::close(std::exchange(m_events, -1));
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        qFatal("There is no pipe.");
    dup2(ends[0], umockdev_testbed_get_dev_fd(m_bed.get(), m_node.toUtf8().constData()));
    ::close(ends[0]);
    ::close(ends[1]);
}

gboolean MockInput::onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *self)
{
    auto &device = *static_cast<MockInput *>(self);
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    UMockdevIoctlData *argument = umockdev_ioctl_client_get_arg(client);
    if (request == EVIOCGRAB) { // the argument is a number
        const bool isGrabbing = *reinterpret_cast<void **>(argument->data) != nullptr;
        const bool isBusy = isGrabbing && device.m_isGrabbedByOther;
        if (!isBusy)
            device.m_isGrabbed = isGrabbing;
        umockdev_ioctl_client_complete(client, isBusy ? -1 : 0, isBusy ? EBUSY : 0);
        return TRUE;
    }
    std::vector<unsigned char> data(_IOC_SIZE(request));
    UMockdevIoctlData *target = umockdev_ioctl_data_resolve(argument, 0, data.size(), nullptr);
    const int result = device.answer(request, data);
    umockdev_ioctl_data_update(target, 0, data.data(), static_cast<int>(data.size()));
    umockdev_ioctl_data_unref(target);
    umockdev_ioctl_client_complete(client, result, result < 0 ? ENOENT : 0);
    return TRUE;
}

// Returns what ioctl() returns.
int MockInput::answer(unsigned long request, std::vector<unsigned char> &data)
{
    const unsigned number = _IOC_NR(request);
    const int size = static_cast<int>(data.size());
    const std::lock_guard lock(m_mutex);
    if (request == EVIOCGVERSION) {
        const int version = EV_VERSION;
        std::memcpy(data.data(), &version, sizeof version);
    } else if (number == _IOC_NR(EVIOCGNAME(0))) {
        const QByteArray name = m_description.name.toUtf8();
        std::memcpy(data.data(), name.constData(), static_cast<size_t>(qMin(size, name.size() + 1)));
    } else if (number == _IOC_NR(EVIOCGKEY(0))) {
        setBits(data, m_down.values());
    } else if (number == _IOC_NR(EVIOCGBIT(EV_KEY, 0))) {
        setBits(data, m_description.keys);
    } else if (number == _IOC_NR(EVIOCGBIT(EV_REL, 0))) {
        setBits(data, m_description.relative);
    } else if (number == _IOC_NR(EVIOCGBIT(EV_ABS, 0))) {
        setBits(data, m_description.absolute.keys());
    } else if (number == _IOC_NR(EVIOCGBIT(0, 0))) {
        setBits(data, {EV_SYN, EV_KEY, EV_REL, EV_ABS});
    } else if (number >= _IOC_NR(EVIOCGABS(0)) && number <= _IOC_NR(EVIOCGABS(ABS_MAX))) {
        const input_absinfo info = m_description.absolute.value(number - _IOC_NR(EVIOCGABS(0)));
        std::memcpy(data.data(), &info, sizeof info);
    } else if (number == _IOC_NR(EVIOCGPHYS(0)) || number == _IOC_NR(EVIOCGUNIQ(0))) {
        return -1;
    }
    return size;
}

void MockInput::setBits(std::vector<unsigned char> &data, const QList<unsigned> &bits) const
{
    for (const unsigned bit : bits) {
        if (bit / 8 < data.size())
            data[bit / 8] = static_cast<unsigned char>(data[bit / 8] | 1U << bit % 8);
    }
}
