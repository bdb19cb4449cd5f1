#include "panel/activefaults.h"

#include "device/faults.h"
#include "panel/translated.h"

#include <QtCore/QStringList>

namespace panelhost {

namespace {

struct Entry
{
    const char *name;
    FaultTarget target;
};

// The faults of the log export, the factory reset and the services don't belong to a control.
constexpr Entry Entries[] = {
    {"key-dead", FaultTarget::Key},           {"key-repeats", FaultTarget::Key},
    {"key-releases", FaultTarget::Key},       {"led-stuck", FaultTarget::Key},
    {"calibration-fails", FaultTarget::TBar}, {"calibration-hangs", FaultTarget::TBar},
    {"wrong-payload", FaultTarget::Links},    {"null-payload", FaultTarget::Links},
    {"empty-payload", FaultTarget::Links},    {"empty-report", FaultTarget::Links},
    {"garbage-ports", FaultTarget::Links},    {"duplicate-reports", FaultTarget::Links},
};

bool isOnFor(const Faults &faults, const FaultInfo &info, int halKey)
{
    const QString key = QStringLiteral("key");
    return info.arguments.contains(key) ? faults.isOn(info.name, key, halKey) : faults.isOn(info.name);
}

}

QString activeFaults(const Faults &faults, FaultTarget target, int halKey)
{
    QStringList lines;
    for (const Entry &entry : Entries) {
        const FaultInfo *info = Faults::find(QString::fromLatin1(entry.name));
        if (entry.target == target && info && isOnFor(faults, *info, halKey))
            lines << translatedFault(info->description);
    }
    return lines.join(QLatin1Char('\n'));
}

}
