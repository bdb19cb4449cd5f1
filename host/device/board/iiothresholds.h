#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace panelhost {

/// The threshold events of an IIO channel. The kernel reports when the value leaves a range, so that the channel needs
/// not be read again and again. What the thresholds were before is restored at the end.
class IioThresholds
{
public:
    /// @p device is the directory of the device in /sys, @p node its device node, and @p channel such as "voltage1".
    /// Returns nullptr if the channel has no events with two thresholds, or if this process may not use them.
    static std::unique_ptr<IioThresholds> open(const QString &device, const QString &node, const QString &channel);
    ~IioThresholds();
    IioThresholds(const IioThresholds &) = delete;
    IioThresholds &operator=(const IioThresholds &) = delete;

    /// Returns the descriptor that can be read when there are events.
    int fd() const { return m_events; }
    /// Reads all events. Returns false if there will be no more, because the device is gone.
    bool takeEvents();
    /// Sets the range. Returns false if the driver refuses it.
    bool setRange(int low, int high);

private:
    IioThresholds(const QString &device, const QString &channel);

    QString path(const char *attribute) const;
    bool isComplete() const;
    bool save();
    bool set(const QString &path, const QByteArray &value) const;

    const QString m_prefix; // of the paths of all attributes
    const QString m_low;    // paths
    const QString m_high;
    std::vector<QString> m_enable;
    std::vector<std::pair<QString, QByteArray>> m_saved; // in the order in which they are restored
    std::optional<std::pair<int, int>> m_range;
    int m_events = -1;
};

}
