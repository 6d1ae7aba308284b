#pragma once

// Fault injection for the whole library: an operation is run again and again, its n-th
// heap allocation, arena allocation or contract request failing in turn, until it gets
// through without meeting a fault; after each failure the case checks the state that
// the operation promises, and the driver checks that no heap block was left behind.

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <new>
#include <string>

#include <ZelvorBase/ZelvorBase.h>

#include "support/HeapHook.h"
#include "support/TestDoubles.h"

namespace ZelvorFault {

enum class Fault { None, Heap, Arena, Contract };

// One run of a case under one fault. The case builds its values (allocations there are
// never faulted), runs the operation under test through Attempt, and checks the result.
class Probe {
  public:
    Probe(Fault fault, size_t n);
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    // The arena to place values in: a refusing one under arena faults, otherwise null,
    // so that the same case runs on the heap.
    ZelvorBase::Buffer* Arena() { return mFault == Fault::Arena ? &mArena : nullptr; }
    // A contract to govern values by (code 12, "Cannot allocate memory", when it
    // refuses); it refuses only under contract faults.
    ZelvorTest::CountingContract* Contract() { return &mContract; }

    // Runs `op` with the fault armed: true when it ran to its end, false when it threw
    // what the injected fault makes it throw (std::bad_alloc, or a refusal message under
    // a contract fault). Any other throw fails the test.
    template <class Op>
    bool Attempt(Op&& op) {
        Arm();
        try {
            op();
        } catch (const std::bad_alloc&) {
            return Failed(true);
        } catch (const ZelvorBase::Message& message) {
            mRefusal = message.GetMessage();
            if (mFault != Fault::Contract) {
                Unexpected(message);
            }
            return Failed(mFault == Fault::Contract);
        } catch (...) {
            Disarm();
            throw;
        }
        mFired = Disarm() || mFired;
        return true;
    }

    // Whether the fault point was reached in any attempt so far (a quiet failure, such
    // as a Binary that stays empty when its arena refuses, ends an attempt normally with
    // this set).
    bool Fired() const { return mFired; }
    int ContractReferences() const { return mContract.refs; }
    // The text of the last refusal an attempt ended in, "" before any.
    const std::wstring& Refusal() const { return mRefusal; }

  private:
    void Arm();
    // Ends the fault; true when it was met.
    bool Disarm();
    bool Failed(bool expected);
    static void Unexpected(const ZelvorBase::Message& message);

    Fault mFault;
    size_t mN;
    bool mFired = false;
    size_t mRefuseFrom = 0;  // the arena call that is refused
    std::wstring mRefusal;
    ZelvorTest::RefusingBuffer mArena;
    ZelvorTest::CountingContract mContract;
};

// Runs `body` without a fault twice (the first run settles what the runtime allocates on
// first use), then under each kind of fault for n = 1, 2, ... until the operation no
// longer reaches its n-th fault point. After every run the heap must hold exactly the
// blocks it held before, and the contract must have no reference left. Each fault point
// reached counts towards the total printed at the end of the program.
void Drive(const std::string& name, const std::function<void(Probe&)>& body);

}  // namespace ZelvorFault
