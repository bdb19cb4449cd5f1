#pragma once

#include <QtCore/QString>

namespace LCD::FactoryMode {

/// Service "lcdConfig": settings of the device.
class IConfig
{
public:
    /// The key mode for FactoryTestFrame::setFactoryTestKeyMode().
    virtual QString getFactoryTestKeyMode() = 0;

protected:
    ~IConfig() = default;
};

}
