#pragma once

#include "quiethost.h"

#include <QtCore/QMutex>

#include <algorithm>

// The work that one report makes, written down straight on: nothing shared, nothing guarded against the end of the
// object, one listener without a table.

struct HandwrittenNet
{
    void onLinkChanged(std::any payload)
    {
        const auto *held = std::any_cast<std::shared_ptr<NetRecords>>(&payload);
        if (!held || !*held)
            return;
        const std::shared_ptr<NetRecords> records = *held;
        int highest = -1;
        for (const auto &record : *records)
            highest = std::max(highest, record.port);
        std::vector<bool> links(static_cast<std::size_t>(highest + 1), false);
        for (const auto &record : *records) {
            if (record.port >= 0 && record.link != 0)
                links[static_cast<std::size_t>(record.port)] = true;
        }
        {
            const QMutexLocker locker(&mutex);
            portLinks = links;
        }
        stateListener(1);
        linkListener(links, true);
    }

    QMutex mutex;
    std::vector<bool> portLinks;
    std::function<void(int)> stateListener;
    std::function<void(const std::vector<bool> &, bool)> linkListener;
};

struct HandwrittenUsb
{
    void onUsbChanged(std::any payload)
    {
        const auto *held = std::any_cast<std::shared_ptr<UsbRecords>>(&payload);
        if (!held || !*held)
            return;
        const std::shared_ptr<UsbRecords> records = *held;
        std::vector<int> ports;
        {
            const QMutexLocker locker(&mutex);
            ports = knownPorts;
        }
        for (const auto &record : *records) {
            if (record.nodeType == 26)
                ports.push_back(record.portId);
        }
        std::sort(ports.begin(), ports.end());
        ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
        std::vector<bool> links(ports.size(), false);
        for (const auto &record : *records) {
            if (record.nodeType == 26 && record.linkBlocked == 0 && record.linkActive != 0) {
                const auto port = std::lower_bound(ports.begin(), ports.end(), record.portId);
                links[static_cast<std::size_t>(port - ports.begin())] = true;
            }
        }
        {
            const QMutexLocker locker(&mutex);
            knownPorts = ports;
            portLinks.resize(ports.size(), false);
            for (std::size_t i = 0; i < ports.size(); ++i)
                portLinks[i] = portLinks[i] || links[i];
        }
        linkListener(links);
    }

    QMutex mutex;
    std::vector<int> knownPorts;
    std::vector<bool> portLinks;
    std::function<void(const std::vector<bool> &)> linkListener;
};
