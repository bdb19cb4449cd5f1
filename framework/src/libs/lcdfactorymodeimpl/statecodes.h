#pragma once

namespace LCD::FactoryModeImpl {

// The states of the single tests, as plain numbers.
//
// In the two level tests (screen brightness and key LEDs) the state is also the level: while such a test runs, its
// state is the brightness in percent. These tests never have the state StateRunning.
constexpr int StateIdle = 0;
constexpr int StateRunning = 1;
constexpr int StateLevel10 = 10;
constexpr int StateLevel30 = 30;
constexpr int StateLevel50 = 50;
constexpr int StateLevel70 = 70;
constexpr int StateLevel100 = 100;
/// All steps have been shown. The operator or the driver gives the verdict.
constexpr int StateAllStepsDone = 101;
constexpr int StateNotPass = 102;
constexpr int StatePass = 103;

}
