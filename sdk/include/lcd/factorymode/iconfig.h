#pragma once

#include <QtCore/QString>

namespace LCD::FactoryMode {

/// The service "lcdConfig": settings of the device. Called on the GUI thread.
class IConfig
{
public:
    /// Returns the key mode for FactoryTestFrame::setFactoryTestKeyMode().
    virtual QString getFactoryTestKeyMode() = 0;

protected:
    ~IConfig() = default;
};

}
