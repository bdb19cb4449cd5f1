#pragma once

/// Makes one allocation of the current thread fail: allocation number @p number since the object was created, counted
/// from 1. Compile failingmemory.cpp into the test program; it replaces operator new. Only one object may exist at a
/// time.
class FailingMemory
{
public:
    explicit FailingMemory(int number);
    ~FailingMemory();
    FailingMemory(const FailingMemory &) = delete;
    FailingMemory &operator=(const FailingMemory &) = delete;

    /// Stops counting. Later allocations of the thread succeed.
    void end();
    /// Returns true if there was an allocation with this number.
    static bool failed();
    /// Returns the number of allocations that were counted.
    static int count();
    /// Returns the number of blocks that were allocated before end() and not freed since.
    static int blocksLeft();

    /// While an object of this class exists, allocations aren't counted and don't fail.
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
