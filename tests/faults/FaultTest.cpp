// Every allocating operation of the library under faults: exact decimals, variants,
// relative times and schedules, byte blocks, cell formats and the collections; and the
// operations that promise to stay off the heap, counted.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include <ZelvorSerialization/MemoryDataStream.h>

#include "FaultSupport.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using ZelvorFault::Drive;
using ZelvorFault::Probe;
using ZelvorTest::Text;
using ZelvorTest::Texts;

// ---- Exact decimals: parsing, copies, the four operations and the texts ----------------

// Long enough that results need a work area on the heap.
const std::string kLong = std::string(150, '9') + "." + std::string(150, '7');
const std::string kLongNegative = "-" + std::string(140, '3') + ".1" + std::string(140, '5');

// The arena a reference value of the same kind is built in: a plain one when the probe
// places values in an arena, the heap otherwise.
ZelvorBase::Buffer* Twin(Probe& p, ZelvorBase::Buffer& plain) {
    return p.Arena() != nullptr ? &plain : nullptr;
}

TEST(DecimalFaults, ParsingAndCopiesBuildWholeValuesOrNone) {
    const std::string texts[] = {"12.50", "-0.00", "1.5e-3", "+7E2", "007.50", "x1", kLong};
    for (const std::string& text : texts) {
        Drive("parse and copy " + text, [&](Probe& p) {
            ZelvorBase::Buffer plain;
            const BigDecimal reference(text.c_str(), Twin(p, plain));
            const std::wstring wide(text.begin(), text.end());
            std::optional<BigDecimal> narrowValue;
            std::optional<BigDecimal> wideValue;
            BigDecimal target(p.Arena());
            std::optional<BigDecimal> copy;
            if (p.Attempt([&] {
                    narrowValue.emplace(text.c_str(), p.Arena());
                    wideValue.emplace(wide.c_str(), p.Arena());
                    target = reference;
                    copy.emplace(reference, p.Arena());
                })) {
                EXPECT_EQ(Text(*narrowValue), Text(reference));
                EXPECT_EQ(Text(*wideValue), Text(reference));
                EXPECT_EQ(Text(target), Text(reference));
                EXPECT_EQ(Text(*copy), Text(reference));
            } else {
                EXPECT_TRUE(copy == std::nullopt);
                EXPECT_TRUE(target.IsEmpty() || Text(target) == Text(reference));
            }
        });
        Drive("parse into " + text, [&](Probe& p) {
            BigDecimal value(p.Arena());
            if (!p.Attempt([&] { value._StrToBigDecimal(text.c_str()); })) {
                EXPECT_TRUE(value.IsInvalid());  // never a half-built number
            }
        });
    }
    Drive("from numbers", [](Probe& p) {
        std::optional<BigDecimal> a;
        std::optional<BigDecimal> b;
        if (p.Attempt([&] {
                a.emplace(-42, p.Arena());
                b.emplace(1.5, p.Arena());
            })) {
            EXPECT_EQ(Text(*a) + " " + Text(*b), "-42 1.500000");
        }
    });
}

TEST(DecimalFaults, ArithmeticLeavesItsOperandsAlone) {
    using Operation = std::function<BigDecimalHandle(const BigDecimal&, const BigDecimal&)>;
    const struct {
        const char* name;
        Operation run;
    } operations[] = {
        {"+", [](const BigDecimal& a, const BigDecimal& b) { return a + b; }},
        {"-", [](const BigDecimal& a, const BigDecimal& b) { return a - b; }},
        {"*", [](const BigDecimal& a, const BigDecimal& b) { return a * b; }},
        {"/", [](const BigDecimal& a, const BigDecimal& b) { return a / b; }},
        {"/300", [](const BigDecimal& a, const BigDecimal& b) { return a.Divide(b, 300); }},
        {"/10", [](const BigDecimal& a, const BigDecimal& b) { return a.Divide(b, 10); }},
        // A result used as an operand, then dropped: its digits share its block.
        {"(+)*", [](const BigDecimal& a, const BigDecimal& b) { return *(a + b) * a; }},
    };
    const std::pair<std::string, std::string> operands[] = {
        {"12.5", "-0.25"},      {"0", "3.5"},  {kLong, "7"},
        {kLong, kLongNegative}, {"-1", kLong}, {"99.99", "0.01"}};
    for (const auto& op : operations) {
        for (const auto& pair : operands) {
            const std::string& left = pair.first;
            const std::string& right = pair.second;
            Drive(left.substr(0, 8) + " " + op.name + " " + right.substr(0, 8), [&](Probe& p) {
                ZelvorBase::Buffer plain;
                const BigDecimal a(left.c_str(), p.Arena());
                const BigDecimal b(right.c_str(), p.Arena());
                const BigDecimal twinA(left.c_str(), Twin(p, plain));
                const BigDecimal twinB(right.c_str(), Twin(p, plain));
                const std::string expected = Text(*op.run(twinA, twinB));
                BigDecimalHandle result;
                if (p.Attempt([&] { result = op.run(a, b); })) {
                    EXPECT_EQ(Text(*result), expected);
                } else {
                    EXPECT_FALSE(result);
                }
                EXPECT_EQ(Text(a), Text(twinA));
                EXPECT_EQ(Text(b), Text(twinB));
            });
        }
    }
}

TEST(DecimalFaults, DigitObjectsAndTexts) {
    Drive("BigInt copies", [](Probe& p) {
        const BigInt source(kLong.c_str(), static_cast<int>(kLong.size()), -1, 3, true);
        BigInt* clone = nullptr;
        BigInt* zero = nullptr;
        const bool done = p.Attempt([&] {
            clone = source.Clone(p.Arena());
            zero = BigInt::CreateZero(p.Arena());
        });
        if (done) {
            EXPECT_EQ(clone->Precision(), source.Precision());
            EXPECT_EQ(zero->Signum(), 0);
        }
        if (p.Arena() == nullptr) {
            delete clone;
            delete zero;
        }
    });
    for (const std::string& text : {std::string("-1234.5678"), kLong}) {
        Drive("texts of " + text.substr(0, 8), [&](Probe& p) {
            const BigDecimal value(text.c_str(), p.Arena());
            std::string all;
            if (p.Attempt([&] {
                    all = value.ToString().c_str();
                    all += value.GetIntegerDigits().c_str();
                    all += value.GetFractionDigits().c_str();
                    all += std::to_string(value.ToWString().GetLength() +
                                          value.ToWString(0x407).GetLength() +
                                          value.MantissaToWString().GetLength());
                })) {
                EXPECT_FALSE(all.empty());
            }
            EXPECT_EQ(Text(value), Text(BigDecimal(text.c_str())));
        });
    }
}

// ---- Variants: every assignment, construction and copy, and the texts ------------------

// A Variant on the probe's arena, or on the heap under its contract.
Variant Target(Probe& p) {
    if (p.Arena() != nullptr) {
        return Variant(p.Arena());
    }
    return Variant(static_cast<ZelvorBase::MemoryContract*>(p.Contract()));
}

// The value `reference` holds (an invalid decimal, which equality refuses, by its tag
// and state), or, when the arena refused a byte block quietly, an empty block.
bool Same(const Variant& value, const Variant& reference, bool quiet) {
    if (reference.GetVarType() == VARIANT_BIGDECIMAL && reference.ToBigDecimal()->IsInvalid()) {
        return value.GetVarType() == VARIANT_BIGDECIMAL && value.ToBigDecimal()->IsInvalid();
    }
    if (quiet && value.GetVarType() == VARIANT_BINARY && value.ToBinary()->GetSize() == 0) {
        return true;
    }
    return value.GetVarType() == reference.GetVarType() && value == reference;
}

struct Values {
    std::unique_ptr<Binary> block{CreateBinary("\x01\x02\x03\x04\x05", 5)};
    BigDecimal decimal{"-12.50"};
    BigDecimal invalid{"1.2.3"};
    CellFmtData cell{2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL};
    DateTime date{2024, 3, 14, 15, 30, 45, 123};
};

struct Assignment {
    const char* name;
    std::function<void(Variant&)> assign;
};

std::vector<Assignment> Assignments(const Values& v) {
    return {
        {"int", [](Variant& t) { t = 7; }},
        {"narrow text",
         [](Variant& t) {
             t = "gr\xC3\xBC\xC3\x9F"
                 "e";
         }},
        {"null narrow text", [](Variant& t) { t = static_cast<const char*>(nullptr); }},
        {"wide text", [](Variant& t) { t = L"wide text"; }},
        {"null wide text", [](Variant& t) { t = static_cast<const wchar_t*>(nullptr); }},
        {"own text", [](Variant& t) { t = t.GetRawWString()->c_str(); }},
        {"date-time", [&v](Variant& t) { t = v.date; }},
        {"date", [&v](Variant& t) { t.SetDate(v.date); }},
        {"time", [&v](Variant& t) { t.SetTime(v.date); }},
        {"decimal", [&v](Variant& t) { t = v.decimal; }},
        {"invalid decimal", [&v](Variant& t) { t = v.invalid; }},
        {"block", [&v](Variant& t) { t = v.block.get(); }},
        {"null block", [](Variant& t) { t = static_cast<const Binary*>(nullptr); }},
        {"cell", [&v](Variant& t) { t = v.cell; }},
    };
}

// A refused contract request is never taken, and the refusal says why.
void ExpectRefusal(Probe& p) {
    if (!p.Refusal().empty()) {
        EXPECT_EQ(p.Refusal(), L"Not enough memory left.");
        EXPECT_EQ(p.Contract()->taken.size() + 1, p.Contract()->requests.size());
    }
}

TEST(VariantFaults, AssignmentsCopiesAndTextsGiveTheValueOrAnEmptyOne) {
    const Values values;
    for (const Assignment& a : Assignments(values)) {
        Variant reference(L"old value");  // what the assignment gives on the plain heap
        a.assign(reference);
        Drive(std::string("assign ") + a.name, [&](Probe& p) {
            Variant target = Target(p);
            target = L"old value";
            if (p.Attempt([&] { a.assign(target); })) {
                EXPECT_TRUE(Same(target, reference, p.Fired()));
            } else {
                EXPECT_EQ(target.GetVarType(), VARIANT_EMPTY);
                ExpectRefusal(p);
            }
        });
        Drive(std::string("copy of ") + a.name, [&](Probe& p) {
            Variant source = Target(p);
            source = L"old value";
            a.assign(source);
            Variant target = Target(p);
            target = 1.5;
            std::optional<Variant> copy;
            if (p.Attempt([&] {
                    copy.emplace(source);
                    target = source;
                })) {
                EXPECT_TRUE(Same(*copy, reference, p.Fired()));
                EXPECT_TRUE(Same(target, reference, p.Fired()));
            } else {
                // Untouched when the copy construction failed, empty when the assignment did.
                EXPECT_TRUE(target.GetVarType() == VARIANT_EMPTY || target == 1.5);
                ExpectRefusal(p);
            }
            EXPECT_TRUE(Same(source, reference, false));
        });
        if (reference.GetVarType() == VARIANT_BIGDECIMAL && reference.ToBigDecimal()->IsInvalid()) {
            continue;  // its texts throw "Invalid BigDecimal" by design
        }
        Drive(std::string("texts of ") + a.name, [&](Probe& p) {
            const Variant value(reference);
            size_t total = 0;
            if (p.Attempt([&] {
                    wchar_t wide[8];
                    char narrow[8];
                    value.ToWString(wide, 8);
                    value.ToString(narrow, 8);
                    total = value.ToWString().GetLength() + value.ToString().GetLength() +
                            value.ToStringVBBehavior().GetLength() + value.GetStringLength() +
                            value.GetWStringLength();
                })) {
                EXPECT_EQ(total == 0, reference.ToWString().GetLength() == 0 &&
                                          reference.ToStringVBBehavior().GetLength() == 0);
            }
            EXPECT_TRUE(Same(value, reference, false));
        });
    }
}

TEST(VariantFaults, ConstructorsHoldTheValueOrNothing) {
    const Values values;
    using Make = std::function<Variant(ZelvorBase::Buffer*)>;
    const struct {
        const char* name;
        Make make;
    } constructors[] = {
        {"narrow text", [](ZelvorBase::Buffer* b) { return Variant("narrow", b); }},
        {"wide text", [](ZelvorBase::Buffer* b) { return Variant(L"wide", b); }},
        {"date", [&](ZelvorBase::Buffer* b) { return Variant(values.date, b); }},
        {"decimal", [&](ZelvorBase::Buffer* b) { return Variant(values.decimal, b); }},
        {"block", [&](ZelvorBase::Buffer* b) { return Variant(values.block.get(), b); }},
        {"cell", [&](ZelvorBase::Buffer* b) { return Variant(values.cell, b); }},
    };
    for (const auto& c : constructors) {
        const Variant reference = c.make(nullptr);
        Drive(std::string("construct ") + c.name, [&](Probe& p) {
            std::optional<Variant> seen;
            if (p.Attempt([&] {
                    const Variant value = c.make(p.Arena());
                    seen.emplace(value);
                })) {
                EXPECT_TRUE(Same(*seen, reference, p.Fired()));
            }
        });
    }
}

// ---- Relative times and schedules: every change of form, factories and enumerators -----

using Record = std::array<std::uint8_t, 44>;

Record Saved(const ZelvorTime& value) {
    Record record{};
    value.SaveObj(44, record.data());
    return record;
}

class TimeFaults : public testing::Test {
  protected:
    void SetUp() override { ZelvorTest::PinZone("Europe/Berlin"); }
};

// One value of each form: empty, UTC, local, dynamic.
std::vector<std::pair<const char*, ZelvorTime>> Forms() {
    std::vector<std::pair<const char*, ZelvorTime>> forms;
    forms.emplace_back("empty", ZelvorTime());
    forms.emplace_back("utc", ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_UTC, true));
    forms.emplace_back("local", ZelvorTime(DateTime(2024, 7, 1, 9, 0), TIME_MODE_LOCAL, false));
    ZelvorTime rule;
    rule.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH);
    rule.PutDay(-1, true);
    rule.PutDynamicMonthOffset(2);
    forms.emplace_back("dynamic", rule);
    return forms;
}

TEST_F(TimeFaults, EveryChangeOfFormGivesTheNewValueOrAnEmptyOne) {
    const auto forms = Forms();
    for (const auto& fromForm : forms) {
        const char* const fromName = fromForm.first;
        const ZelvorTime& from = fromForm.second;
        for (const auto& toForm : forms) {
            const char* const toName = toForm.first;
            const ZelvorTime& to = toForm.second;
            const std::string pair = std::string(fromName) + " to " + toName;
            const Record expected = Saved(to);
            // Assignment, saved record and stream: each takes `target` from `from` to `to`.
            for (const char* how : {"assign", "load", "stream"}) {
                Drive(std::string(how) + " " + pair, [&](Probe& p) {
                    ZelvorTime target(from, p.Arena());
                    Record record = expected;
                    ZelvorSerialization::MemoryDataStream stream;
                    to.SaveToStream(&stream);
                    stream.Rewind();
                    const bool done = p.Attempt([&] {
                        if (how[0] == 'a') {
                            target = to;
                        } else if (how[0] == 'l') {
                            target.LoadObj(44, record.data());
                        } else {
                            target.LoadFromStream(&stream);
                        }
                    });
                    if (done) {
                        EXPECT_EQ(Saved(target), expected);
                    } else {
                        EXPECT_EQ(target.GetRealMode(), TIME_MODE_EMPTY);
                    }
                });
            }
        }
        Drive(std::string("copies, rule, clock and expiry from ") + fromName, [&](Probe& p) {
            std::optional<ZelvorTime> copy;
            ZelvorTime ruled(from, p.Arena());
            ZelvorTime clocked(from, p.Arena());
            ZelvorTime expiry(p.Arena());  // a dynamic `from` expires into it
            const bool done = p.Attempt([&] {
                copy.emplace(from, p.Arena());
                ruled.PutDynamicTime(DYNAMIC_TIME_TODAY);
                clocked.SetToCurrentTime();
                from.GetExpiration(expiry);
            });
            if (done) {
                EXPECT_EQ(Saved(*copy), Saved(from));
                EXPECT_EQ(ruled.GetRealMode(), TIME_MODE_DYNAMIC);
                EXPECT_EQ(clocked.GetRealMode(), TIME_MODE_UTC);
                EXPECT_EQ(expiry.GetRealMode(), from.GetRealMode() == TIME_MODE_DYNAMIC
                                                    ? TIME_MODE_UTC
                                                    : TIME_MODE_EMPTY);
            } else {
                EXPECT_EQ(expiry.GetRealMode(), TIME_MODE_EMPTY);
                // Each one untouched, emptied by its own failure, or done before it.
                const auto consistent = [&](const ZelvorTime& value, TIME_MODE after) {
                    const TIME_MODE mode = value.GetRealMode();
                    return mode == from.GetRealMode() || mode == TIME_MODE_EMPTY || mode == after;
                };
                EXPECT_TRUE(consistent(ruled, TIME_MODE_DYNAMIC));
                EXPECT_TRUE(consistent(clocked, TIME_MODE_UTC));
            }
        });
    }
    Drive("static constructors", [](Probe& p) {
        std::optional<ZelvorTime> a;
        std::optional<ZelvorTime> b;
        if (p.Attempt([&] {
                a.emplace(DateTime(2024, 3, 14), TIME_MODE_LOCAL, true, p.Arena());
                b.emplace(36526.5, 250, TIME_MODE_UTC, true, p.Arena());
            })) {
            EXPECT_EQ(a->GetRealMode(), TIME_MODE_LOCAL);
            EXPECT_EQ(b->GetMilliSeconds(), 250);
        }
    });
}

std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> Owned(TimeSeries* schedule) {
    return {schedule, [](TimeSeries* s) { s->Delete(); }};
}

TEST_F(TimeFaults, SchedulesAreMadeWholeAndListTheirPointsOrNothing) {
    constexpr RECURRENCE F = RECURRENCE_FIXED;
    constexpr RECURRENCE E = RECURRENCE_EVERY;
    constexpr RECURRENCE N = RECURRENCE_NONE;
    const auto make = [=](RECURRENCE secondRecurrence, int second, int step) {
        return CreateTimeSeries(N, 0, N, 0, N, 0, N, 0, F, 62, E, 1, E, 1, secondRecurrence, second,
                                F, 0, step > 0 ? 8 : -1, 0, step > 0 ? 18 : -1, 0, step);
    };
    Drive("factory and clone", [&](Probe& p) {
        std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> made = Owned(nullptr);
        std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> cloned = Owned(nullptr);
        const auto source = Owned(make(F, 0, -1));
        if (p.Attempt([&] {
                made = Owned(make(E, 10, -1));
                cloned = Owned(source->Clone());
            })) {
            EXPECT_EQ(cloned->GetDayOfWeek(), 62);
        }
    });
    // Every 10 seconds of 25 working days outgrows the first array; the window one walks
    // a step of 7 minutes from 08:00 to 18:00.
    const DateTime start(2024, 3, 1, 6, 0);
    const DateTime end(2024, 4, 5, 6, 0);
    for (const int step : {-1, 7}) {
        const auto schedule = Owned(make(step > 0 ? F : E, step > 0 ? 0 : 10, step));
        DateTime* all = nullptr;
        const unsigned int count = schedule->GetAllTimePoints(start, end, all);
        const std::vector<DateTime> expected(all, all + count);
        delete[] all;
        DateTime third[3] = {DateTime(0.0), DateTime(0.0), DateTime(0.0)};
        schedule->GetNextNTimePoints(start, 3, third);
        Drive("all points, step " + std::to_string(step), [&](Probe& p) {
            DateTime sentinel(0.0);
            DateTime* points = &sentinel;
            unsigned int found = 0;
            DateTime next[3] = {DateTime(0.0), DateTime(0.0), DateTime(0.0)};
            if (p.Attempt([&] {
                    schedule->GetNextNTimePoints(start, 3, next);
                    found = schedule->GetAllTimePoints(start, end, points);
                })) {
                ASSERT_EQ(found, expected.size());
                EXPECT_TRUE(std::equal(points, points + found, expected.begin()));
                EXPECT_EQ(next[2], third[2]);
                delete[] points;
            } else {
                EXPECT_EQ(points, &sentinel);
            }
        });
    }
}

// ---- Byte blocks, cell formats and collections: factories, inserts, merges and joins ----

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

// ---- Where the library promises to stay off the heap, the hook's count says whether it did

// An arena over a fixed block that never falls back on the heap.
class FixedArena : public ZelvorBase::Buffer {
  public:
    void* Allocate(std::size_t size) override {
        return mResource.allocate(size, alignof(std::max_align_t));
    }

  private:
    alignas(std::max_align_t) unsigned char mBlock[64 * 1024];
    std::pmr::monotonic_buffer_resource mResource{mBlock, sizeof mBlock,
                                                  std::pmr::null_memory_resource()};
};

class HeapUse : public testing::Test {
  protected:
    void SetUp() override {
        if (!ZELVOR_CAN_REPLACE_NEW) {
            GTEST_SKIP() << "allocations can't be counted under ThreadSanitizer";
        }
    }
};

TEST_F(HeapUse, ZelvorTimeInABufferNeverUsesTheHeap) {
    const ZelvorTest::ZoneScope zone("Europe/Berlin");
    const auto forms = Forms();
    const ZelvorTime& rule = forms.back().second;
    static FixedArena arena;

    const long long before = ZelvorTest::HeapAllocations();
    for (const auto& [firstName, first] : forms) {
        for (const auto& [secondName, second] : forms) {
            ZelvorTime value(first, &arena);
            value = second;
            value = first;
            ZelvorTime copy(value, &arena);
            copy = second;
            copy.PutDynamicTime(DYNAMIC_TIME_TODAY);
            copy.SetToCurrentTime();
            copy.GetExpiration(value);
            rule.GetExpiration(copy);
            EXPECT_EQ(value == copy, copy == value);
        }
    }
    EXPECT_EQ(ZelvorTest::HeapAllocations() - before, 0);
}

// Results of up to 255 digits are worked out without a heap work area.
TEST_F(HeapUse, BigIntWorkAreaOnlyFrom256Digits) {
    struct Case {
        int op, lengthA, lengthB;
        long long heapBlocks;  // the result itself lives in the arena
    } cases[] = {{2, 128, 127, 0}, {2, 128, 128, 1}, {0, 254, 10, 0}, {0, 255, 10, 1},
                 {1, 255, 10, 0},  {1, 256, 10, 1},  {3, 260, 6, 0},  {3, 261, 6, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "op " << c.op << " " << c.lengthA << "/" << c.lengthB);
        const std::string a(static_cast<size_t>(c.lengthA), '7');
        const std::string b(static_cast<size_t>(c.lengthB), '3');
        ZelvorBase::Buffer arena;
        const BigInt x(a.c_str(), c.lengthA, 1, 0, false, &arena);
        const BigInt y(b.c_str(), c.lengthB, 1, 0, false, &arena);
        const long long before = ZelvorTest::HeapAllocations();
        ASSERT_NE(BigInt::CalculateBuf(c.op, &x, &y, 0, &arena, 1), nullptr);
        EXPECT_EQ(ZelvorTest::HeapAllocations() - before, c.heapBlocks);
    }
}

// The owning pointers give back every block they hold, and a null one is fine.
TEST_F(HeapUse, OwningPointersFreeWhatTheyHold) {
    const long long before = ZelvorTest::LiveHeapBlocks();
    {
        const TimeSeriesPtr daily = MakeTimeSeries(
            RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
            RECURRENCE_NONE, 0, RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
            RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
        DateTime point(0.0);
        EXPECT_EQ(daily->GetNextNTimePoints(DateTime(2024, 3, 8), 1, &point), 1u);
        const std::unique_ptr<Binary> block = MakeBinary("abc", 3);
        EXPECT_EQ(block->GetSize(), 3u);
        EXPECT_EQ(MakeBinary(size_t{16})->GetSize(), 16u);
        EXPECT_EQ(MakeBinary()->GetSize(), 0u);
        TimeSeriesPtr none;
        EXPECT_GT(ZelvorTest::LiveHeapBlocks(), before);
    }
    EXPECT_EQ(ZelvorTest::LiveHeapBlocks(), before);
}

}  // namespace
