#pragma once

/// Lets one allocation of this thread fail: the one with the number @p number, counted from 1 from the making of the
/// object on. Compile failingmemory.cpp into the test's program, whose operator new it replaces. One at a time.
class FailingMemory
{
public:
    explicit FailingMemory(int number);
    ~FailingMemory();
    FailingMemory(const FailingMemory &) = delete;
    FailingMemory &operator=(const FailingMemory &) = delete;

    /// Ends the counting. What the thread allocates from now on succeeds.
    void end();
    /// Whether there was an allocation with the number.
    static bool failed();
    /// The number of blocks that were allocated before end() and are still there.
    static int blocksLeft();

    /// While one lives, allocations are neither counted nor let fail.
    class Pause
    {
    public:
        Pause();
        ~Pause();
        Pause(const Pause &) = delete;
        Pause &operator=(const Pause &) = delete;

    private:
        const bool m_counted;
    };
};
