// Exact decimals under faults: parsing, copies, the four operations and the texts.
#include <functional>
#include <optional>
#include <string>

#include <ZelvorDataType/BigDecimal.h>

#include "FaultSupport.h"

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::BigDecimalHandle;
using ZelvorDataType::BigInt;
using ZelvorFault::Drive;
using ZelvorFault::Probe;

std::string Text(const BigDecimal& v) {
    if (v.IsEmpty()) {
        return "(empty)";
    }
    return v.IsInvalid() ? "(invalid)" : v.ToString().c_str();
}

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
        Drive("parse " + text, [&](Probe& p) {
            ZelvorBase::Buffer plain;
            const BigDecimal reference(text.c_str(), Twin(p, plain));
            std::optional<BigDecimal> value;
            if (p.Attempt([&] { value.emplace(text.c_str(), p.Arena()); })) {
                EXPECT_EQ(Text(*value), Text(reference));
            }
        });
        Drive("parse wide " + text, [&](Probe& p) {
            ZelvorBase::Buffer plain;
            const BigDecimal reference(text.c_str(), Twin(p, plain));
            const std::wstring wide(text.begin(), text.end());
            std::optional<BigDecimal> value;
            if (p.Attempt([&] { value.emplace(wide.c_str(), p.Arena()); })) {
                EXPECT_EQ(Text(*value), Text(reference));
            }
        });
        Drive("parse into " + text, [&](Probe& p) {
            BigDecimal value(p.Arena());
            if (!p.Attempt([&] { value._StrToBigDecimal(text.c_str()); })) {
                EXPECT_TRUE(value.IsInvalid());  // never a half-built number
            }
        });
        Drive("copy of " + text, [&](Probe& p) {
            ZelvorBase::Buffer plain;
            const BigDecimal source(text.c_str(), Twin(p, plain));
            BigDecimal target(p.Arena());
            std::optional<BigDecimal> copy;
            if (p.Attempt([&] {
                    target = source;
                    copy.emplace(source, p.Arena());
                })) {
                EXPECT_EQ(Text(target), Text(source));
                EXPECT_EQ(Text(*copy), Text(source));
            } else {
                EXPECT_TRUE(copy == std::nullopt);
                EXPECT_TRUE(target.IsEmpty() || Text(target) == Text(source));
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

}  // namespace
