#include "failingmemory.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>
#include <new>

namespace {

/// True while this thread's allocations are counted.
thread_local bool counting = false;

std::mutex mutex;
int failingNumber = 0;
int allocations = 0;
bool hasFailed = false;
std::array<void *, 8192> blocks;
std::size_t blockCount = 0;

/// Records @p block. Returns false if this allocation has to fail.
bool note(void *block)
{
    const std::lock_guard locker(mutex);
    if (++allocations == failingNumber) {
        hasFailed = true;
        return false;
    }
    if (blockCount == blocks.size())
        std::abort(); // more than any test here needs
    blocks[blockCount++] = block;
    return true;
}

void forget(void *block)
{
    const std::lock_guard locker(mutex);
    const auto end = blocks.begin() + blockCount;
    const auto found = std::find(blocks.begin(), end, block);
    if (found != end)
        *found = blocks[--blockCount];
}

}

void *operator new(std::size_t size)
{
    void *block = std::malloc(size > 0 ? size : 1);
    if (block && (!counting || note(block)))
        return block;
    std::free(block);
    throw std::bad_alloc();
}

void operator delete(void *block) noexcept
{
    if (block)
        forget(block);
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    operator delete(block);
}

FailingMemory::FailingMemory(int number)
{
    const std::lock_guard locker(mutex);
    failingNumber = number;
    allocations = 0;
    hasFailed = false;
    blockCount = 0;
    counting = true;
}

FailingMemory::~FailingMemory()
{
    end();
}

void FailingMemory::end()
{
    counting = false;
}

bool FailingMemory::failed()
{
    const std::lock_guard locker(mutex);
    return hasFailed;
}

int FailingMemory::count()
{
    const std::lock_guard locker(mutex);
    return allocations;
}

int FailingMemory::blocksLeft()
{
    const std::lock_guard locker(mutex);
    return static_cast<int>(blockCount);
}

FailingMemory::Pause::Pause() : m_counted(counting)
{
    counting = false;
}

FailingMemory::Pause::~Pause()
{
    counting = m_counted;
}
