#pragma once

#include <cstddef>
#include <cstdint>

// The entry points of a fuzz target, as libFuzzer calls them. Without libFuzzer, replay.cpp calls them with each file
// of a corpus. A target aborts if something is wrong with an input.

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
