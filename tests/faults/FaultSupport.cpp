#include "FaultSupport.h"

#include <cstdio>

namespace ZelvorFault {

namespace {

constexpr const char* kNames[] = {"no fault", "heap", "arena", "contract"};
size_t gPoints[4] = {};

// A safety stop for a case whose allocations never end.
constexpr size_t kMostPoints = 100000;

class Total : public testing::Environment {
  public:
    void TearDown() override {
        std::printf("fault points tried: %zu (heap %zu, arena %zu, contract %zu)\n",
                    gPoints[1] + gPoints[2] + gPoints[3], gPoints[1], gPoints[2], gPoints[3]);
    }
};

// NOLINTNEXTLINE(cert-err58-cpp): registered before main, as gtest intends
testing::Environment* const gTotal = testing::AddGlobalTestEnvironment(new Total);

}  // namespace

Probe::Probe(Fault fault, size_t n) : mFault(fault), mN(n) {
    // Room for the contract's records up front, so that it never allocates while a heap
    // fault is armed.
    constexpr size_t kRoom = 4096;
    mContract.requests.reserve(kRoom);
    mContract.counts.reserve(kRoom);
    mContract.taken.reserve(kRoom);
}

void Probe::Arm() {
    switch (mFault) {
        case Fault::Heap:
            ZelvorTest::ArmHeapFault(mN);
            break;
        case Fault::Arena:
            mRefuseFrom = mArena.Calls() + mN;
            mArena.RefuseFrom(mRefuseFrom);
            break;
        case Fault::Contract:
            mContract.Arm(mN);
            break;
        case Fault::None:
            break;
    }
}

bool Probe::Disarm() {
    switch (mFault) {
        case Fault::Heap:
            return ZelvorTest::DisarmHeapFault();
        case Fault::Arena:
            mArena.RefuseFrom(0);
            return mArena.Calls() >= mRefuseFrom;
        case Fault::Contract:
            return mContract.Disarm();
        case Fault::None:
            return false;
    }
    return false;
}

bool Probe::Failed(bool expected) {
    const bool fired = Disarm();
    mFired = fired || mFired;
    EXPECT_TRUE(fired && expected) << "threw under " << kNames[static_cast<int>(mFault)]
                                   << " fault " << mN << " without meeting it";
    return false;
}

void Probe::Unexpected(const ZelvorBase::Message& message) {
    ADD_FAILURE() << "unexpected refusal: "
                  << testing::PrintToString(std::wstring(message.GetMessage()));
}

void Drive(const std::string& name, const std::function<void(Probe&)>& body) {
    bool warm = false;
    for (const Fault fault :
         {Fault::None, Fault::None, Fault::Heap, Fault::Arena, Fault::Contract}) {
        for (size_t n = 1; n <= kMostPoints; ++n) {
            SCOPED_TRACE(name + " under " + kNames[static_cast<int>(fault)] + " fault " +
                         std::to_string(n));
            const long long before = ZelvorTest::LiveHeapBlocks();
            bool fired = false;
            {
                Probe probe(fault, n);
                body(probe);
                fired = probe.Fired();
                EXPECT_EQ(probe.ContractReferences(), 0);
            }
            if (warm) {
                EXPECT_EQ(ZelvorTest::LiveHeapBlocks(), before) << "heap blocks left behind";
            }
            warm = true;
            if (!fired || testing::Test::HasFailure()) {
                break;
            }
            ++gPoints[static_cast<int>(fault)];
        }
    }
}

}  // namespace ZelvorFault
