// Variant values under faults: every assignment, construction and copy, and the texts.
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <ZelvorDataType/Variant.h>

#include "FaultSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorFault::Drive;
using ZelvorFault::Probe;

// A Variant on the probe's arena, or on the heap under its contract.
Variant Target(Probe& p) {
    if (p.Arena() != nullptr) {
        return Variant(p.Arena());
    }
    return Variant(static_cast<ZelvorBase::MemoryContract*>(p.Contract()));
}

// The value `reference` holds, or, when the arena refused a byte block quietly, an
// empty block.
bool Same(const Variant& value, const Variant& reference, bool quiet) {
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

// The value an assignment gives to a heap Variant that held "old value".
Variant Reference(const Assignment& a) {
    Variant reference(L"old value");
    a.assign(reference);
    return reference;
}

// Equality that an invalid decimal can't take part in.
bool SameOrInvalid(const Variant& value, const Variant& reference, bool quiet) {
    if (reference.GetVarType() == VARIANT_BIGDECIMAL && reference.ToBigDecimal()->IsInvalid()) {
        return value.GetVarType() == VARIANT_BIGDECIMAL && value.ToBigDecimal()->IsInvalid();
    }
    return Same(value, reference, quiet);
}

TEST(VariantFaults, AssignmentsGiveTheNewValueOrAnEmptyOne) {
    const Values values;
    for (const Assignment& a : Assignments(values)) {
        const Variant reference = Reference(a);
        Drive(std::string("assign ") + a.name, [&](Probe& p) {
            Variant target = Target(p);
            target = L"old value";
            if (p.Attempt([&] { a.assign(target); })) {
                EXPECT_TRUE(SameOrInvalid(target, reference, p.Fired()));
            } else {
                EXPECT_EQ(target.GetVarType(), VARIANT_EMPTY);
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
                EXPECT_TRUE(SameOrInvalid(*copy, reference, p.Fired()));
                EXPECT_TRUE(SameOrInvalid(target, reference, p.Fired()));
            } else {
                // Untouched when the copy construction failed, empty when the assignment did.
                EXPECT_TRUE(target.GetVarType() == VARIANT_EMPTY || target == 1.5);
            }
            EXPECT_TRUE(SameOrInvalid(source, reference, false));
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

TEST(VariantFaults, TextsLeaveTheValueAlone) {
    const Values values;
    for (const Assignment& a : Assignments(values)) {
        const Variant reference = Reference(a);
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

}  // namespace
