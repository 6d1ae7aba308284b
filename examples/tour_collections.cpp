// The tour: collections joined under a memory contract.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

// A budget that refuses its first request, as a contract manager under pressure would,
// and grants the rest.
class OnceRefusingContract : public ZelvorBase::MemoryContract {
  public:
    long long RequestMemory(size_t bytes, int /*count*/) override {
        std::printf("  contract asked for %zu bytes: %s\n", bytes,
                    mRefused ? "granted" : "refused");
        if (!mRefused) {
            mRefused = true;
            return 12;  // ENOMEM
        }
        return 0;
    }
    void MemoryTaken(size_t /*bytes*/) override {}
    void AddRef() override {}
    void Release() override {}

  private:
    bool mRefused = false;
};

void CollectionsTour() {
    std::puts("== Joining byte blocks under a memory contract ==");
    using ZelvorDataType::BinaryCollection;
    std::unique_ptr<BinaryCollection> parts(ZelvorDataType::CreateBinaryCollection());
    for (const char* part : {"GET ", "/index", ".html", " HTTP/1.1"}) {
        parts->Insert(ZelvorDataType::CreateBinary(part, std::char_traits<char>::length(part)));
    }
    OnceRefusingContract budget;
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> contract(&budget);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        try {
            std::unique_ptr<BinaryCollection> joined(
                ZelvorDataType::CombineBinaryCollectionGoverned(parts.get(), 12, contract));
            for (unsigned int i = 0; i < joined->GetBinaryCount(); ++i) {
                const ZelvorDataType::Binary* block = joined->GetBinary(i);
                std::printf("  block %u: \"%.*s\"\n", i, static_cast<int>(block->GetSize()),
                            reinterpret_cast<const char*>(block->c_ptr()));
            }
        } catch (const ZelvorBase::ExceptionImpl<ZelvorBase::ContractManagerAllocException>& e) {
            std::printf("  attempt %d refused (code %d): %s\n", attempt, e.GetID(),
                        ZelvorBase::WideCharToUTF8(e.GetMessage(), false).c_str());
            std::printf("  the %u source blocks are untouched\n", parts->GetBinaryCount());
        }
    }
}

}  // namespace ZelvorTour
