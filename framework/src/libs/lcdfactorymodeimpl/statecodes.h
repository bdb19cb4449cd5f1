#pragma once

namespace LCD::FactoryModeImpl {

// What a test object says of itself. Plain numbers, the same for all test objects; in the brightness and the light
// test the code is the level itself.
constexpr int StateIdle = 0;
constexpr int StateRunning = 1;
constexpr int StateLevel10 = 10;
constexpr int StateLevel30 = 30;
constexpr int StateLevel50 = 50;
constexpr int StateLevel70 = 70;
constexpr int StateLevel100 = 100;
/// Nothing more to show; the verdict is the driver's.
constexpr int StateAllStepsDone = 101;
constexpr int StateNotPass = 102;
constexpr int StatePass = 103;

}
