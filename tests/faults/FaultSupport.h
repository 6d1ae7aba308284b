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

using ZelvorTest::ArmHeapFault;
using ZelvorTest::DisarmHeapFault;
using ZelvorTest::LiveHeapBlocks;

enum class Fault { None, Heap, Arena, Contract };

// A contract that grants everything until armed, then refuses the n-th request after
// arming (code 12, "Cannot allocate memory"), and only that one.
class ArmedContract : public ZelvorTest::CountingContract {
  public:
    // Room for the records up front, so that the contract itself never allocates
    // while a heap fault is armed.
    ArmedContract() {
        requests.reserve(kRoom);
        counts.reserve(kRoom);
        taken.reserve(kRoom);
    }
    long long RequestMemory(size_t bytes, int count) override {
        CountingContract::RequestMemory(bytes, count);
        return mRefuseAt != 0 && requests.size() == mRefuseAt ? 12 : 0;
    }
    void Arm(size_t n) { mRefuseAt = requests.size() + n; }
    bool Disarm() {
        const bool fired = mRefuseAt != 0 && requests.size() >= mRefuseAt;
        mRefuseAt = 0;
        return fired;
    }

  private:
    static constexpr size_t kRoom = 4096;
    size_t mRefuseAt = 0;
};

// One run of a case under one fault. The case builds its values (allocations there are
// never faulted), runs the operation under test through Attempt, and checks the result.
class Probe {
  public:
    Probe(Fault fault, size_t n) : mFault(fault), mN(n) {}
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    // The arena to place values in: a refusing one under arena faults, otherwise null,
    // so that the same case runs on the heap.
    ZelvorBase::Buffer* Arena() { return mFault == Fault::Arena ? &mArena : nullptr; }
    // A contract to govern values by; it refuses only under contract faults.
    ArmedContract* Contract() { return &mContract; }

    // Runs `op` with the fault armed: true when it ran to its end, false when it threw
    // what the injected fault makes it throw (std::bad_alloc, or a refusal message under
    // a contract fault). Any other throw fails the test.
    template <class Op>
    bool Attempt(Op&& op) {
        Armed armed(*this);
        try {
            op();
        } catch (const std::bad_alloc&) {
            return armed.Failed(true);
        } catch (const ZelvorBase::Message& message) {
            if (mFault != Fault::Contract) {
                Unexpected(message);
            }
            return armed.Failed(mFault == Fault::Contract);
        }
        mFired = armed.Disarm() || mFired;
        return true;
    }

    // Whether the fault point was reached in any attempt so far (a quiet failure, such
    // as a Binary that stays empty when its arena refuses, ends an attempt normally with
    // this set).
    bool Fired() const { return mFired; }
    Fault Kind() const { return mFault; }
    int ContractReferences() const { return mContract.refs; }

  private:
    class Armed {
      public:
        explicit Armed(Probe& probe);
        Armed(const Armed&) = delete;
        Armed& operator=(const Armed&) = delete;
        ~Armed() { Disarm(); }
        bool Disarm();
        bool Failed(bool expected);

      private:
        Probe& mProbe;
        size_t mRefuseFrom = 0;  // the arena call that is refused
        bool mArmed = true;
    };
    static void Unexpected(const ZelvorBase::Message& message);

    Fault mFault;
    size_t mN;
    bool mFired = false;
    ZelvorTest::RefusingBuffer mArena;
    ArmedContract mContract;
};

// Runs `body` without a fault twice (the first run settles what the runtime allocates on
// first use), then under each kind of fault for n = 1, 2, ... until the operation no
// longer reaches its n-th fault point. After every run the heap must hold exactly the
// blocks it held before, and the contract must have no reference left. Each fault point
// reached counts towards the total printed at the end of the program.
void Drive(const std::string& name, const std::function<void(Probe&)>& body);

}  // namespace ZelvorFault
