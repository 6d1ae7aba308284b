// Every operation checked against GMP on scaled integers: a value of scale s is the
// integer of its digits over 10^s, so sums, products and truncated quotients at a scale
// are exact integer operations there.
#include <gtest/gtest.h>

#include <gmp.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <ZelvorDataType/BigDecimal.h>

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::BigDecimalHandle;

class Z {
  public:
    Z() { mpz_init(v); }
    ~Z() { mpz_clear(v); }
    Z(const Z&) = delete;
    Z& operator=(const Z&) = delete;
    mpz_t v;
};

// `value` at `scale` as BigDecimal prints it; a zero prints with its places and sign
// only when `zeroSign` says that it is a truncated quotient.
std::string Format(const mpz_t value, long scale, int zeroSign) {
    if (mpz_sgn(value) == 0) {
        if (zeroSign == 0) {
            return "0";
        }
        std::string text = zeroSign < 0 ? "-0" : "0";
        return scale > 0 ? text + "." + std::string(static_cast<size_t>(scale), '0') : text;
    }
    std::vector<char> buffer(mpz_sizeinbase(value, 10) + 2);
    mpz_get_str(buffer.data(), 10, value);
    std::string digits = buffer.data();
    const bool negative = digits[0] == '-';
    if (negative) {
        digits.erase(0, 1);
    }
    if (static_cast<long>(digits.size()) <= scale) {
        digits.insert(0, static_cast<size_t>(scale + 1) - digits.size(), '0');
    }
    const size_t k = digits.size() - static_cast<size_t>(scale);
    std::string text = (negative ? "-" : "") + digits.substr(0, k);
    return scale > 0 ? text + "." + digits.substr(k) : text;
}

void ScaleUp(mpz_t out, const mpz_t value, long places) {
    Z power;
    mpz_ui_pow_ui(power.v, 10, static_cast<unsigned long>(places));
    mpz_mul(out, value, power.v);
}

struct Operand {
    std::string text;
    Z integer;  // the digits with the sign, as GMP sees them
    long scale = 0;
};

// A random value of 1 to 300 digits and scale 0 to 60, written as decimal text or in
// exponent form, with zeros in front now and then.
void RandomOperand(std::mt19937_64& rng, bool zerosInFront, Operand& out) {
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
    mpz_set_str(out.integer.v, digits.c_str(), 10);
    out.scale = mpz_sgn(out.integer.v) == 0 ? 0 : scale;  // zero always has scale 0
    if (negative) {
        mpz_neg(out.integer.v, out.integer.v);
    }
    std::string text;
    if (rng() % 4 == 0) {
        if (!zerosInFront) {
            // A heap value would keep and print such zeros; the model has none.
            digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
        }
        text = digits + "e-" + std::to_string(scale);
    } else {
        if (static_cast<long>(digits.size()) <= scale) {
            digits.insert(0, static_cast<size_t>(scale + 1) - digits.size(), '0');
        }
        const size_t k = digits.size() - static_cast<size_t>(scale);
        std::string integer = digits.substr(0, k);
        if (!zerosInFront) {
            integer.erase(0, std::min(integer.find_first_not_of('0'), integer.size() - 1));
        }
        text = integer + (scale > 0 ? "." + digits.substr(k) : "");
    }
    out.text = (negative ? "-" : "") + text;
}

TEST(BigDecimalAgainstGmp, RandomOperands) {
    std::mt19937_64 rng(0x5eed5eedULL);
    for (int iteration = 0; iteration < 3000; ++iteration) {
        ZelvorBase::Buffer arena;
        const bool inArena = iteration % 2 == 0;
        ZelvorBase::Buffer* home = inArena ? &arena : nullptr;
        Operand a;
        Operand b;
        RandomOperand(rng, inArena, a);
        RandomOperand(rng, inArena, b);
        SCOPED_TRACE(a.text + " | " + b.text);
        const BigDecimal x(a.text.c_str(), home);
        const BigDecimal y(b.text.c_str(), home);
        ASSERT_FALSE(x.IsInvalid());
        ASSERT_FALSE(y.IsInvalid());
        ASSERT_EQ(x.Scale(), a.scale);

        const long common = std::max(a.scale, b.scale);
        Z left;
        Z right;
        Z expected;
        ScaleUp(left.v, a.integer.v, common - a.scale);
        ScaleUp(right.v, b.integer.v, common - b.scale);
        EXPECT_EQ(x.CompareTo(y), std::clamp(mpz_cmp(left.v, right.v), -1, 1));

        // Text, scale and sign of a result; `zeroSign` as for Format.
        const auto check = [&](const BigDecimalHandle& r, long scale, int zeroSign) {
            EXPECT_EQ(r->ToString().c_str(), Format(expected.v, scale, zeroSign));
            EXPECT_EQ(r->Scale(), scale);
            EXPECT_EQ(r->Signum(), mpz_sgn(expected.v) != 0 ? mpz_sgn(expected.v) : zeroSign);
        };
        mpz_add(expected.v, left.v, right.v);
        check(x + y, common, 0);
        mpz_sub(expected.v, left.v, right.v);
        check(x - y, common, 0);
        mpz_mul(expected.v, a.integer.v, b.integer.v);
        check(x * y, a.scale + b.scale, 0);

        // (A / 10^sa) / (B / 10^sb) at scale q is A * 10^(sb + q) / (B * 10^sa), truncated.
        const int asked = static_cast<int>(rng() % 42) - 1;
        const long q = asked == -1 ? a.scale : asked;
        if (mpz_sgn(b.integer.v) == 0) {
            EXPECT_THROW((void)x.Divide(y, asked),
                         ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>);
            continue;
        }
        ScaleUp(left.v, a.integer.v, b.scale + q);
        ScaleUp(right.v, b.integer.v, a.scale);
        mpz_tdiv_q(expected.v, left.v, right.v);
        check(x.Divide(y, asked), q, mpz_sgn(a.integer.v) * mpz_sgn(b.integer.v));
    }
}

// Products long enough for the split multiplication: lengths at and around where it
// takes over, unequal halves, and all nines for the longest carry chains.
TEST(BigDecimalAgainstGmp, LongProducts) {
    const struct {
        size_t lengthA, lengthB;
        bool nines;
    } cases[] = {{2304, 2304, false},
                 {2305, 4600, false},
                 {4607, 2400, true},
                 {9001, 8999, false},
                 {9000, 9000, true}};
    std::mt19937_64 rng(0x1095ULL);
    for (const auto& c : cases) {
        std::string digits[2];
        for (int side = 0; side < 2; ++side) {
            const size_t count = side == 0 ? c.lengthA : c.lengthB;
            for (size_t i = 0; i < count; ++i) {
                digits[side] += static_cast<char>(c.nines ? '9' : '0' + rng() % 10);
            }
            digits[side][0] = '9';  // no zeros in front, which a heap value would keep
        }
        SCOPED_TRACE(std::to_string(c.lengthA) + " x " + std::to_string(c.lengthB));
        Z a;
        Z b;
        Z expected;
        mpz_set_str(a.v, digits[0].c_str(), 10);
        mpz_set_str(b.v, digits[1].c_str(), 10);
        mpz_mul(expected.v, a.v, b.v);
        mpz_neg(expected.v, expected.v);
        const BigDecimal x(("-" + digits[0].substr(0, 7) + "." + digits[0].substr(7)).c_str());
        const BigDecimal y(digits[1].c_str());
        EXPECT_EQ((x * y)->ToString().c_str(),
                  Format(expected.v, static_cast<long>(c.lengthA) - 7, -1));
    }
}

}  // namespace
