#include "text/Allocation.h"

#include <cstdlib>

namespace {
// One thread runs the whole system, so plain counters suffice.
long g_failAt = 0;
long g_made = 0;
long g_failures = 0;
}

void* AllocateBlock(std::size_t n)
{
    ++g_made;
    void* block = nullptr;
    if (g_failAt != 0 && g_made == g_failAt)
        g_failAt = 0;
    else
        block = std::malloc(n == 0 ? 1 : n);
    if (!block)
        ++g_failures;
    return block;
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

long AllocationFailures()
{
    return g_failures;
}
