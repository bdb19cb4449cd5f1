#pragma once

#include "device/board/ledoutputstate.h"
#include "device/board/sysfsdevice.h"

namespace panelhost {

/// An LED in /sys/class/leds. It writes only what changes. One thread at a time.
class LedOutput
{
public:
    LedOutput(const QString &name, bool isMulticolor);

    const SysfsDevice &device() const { return m_device; }
    /// Reads the largest brightness and checks that all attributes that show() needs can be written. Writes nothing.
    /// Returns false and sets @p error to a sentence on failure.
    bool open(QString *error);
    /// Shows @p state. Returns false and sets @p error to "path: reason" if it can't be written; the next call writes
    /// everything again.
    bool show(const LedOutputState &state, QString *error);
    /// Call it when the LED has disappeared. The next call of show() opens it again and writes everything.
    void reset();

private:
    bool checkTriggers(QString *error) const;
    bool openMulticolor(QString *error);
    bool writeColor(const LedOutputState &state, QString *error);
    bool hasTimer() const;
    bool writeBlink(const LedOutputState &state, QString *error);
    bool writeSteady(const LedOutputState &state, QString *error);
    bool writeAll(const LedOutputState &state, QString *error);

    SysfsDevice m_device;
    bool m_isMulticolor;
    int m_max = 0;                  // 0: not open
    QList<QByteArray> m_components; // of a multicolor LED, in its order
    std::optional<LedOutputState> m_shown;
};

/// A backlight in /sys/class/backlight. One thread at a time.
class BacklightOutput
{
public:
    explicit BacklightOutput(const QString &name);

    const SysfsDevice &device() const { return m_device; }
    /// Like LedOutput::open(), show() and reset().
    bool open(QString *error);
    bool show(int percent, QString *error);
    void reset();

private:
    SysfsDevice m_device;
    int m_max = 0;
    std::optional<int> m_shown;
};

}
