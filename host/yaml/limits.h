#pragma once

#include <QtCore/QtGlobal>

/// The limits of scenario files. docs/scenarios.md describes each of them.
namespace panelhost::limits {

constexpr qint64 FileSize = 4 << 20; ///< bytes
constexpr int Values = 500000;       ///< of one file; the value of an alias counts each time
constexpr int ValueDepth = 200;      ///< nesting of lists and maps
constexpr int UsedDepth = 4;         ///< nesting of used files
constexpr int UsedFiles = 200;       ///< a file counts each time that it is used
constexpr int Steps = 100000;        ///< of all files together
constexpr int PlayedSteps = 10000000;
constexpr int RepeatDepth = 8; ///< nesting of repeats
constexpr int Times = 100000;  ///< of a step or a repeat, and presses of a step walk-keys
constexpr int JournalTimes = 1000000;
constexpr int NotDepth = 4;
constexpr int DurationHours = 366 * 24;
constexpr int NameLength = 64; ///< characters of a screenshot's name
constexpr int Ports = 16;      ///< of each kind
constexpr int TouchPixel = 10000;
constexpr int LinkDelay = 10000; ///< milliseconds
constexpr int CalibrationCommand = 1000;
constexpr int UsbSpeed = 100000; ///< Mbit/s

}
