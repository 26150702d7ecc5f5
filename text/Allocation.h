#pragma once
// The one seam through which the system allocates. Nothing throws: a failed
// allocation gives null, and every caller treats that as a normal outcome.
// Tests can make the Nth allocation from now fail, to prove that each caller copes.

#include <cstddef>
#include <new>
#include <utility>

// Gives n bytes, or null when they cannot be had. The caller frees them with FreeBlock.
void* AllocateBlock(std::size_t n);
void FreeBlock(void* block);

// Builds a T in a block of its own; null when the block cannot be had.
// Constructors of the system do not throw, so no partial object is ever left.
template <class T, class... Args>
T* HeapNew(Args&&... args)
{
    void* block = AllocateBlock(sizeof(T));
    return block ? new (block) T(std::forward<Args>(args)...) : nullptr;
}

// Destroys and frees what HeapNew made; a null pointer is accepted.
template <class T>
void HeapDelete(T* object)
{
    if (object) {
        object->~T();
        FreeBlock(object);
    }
}

// Test control: the nth allocation from now (1 = the next one) fails, and the count - 1 after
// it too. 0 switches failures off. AllocationsMade counts every allocation attempt since the
// last call.
void FailAllocation(long nth, long count = 1);
long AllocationsMade();
