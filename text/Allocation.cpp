#include "text/Allocation.h"

#include <cstdlib>

#include "text/Faults.h"

namespace {
CFaultSeam g_allocations;
}

void* AllocateBlock(std::size_t n)
{
    return g_allocations.Passes() ? std::malloc(n == 0 ? 1 : n) : nullptr;
}

void FreeBlock(void* block)
{
    std::free(block);
}

void FailAllocation(long nth, long count)
{
    g_allocations.FailAt(nth, count);
}

long AllocationsMade()
{
    return g_allocations.Made();
}
