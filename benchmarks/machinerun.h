#pragma once

#include "completemachinephaseinfo.h"
#include "machineoperator.h"

#include <QtCore/QVector>

namespace benchmark {
class State;
}

/// Returns the screens of a passing run.
QVector<LCD::FactoryModeImpl::CompleteMachinePhaseInfo> screensOfRun(const QuietHost &host, const Keys &keys);

/// The translations, screens and key LEDs of a passing run, without the component.
void bareMachineRun(benchmark::State &bench);
