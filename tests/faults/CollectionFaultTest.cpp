// Byte blocks, cell formats and the collections under faults: factories, inserts,
// merges and joins.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/Binary.h>
#include <ZelvorDataType/BinaryCollection.h>
#include <ZelvorDataType/CellFmtData.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/ReferenceCountedObjectCollection.h>
#include <ZelvorDataType/StringCollection.h>

#include "FaultSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorFault::Drive;
using ZelvorFault::Probe;

std::string Bytes(const Binary& block) {
    return block.GetSize() == 0
               ? ""
               : std::string(reinterpret_cast<char*>(block.c_ptr()), block.GetSize());
}

std::vector<std::string> Blocks(const BinaryCollection& collection) {
    std::vector<std::string> blocks;
    for (unsigned int i = 0; i < collection.GetBinaryCount(); ++i) {
        blocks.push_back(Bytes(*collection.GetBinary(i)));
    }
    return blocks;
}

std::vector<std::wstring> Texts(const StringCollection& collection) {
    std::vector<std::wstring> texts;
    for (size_t i = 0; i < collection.GetCount(); ++i) {
        const wchar_t* text = collection.GetString(i);
        texts.emplace_back(text != nullptr ? text : L"(null)");
    }
    return texts;
}

using Collection = std::unique_ptr<BinaryCollection, void (*)(BinaryCollection*)>;

// Four blocks, so that the list is full and the next insert must grow it.
Collection FourBlocks(const char* tag) {
    Collection collection(CreateBinaryCollection(), &BinaryCollection::Delete);
    for (const std::string& bytes :
         {std::string("ab"), std::string(tag), std::string(300, 'x'), std::string("")}) {
        collection->Insert(CreateBinary(bytes.data(), bytes.size()));
    }
    return collection;
}

TEST(CollectionFaults, BlocksAndCellFormats) {
    Drive("block factories", [](Probe& p) {
        Binary* made[3] = {};
        if (p.Attempt([&] {
                made[0] = CreateBinary(p.Arena());
                made[1] = CreateBinary("hello", 5, p.Arena());
                made[2] = CreateBinary(size_t{4}, p.Arena());
            })) {
            // A refused arena leaves a block empty, never half-filled.
            EXPECT_TRUE(Bytes(*made[1]) == "hello" || (p.Fired() && made[1]->GetSize() == 0));
            EXPECT_TRUE(made[2]->GetSize() == 4 || (p.Fired() && made[2]->GetSize() == 0));
            // and no view to widen back.
            made[1]->UnZap();
            EXPECT_TRUE(Bytes(*made[1]) == "hello" || made[1]->GetSize() == 0);
        }
        for (Binary* block : made) {
            if (p.Arena() == nullptr) {
                delete block;
            }
        }
    });
    Drive("block growth", [](Probe& p) {
        BinaryImpl block("old", 3, p.Arena());
        if (p.Attempt([&] { block.SetBinary("longer bytes", 12); })) {
            EXPECT_TRUE(Bytes(block) == "longer bytes" || (p.Fired() && block.GetSize() == 0));
            block.UnZap();
            EXPECT_TRUE(Bytes(block) == "longer bytes" || block.GetSize() == 0);
        } else {
            EXPECT_EQ(Bytes(block), "old");
        }
        if (p.Attempt([&] { block.ResetSize(64); })) {
            EXPECT_TRUE(block.GetSize() == 64 || p.Fired());
        }
    });
    Drive("cell format and date texts", [](Probe& p) {
        std::optional<CellFmtStruct> format;
        std::string text;
        if (p.Attempt([&] {
                format.emplace();
                text = DateTime(2024, 3, 14, 15, 30).ToString().c_str();
            })) {
            EXPECT_TRUE(*format == CellFmtStruct());
            EXPECT_EQ(text, "2024-03-14 15:30:00.000");
        }
    });
}

TEST(CollectionFaults, StringInsertsAreWholeOrNothing) {
    const struct {
        const char* name;
        void (*insert)(StringCollection&);
    } inserts[] = {
        {"text", [](StringCollection& c) { c.Insert(L"delta"); }},
        {"null", [](StringCollection& c) { c.Insert(static_cast<const wchar_t*>(nullptr)); }},
        {"itself", [](StringCollection& c) { c.Insert(c); }},
    };
    for (const auto& insert : inserts) {
        Drive(std::string("insert ") + insert.name, [&](Probe& p) {
            std::unique_ptr<StringCollection> collection;
            ASSERT_TRUE(p.Attempt([&] { collection.reset(CreateStringCollection()); }) ||
                        collection == nullptr);
            if (collection == nullptr) {
                return;
            }
            for (const wchar_t* text :
                 {L"alpha", static_cast<const wchar_t*>(nullptr), L"", L"gamma"}) {
                collection->Insert(text);
            }
            const std::vector<std::wstring> before = Texts(*collection);
            if (!p.Attempt([&] { insert.insert(*collection); })) {
                EXPECT_EQ(Texts(*collection), before);
            }
        });
    }
}

TEST(CollectionFaults, BinaryInsertsMergesAndJoinsAreWholeOrNothing) {
    Drive("insert and merge", [](Probe& p) {
        Collection collection = FourBlocks("cd");
        Collection other = FourBlocks("ef");
        Binary* block = CreateBinary("gh", 2);
        const std::vector<std::string> mine = Blocks(*collection);
        const std::vector<std::string> theirs = Blocks(*other);
        if (!p.Attempt([&] { collection->Insert(block); })) {
            delete block;  // still the caller's
            EXPECT_EQ(Blocks(*collection), mine);
        }
        const std::vector<std::string> grown = Blocks(*collection);
        if (p.Attempt([&] { collection->Merge(other.get()); })) {
            EXPECT_EQ(collection->GetBinaryCount(), grown.size() + theirs.size());
            EXPECT_EQ(other->GetBinaryCount(), 0U);
        } else {
            EXPECT_EQ(Blocks(*collection), grown);
            EXPECT_EQ(Blocks(*other), theirs);
        }
    });
    Drive("join into one block", [](Probe& p) {
        const Collection collection = FourBlocks("cd");
        const std::vector<std::string> before = Blocks(*collection);
        std::unique_ptr<Binary> joined;
        if (p.Attempt([&] { joined.reset(CreateBinary(collection.get(), p.Contract())); })) {
            EXPECT_EQ(joined->GetSize(), collection->GetTotalLength());
        }
        EXPECT_EQ(Blocks(*collection), before);
    });
    for (const size_t limit : {size_t{0}, size_t{4}, size_t{301}}) {
        Drive("combine under " + std::to_string(limit), [&](Probe& p) {
            const Collection collection = FourBlocks("cd");
            const std::vector<std::string> before = Blocks(*collection);
            ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> contract(p.Contract());
            Collection plain(nullptr, &BinaryCollection::Delete);
            Collection governed(nullptr, &BinaryCollection::Delete);
            if (p.Attempt([&] {
                    plain.reset(CombineBinaryCollection(collection.get(), limit));
                    governed.reset(
                        CombineBinaryCollectionGoverned(collection.get(), limit, contract));
                })) {
                EXPECT_EQ(Blocks(*plain), Blocks(*governed));
                EXPECT_EQ(governed->GetTotalLength(), collection->GetTotalLength());
            }
            EXPECT_EQ(Blocks(*collection), before);
        });
    }
}

TEST(CollectionFaults, CountedInsertsKeepTheCounts) {
    Drive("counted insert", [](Probe& p) {
        int destroyed = 0;
        auto* object = new ZelvorTest::CountedObject(&destroyed);
        const ZelvorBase::SmartPtrI<ZelvorTest::CountedObject> held(object);
        std::unique_ptr<ReferenceCountedObjectCollection> collection;
        if (!p.Attempt([&] { collection = CreateReferenceCountedObjectCollection(); })) {
            return;
        }
        for (int i = 0; i < 4; ++i) {
            collection->Insert(object, nullptr);
        }
        int value = 0;
        if (p.Attempt([&] { collection->Insert(object, &value); })) {
            EXPECT_EQ(object->count, 6);
            EXPECT_EQ(collection->GetRawValue(4), &value);
        } else {
            EXPECT_EQ(object->count, 5);
            EXPECT_EQ(collection->GetCount(), 4U);
        }
        collection.reset();
        EXPECT_EQ(object->count, 1);
        EXPECT_EQ(destroyed, 0);
    });
}

}  // namespace
