#include "session/devicenames.h"

#include "device/keylist.h"
#include "lcd/translate/lcdfwtranslatemanager.h"

namespace panelhost {

namespace {

QStringList portNames(const QString &kind, int count)
{
    QStringList names;
    for (int number = 1; number <= count; ++number)
        names.append(kind + QString::number(number));
    return names;
}

QMap<QString, int> keysOf(const QString &share)
{
    QMap<QString, int> keys;
    for (const auto &key : readKeyList(share))
        keys.insert(key.name, key.halKey);
    return keys;
}

}

std::optional<int> DeviceNames::halKey(const QString &key) const
{
    bool isNumber = false;
    const int number = key.toInt(&isNumber);
    if (isNumber && keys.values().contains(number))
        return number;
    return keys.contains(key) ? std::optional<int>(keys[key]) : std::nullopt;
}

DeviceNames deviceNamesOf(const Session::Options &options)
{
    DeviceNames deviceNames;
    deviceNames.keys = keysOf(shareDirectoryOf(options));
    deviceNames.netPorts = portNames(QStringLiteral("net"), options.netPorts);
    deviceNames.usbPorts = portNames(QStringLiteral("usb"), options.usbPorts);
    deviceNames.languages = LCDFWTranslateManager::instance()->languages();
    return deviceNames;
}

}
