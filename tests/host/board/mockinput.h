#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <atomic>
#include <functional>
#include <linux/input.h>
#include <mutex>
#include <thread>
#include <umockdev.h>
#include <vector>

/// Returns whether the program runs under umockdev-wrapper. Without it there are no test beds.
bool canMock();

/// A test bed of umockdev. While it lives, /sys and udev are mock ones for this process.
class MockBed
{
public:
    MockBed();
    ~MockBed();
    MockBed(const MockBed &) = delete;
    MockBed &operator=(const MockBed &) = delete;

    UMockdevTestbed *get() const { return m_testbed; }
    /// Adds the devices of @p description, which is in the format of umockdev-record, and reports each as "add".
    void add(const QString &description);
    void set(const QString &sysPath, const char *attribute, const char *value);
    void uevent(const QString &sysPath, const char *action);
    void remove(const QString &sysPath);
    /// Closes @p descriptor when the bed is gone.
    void closeLater(int descriptor) { m_descriptors.push_back(descriptor); }
    void attachIoctls(const QString &node, UMockdevIoctlBase *handler);

private:
    void runInLoop(const std::function<void()> &work);

    UMockdevTestbed *m_testbed;
    GMainContext *m_context; // ioctls are answered in it
    GMainLoop *m_loop;
    std::vector<int> m_descriptors;
    std::thread m_thread;
};

/// An input device in a test bed: the test writes its events.
class MockInput
{
public:
    struct Description
    {
        int number; ///< of the node, such as 3 for /dev/input/event3; each only once in a bed
        QString name;
        QString idPath; ///< the udev property ID_PATH
        QList<unsigned> keys;
        QList<unsigned> relative;
        QMap<unsigned, input_absinfo> absolute;
    };

    MockInput(MockBed &bed, const Description &description);
    ~MockInput();
    MockInput(const MockInput &) = delete;
    MockInput &operator=(const MockInput &) = delete;

    QString node() const { return m_node; }
    /// Reports the device as @p action, such as "add". It can be opened only after that: when the bed reports it for
    /// the first time, its ioctls aren't answered yet.
    void uevent(const char *action) { m_bed.uevent(m_path, action); }
    /// Sends one event and the report that ends it.
    void send(unsigned type, unsigned code, int value);
    /// Sends what the kernel sends when its buffer has overflowed.
    void sendOverflow() { send(EV_SYN, SYN_DROPPED, 0); }
    /// Sets what the kernel answers if it is asked for the state of the key, without an event.
    void setState(unsigned key, bool down);
    /// Ends the connection: reading the node fails from now on.
    void hangUp();
    /// Sets whether another program has grabbed the device.
    void setGrabbedByOther(bool grabbed) { m_isGrabbedByOther = grabbed; }
    bool isGrabbed() const { return m_isGrabbed; }

private:
    static gboolean onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *self);
    int answer(unsigned long request, std::vector<unsigned char> &data);
    void setBits(std::vector<unsigned char> &data, const QList<unsigned> &bits) const;

    MockBed &m_bed;
    const Description m_description;
    QString m_path;
    QString m_node;
    UMockdevIoctlBase *m_ioctls;
    int m_events = -1; // what is written here is read from the node
    std::mutex m_mutex;
    QSet<unsigned> m_down;
    std::atomic<bool> m_isGrabbed = false;
    std::atomic<bool> m_isGrabbedByOther = false;
};
