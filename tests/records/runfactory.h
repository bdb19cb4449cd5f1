#pragma once

#include "records/run.h"

#include <random>

/// Invents the runs of a line with some stations, the same ones each time: machine tests of about 800 units for each
/// 1000 runs, most of which pass, some aging tests and repairs, over three years.
class RunFactory
{
public:
    explicit RunFactory(int count, quint32 seed = 1);

    /// Returns the run number @p index, counted from 0. Call it with 0, 1, 2 and so on.
    panelhost::Run run(int index);

private:
    int random(int least, int most);
    void addPhases(panelhost::Run &run);

    const int m_count;
    const quint32 m_seed;
    std::mt19937 m_random;
};
