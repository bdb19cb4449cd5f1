#pragma once

#include <QtCore/QtGlobal>

/// What a scenario may have at most. docs/scenarios.md tells of each of them.
namespace panelhost::limits {

constexpr qint64 FileSize = 4 << 20; ///< bytes
constexpr int Values = 500000;       ///< of one file; what an alias stands for counts each time
constexpr int ValueDepth = 200;      ///< lists and maps inside each other
constexpr int UsedDepth = 4;         ///< files that use each other, without the first
constexpr int UsedFiles = 200;       ///< each time that one is used counts
constexpr int Steps = 100000;        ///< with those of all files that are used
constexpr int PlayedSteps = 10000000;
constexpr int RepeatDepth = 8; ///< repeats inside each other
constexpr int Times = 100000;  ///< of a step or a repeat, and presses of one walk
constexpr int JournalTimes = 1000000;
constexpr int NotDepth = 4;
constexpr int DurationHours = 366 * 24;
constexpr int NameLength = 64; ///< characters of a screenshot's name
constexpr int Ports = 16;      ///< of each kind
constexpr int TouchPixel = 10000;

}
