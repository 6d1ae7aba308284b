#pragma once

// The replaced global allocator (HeapHook.cpp), linked only into the program that
// counts heap blocks: replacing operator new is program-wide.

#include <cstddef>

namespace ZelvorTest {

// Blocks of global operator new not yet given back, over all threads.
long long LiveHeapBlocks() noexcept;
// Blocks ever allocated, on every thread: the difference across a call is what it took.
long long HeapAllocations() noexcept;
// Makes the n-th allocation of this thread from now on throw std::bad_alloc, once.
void ArmHeapFault(std::size_t n) noexcept;
// Ends the trap; true when it sprang.
bool DisarmHeapFault() noexcept;

}  // namespace ZelvorTest
