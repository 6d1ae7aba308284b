#pragma once

// Failure injection for the global allocator of a test program: the N-th call of
// operator new after arming throws std::bad_alloc. Linking AllocationFault.cpp into a
// program replaces its operator new and delete, the library's calls included.

#include <cstddef>
#include <functional>

namespace ZelvorTest {

// The number of allocations of the program not yet freed; a difference across a call
// that failed shows a leak.
long LiveAllocations();

// Runs `action` with the N-th allocation failing, for N = 1, 2, ... until a run goes
// through without the fault firing. After each failed run it checks that every
// allocation the run made was freed again, then calls `afterFailure` to inspect the
// state left behind. Returns the number of failed runs.
size_t ForEveryFailingAllocation(const std::function<void()>& action,
                                 const std::function<void()>& afterFailure);

}  // namespace ZelvorTest
