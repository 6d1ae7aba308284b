// Two values built from the input, every operation checked against GMP on scaled
// integers (a value of scale s is the integer of its digits over 10^s).
#include <gmp.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <ZelvorDataType/BigDecimal.h>

namespace {

using ZelvorDataType::BigDecimal;

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

class Z {
  public:
    Z() { mpz_init(v); }
    ~Z() { mpz_clear(v); }
    Z(const Z&) = delete;
    Z& operator=(const Z&) = delete;
    mpz_t v;
};

class Reader {
  public:
    Reader(const uint8_t* data, size_t size) : mData(data), mSize(size) {}
    bool Empty() const { return mPos >= mSize; }
    uint8_t Byte() { return Empty() ? 0 : mData[mPos++]; }

  private:
    const uint8_t* mData;
    size_t mSize;
    size_t mPos = 0;
};

struct Operand {
    std::string text;
    Z integer;
    long scale = 0;
};

// Digits from the input (up to 400 of them), a scale up to 80, a sign, and one of two
// spellings: plain ("-12.345") or with an exponent ("-12345e-3").
void Read(Reader& in, Operand& out) {
    const size_t count = 1 + (size_t{in.Byte()} * 2 + in.Byte() % 2) % 400;
    const long scale = in.Byte() % 81;
    const uint8_t flags = in.Byte();
    std::string digits;
    for (size_t i = 0; i < count && !in.Empty(); ++i) {
        digits += static_cast<char>('0' + in.Byte() % 10);
    }
    if (digits.empty()) {
        digits = "0";
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    mpz_set_str(out.integer.v, digits.c_str(), 10);
    const bool negative = (flags & 1) != 0;
    if (negative) {
        mpz_neg(out.integer.v, out.integer.v);
    }
    out.scale = mpz_sgn(out.integer.v) == 0 ? 0 : scale;
    std::string text;
    if ((flags & 2) != 0) {
        text = digits + "e-" + std::to_string(scale);
    } else {
        if (static_cast<long>(digits.size()) <= scale) {
            digits.insert(0, static_cast<size_t>(scale + 1) - digits.size(), '0');
        }
        const size_t k = digits.size() - static_cast<size_t>(scale);
        text = digits.substr(0, k) + (scale > 0 ? "." + digits.substr(k) : "");
    }
    out.text = (negative ? "-" : "") + text;
}

std::string Format(const mpz_t value, long scale, int zeroSign) {
    if (mpz_sgn(value) == 0) {
        if (zeroSign == 0) {
            return "0";
        }
        const std::string text = zeroSign < 0 ? "-0" : "0";
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
    const std::string text = (negative ? "-" : "") + digits.substr(0, k);
    return scale > 0 ? text + "." + digits.substr(k) : text;
}

void ScaleUp(mpz_t out, const mpz_t value, long places) {
    Z power;
    mpz_ui_pow_ui(power.v, 10, static_cast<unsigned long>(places));
    mpz_mul(out, value, power.v);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Reader in(data, size);
    const uint8_t mode = in.Byte();
    const int asked = in.Byte() % 90 - 1;
    Operand a;
    Operand b;
    Read(in, a);
    Read(in, b);
    ZelvorBase::Buffer arena;
    const BigDecimal x(a.text.c_str(), (mode & 1) != 0 ? &arena : nullptr);
    const BigDecimal y(b.text.c_str(), (mode & 2) != 0 ? &arena : nullptr);
    Check(!x.IsInvalid() && !y.IsInvalid());

    const long common = std::max(a.scale, b.scale);
    Z left;
    Z right;
    Z expected;
    ScaleUp(left.v, a.integer.v, common - a.scale);
    ScaleUp(right.v, b.integer.v, common - b.scale);
    Check(x.CompareTo(y) == std::clamp(mpz_cmp(left.v, right.v), -1, 1));
    mpz_add(expected.v, left.v, right.v);
    Check((x + y)->ToString().c_str() == Format(expected.v, common, 0));
    mpz_sub(expected.v, left.v, right.v);
    Check((x - y)->ToString().c_str() == Format(expected.v, common, 0));
    mpz_mul(expected.v, a.integer.v, b.integer.v);
    Check((x * y)->ToString().c_str() == Format(expected.v, a.scale + b.scale, 0));

    if (mpz_sgn(b.integer.v) == 0) {
        try {
            (void)x.Divide(y, asked);
            Check(false);
        } catch (const ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>&) {
        }
        return 0;
    }
    const long q = asked == -1 ? a.scale : asked;
    ScaleUp(left.v, a.integer.v, b.scale + q);
    ScaleUp(right.v, b.integer.v, a.scale);
    mpz_tdiv_q(expected.v, left.v, right.v);
    const int sign = mpz_sgn(a.integer.v) * mpz_sgn(b.integer.v);
    const auto quotient = x.Divide(y, asked);
    Check(quotient->ToString().c_str() == Format(expected.v, q, sign));
    Check(quotient->Signum() == sign);
    return 0;
}
