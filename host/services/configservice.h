#pragma once

#include "journal/journal.h"
#include "lcd/factorymode/iconfig.h"

namespace panelhost {

/// Service "lcdConfig": settings of the device.
class ConfigService final : public LCD::FactoryMode::IConfig
{
public:
    explicit ConfigService(Journal &journal) : m_journal(journal) {}

    QString getFactoryTestKeyMode() override;

private:
    Journal &m_journal;
};

}
