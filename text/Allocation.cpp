#include "text/Allocation.h"

#include <cstdlib>

namespace {
// One thread runs the whole system, so plain counters suffice.
long g_failAt = 0;
long g_made = 0;
}

void* AllocateBlock(std::size_t n)
{
    ++g_made;
    if (g_failAt != 0 && g_made == g_failAt) {
        g_failAt = 0;
        return nullptr;
    }
    return std::malloc(n == 0 ? 1 : n);
}

void FreeBlock(void* block)
{
    std::free(block);
}

void FailAllocation(long nth)
{
    g_made = 0;
    g_failAt = nth;
}

long AllocationsMade()
{
    return g_made;
}
