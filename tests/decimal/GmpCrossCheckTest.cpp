// Every operation checked against GMP on scaled integers: a value of scale s is the
// integer of its digits over 10^s, so sums, products and truncated quotients at a scale
// are exact integer operations there.
#include <gtest/gtest.h>

#include <gmpxx.h>

#include <algorithm>
#include <random>
#include <string>

#include <ZelvorDataType/BigDecimal.h>

#include "support/Cases.h"

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::BigDecimalHandle;

mpz_class PowerOfTen(long n) {
    mpz_class power;
    mpz_ui_pow_ui(power.get_mpz_t(), 10, static_cast<unsigned long>(n));
    return power;
}

// `digits` with a point before the last `scale` of them, and zeros put in front where
// fewer than one would stand before it.
std::string WithPoint(std::string digits, long scale) {
    if (static_cast<long>(digits.size()) <= scale) {
        digits.insert(0, static_cast<size_t>(scale + 1) - digits.size(), '0');
    }
    return scale > 0 ? digits.insert(digits.size() - static_cast<size_t>(scale), ".") : digits;
}

// `value` at `scale` as BigDecimal prints it; a zero prints with its places and sign
// only when `zeroSign` says that it is a truncated quotient.
std::string Format(const mpz_class& value, long scale, int zeroSign) {
    if (sgn(value) == 0 && zeroSign == 0) {
        return "0";
    }
    const bool negative = sgn(value) < 0 || (sgn(value) == 0 && zeroSign < 0);
    return (negative ? "-" : "") + WithPoint(mpz_class(abs(value)).get_str(), scale);
}

struct Operand {
    std::string text;
    mpz_class integer;  // the digits with the sign
    long scale;
};

// A random value of 1 to 300 digits and scale 0 to 60, written as decimal text or in
// exponent form, with zeros in front now and then.
Operand RandomOperand(std::mt19937_64& rng, bool zerosInFront) {
    const size_t count = 1 + rng() % 300;
    std::string digits;
    for (size_t i = 0; i < count; ++i) {
        digits += static_cast<char>('0' + rng() % 10);
    }
    if (rng() % 8 == 0) {
        digits.assign(count, '0');
    }
    const long scale = static_cast<long>(rng() % 61);
    const bool negative = rng() % 2 == 0;
    const mpz_class integer(digits, 10);
    std::string text =
        rng() % 4 == 0 ? digits + "e-" + std::to_string(scale) : WithPoint(digits, scale);
    if (!zerosInFront) {
        // A heap value would keep and print zeros in front of the point or the exponent;
        // the model has none.
        const size_t end = std::min(text.find_first_of(".e"), text.size());
        text.erase(0, std::min(text.find_first_not_of('0'), end - 1));
    }
    // Zero always has scale 0.
    return {(negative ? "-" : "") + text, negative ? mpz_class(-integer) : integer,
            sgn(integer) == 0 ? 0 : scale};
}

TEST(BigDecimalAgainstGmp, RandomOperands) {
    std::mt19937_64 rng(0x5eed5eedULL);
    for (int iteration = 0; iteration < 3000; ++iteration) {
        ZelvorBase::Buffer arena;
        const bool inArena = iteration % 2 == 0;
        ZelvorBase::Buffer* home = inArena ? &arena : nullptr;
        const Operand a = RandomOperand(rng, inArena);
        const Operand b = RandomOperand(rng, inArena);
        SCOPED_TRACE(a.text + " | " + b.text);
        const BigDecimal x(a.text.c_str(), home);
        const BigDecimal y(b.text.c_str(), home);
        ASSERT_FALSE(x.IsInvalid());
        ASSERT_FALSE(y.IsInvalid());
        ASSERT_EQ(x.Scale(), a.scale);

        const long common = std::max(a.scale, b.scale);
        const mpz_class left = a.integer * PowerOfTen(common - a.scale);
        const mpz_class right = b.integer * PowerOfTen(common - b.scale);
        EXPECT_EQ(x.CompareTo(y), std::clamp(cmp(left, right), -1, 1));

        // Text, scale and sign of a result; `zeroSign` as for Format.
        const auto check = [](const BigDecimalHandle& r, const mpz_class& expected, long scale,
                              int zeroSign) {
            EXPECT_EQ(r->ToString().c_str(), Format(expected, scale, zeroSign));
            EXPECT_EQ(r->Scale(), scale);
            EXPECT_EQ(r->Signum(), sgn(expected) != 0 ? sgn(expected) : zeroSign);
        };
        check(x + y, left + right, common, 0);
        check(x - y, left - right, common, 0);
        check(x * y, a.integer * b.integer, a.scale + b.scale, 0);

        // (A / 10^sa) / (B / 10^sb) at scale q is A * 10^(sb + q) / (B * 10^sa), truncated.
        const int asked = static_cast<int>(rng() % 42) - 1;
        const long q = asked == -1 ? a.scale : asked;
        if (sgn(b.integer) == 0) {
            EXPECT_THROW((void)x.Divide(y, asked),
                         ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>);
            continue;
        }
        check(x.Divide(y, asked),
              a.integer * PowerOfTen(b.scale + q) / (b.integer * PowerOfTen(a.scale)), q,
              sgn(a.integer) * sgn(b.integer));
    }
}

TEST(BigDecimalAgainstGmp, LongProducts) {
    std::mt19937_64 rng(0x1095ULL);
    for (const auto& c : ZelvorTest::ReadCases("decimal/LongProducts.cases")) {
        SCOPED_TRACE(c.where);
        const size_t lengths[] = {std::stoul(c[0]), std::stoul(c[1])};
        std::string digits[2];
        for (int side = 0; side < 2; ++side) {
            for (size_t i = 0; i < lengths[side]; ++i) {
                digits[side] += static_cast<char>(c[2] == "nines" ? '9' : '0' + rng() % 10);
            }
            digits[side][0] = '9';  // no zeros in front, which a heap value would keep
        }
        const mpz_class expected = -(mpz_class(digits[0], 10) * mpz_class(digits[1], 10));
        const BigDecimal x(("-" + digits[0].substr(0, 7) + "." + digits[0].substr(7)).c_str());
        const BigDecimal y(digits[1].c_str());
        EXPECT_EQ((x * y)->ToString().c_str(),
                  Format(expected, static_cast<long>(lengths[0]) - 7, -1));
    }
}

}  // namespace
