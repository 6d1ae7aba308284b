// BM_BigDecimal_* against two peers on the same scaled values. GMP's mpz_t: a decimal of
// N digits at scale 10 is, for GMP, the N-digit integer of its digits. Each operation of
// ours makes a new value (object, digits and all), so the BM_Mpz_* peers make a fresh
// mpz_t per operation too (init, operate, clear); BM_MpzInPlace_* reuse one result, which
// shows what the fresh value costs. BM_DecFloat_*: Boost.Multiprecision's cpp_dec_float
// with 80 digits, the decimal type a C++ user picks otherwise; 80 digits hold a 38 x 38
// digit product exactly, so its peers run at 18 and 38 digits only.
#include <benchmark/benchmark.h>

#include <gmp.h>
#include <boost/multiprecision/cpp_dec_float.hpp>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <ZelvorDataType/BigDecimal.h>

namespace {

using ZelvorDataType::BigDecimal;

constexpr int kScale = 10;

// N random digits, the first one not zero.
std::string Digits(int64_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::string s;
    for (int64_t i = 0; i < n; ++i) {
        s += static_cast<char>('0' + rng() % 10);
    }
    s[0] = static_cast<char>('1' + rng() % 9);
    return s;
}

// The same digits with a point kScale places from the right.
std::string Decimal(const std::string& digits) {
    const size_t point = digits.size() - kScale;
    return digits.substr(0, point) + "." + digits.substr(point);
}

class Mpz {
  public:
    explicit Mpz(const std::string& digits) { mpz_init_set_str(v, digits.c_str(), 10); }
    Mpz() { mpz_init(v); }
    ~Mpz() { mpz_clear(v); }
    Mpz(const Mpz&) = delete;
    Mpz& operator=(const Mpz&) = delete;
    mpz_t v;
};

using DecFloat = boost::multiprecision::number<boost::multiprecision::cpp_dec_float<80>,
                                               boost::multiprecision::et_off>;

struct Operands {
    explicit Operands(int64_t n)
        : digitsA(Digits(n, 1)),
          digitsB(Digits(n, 2)),
          textA(Decimal(digitsA)),
          a(textA.c_str()),
          b(Decimal(digitsB).c_str()),
          za(digitsA),
          zb(digitsB) {
        mpz_ui_pow_ui(pow10.v, 10, kScale);
    }
    std::string digitsA, digitsB, textA;
    BigDecimal a, b;
    Mpz za, zb, pow10;
};

void Sizes(benchmark::internal::Benchmark* b) {
    for (int n : {18, 38, 100, 1000, 10000}) {
        b->Arg(n);
    }
}

// Lengths whose products the 80-digit peer holds exactly.
void ShortSizes(benchmark::internal::Benchmark* b) {
    for (int n : {18, 38}) {
        b->Arg(n);
    }
}

struct DecFloatOperands {
    explicit DecFloatOperands(int64_t n)
        : text(Decimal(Digits(n, 1))), a(text), b(Decimal(Digits(n, 2))) {}
    std::string text;
    DecFloat a, b;
};

// Truncation to kScale places, as our Divide does: trunc(q * 10^k) / 10^k.
const DecFloat& Pow10Scale() {
    static const DecFloat p = boost::multiprecision::pow(DecFloat(10), kScale);
    return p;
}

void BM_DecFloat_Parse(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    for (auto _ : state) {
        DecFloat v(o.text);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_DecFloat_Parse)->Apply(ShortSizes);

void BM_DecFloat_Add(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    for (auto _ : state) {
        DecFloat r = o.a + o.b;
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_DecFloat_Add)->Apply(ShortSizes);

void BM_DecFloat_Sub(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    for (auto _ : state) {
        DecFloat r = o.a - o.b;
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_DecFloat_Sub)->Apply(ShortSizes);

void BM_DecFloat_Mul(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    for (auto _ : state) {
        DecFloat r = o.a * o.b;
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_DecFloat_Mul)->Apply(ShortSizes);

void BM_DecFloat_Div(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    const DecFloat& p = Pow10Scale();
    for (auto _ : state) {
        DecFloat r = boost::multiprecision::trunc(o.a / o.b * p) / p;
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_DecFloat_Div)->Apply(ShortSizes);

void BM_DecFloat_CompareTo(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    std::string other = o.text;
    other.back() = other.back() == '9' ? '8' : '9';
    const DecFloat b(other);
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a.compare(b));
    }
}
BENCHMARK(BM_DecFloat_CompareTo)->Apply(ShortSizes);

// Fixed notation with kScale places, the text our ToString gives.
void BM_DecFloat_ToString(benchmark::State& state) {
    const DecFloatOperands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a.str(0, std::ios_base::fixed));
    }
}
BENCHMARK(BM_DecFloat_ToString)->Apply(ShortSizes);

void BM_BigDecimal_Parse(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        BigDecimal v(o.textA.c_str());
        benchmark::DoNotOptimize(&v);
    }
}
BENCHMARK(BM_BigDecimal_Parse)->Apply(Sizes);

void BM_Mpz_Parse(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        mpz_t v;
        mpz_init_set_str(v, o.digitsA.c_str(), 10);
        benchmark::DoNotOptimize(v);
        mpz_clear(v);
    }
}
BENCHMARK(BM_Mpz_Parse)->Apply(Sizes);

void BM_MpzInPlace_Parse(benchmark::State& state) {
    const Operands o(state.range(0));
    Mpz v;
    for (auto _ : state) {
        mpz_set_str(v.v, o.digitsA.c_str(), 10);
        benchmark::DoNotOptimize(v.v);
    }
}
BENCHMARK(BM_MpzInPlace_Parse)->Apply(Sizes);

void BM_BigDecimal_Add(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a + o.b);
    }
}
BENCHMARK(BM_BigDecimal_Add)->Apply(Sizes);

void BM_Mpz_Add(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        mpz_t r;
        mpz_init(r);
        mpz_add(r, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r);
        mpz_clear(r);
    }
}
BENCHMARK(BM_Mpz_Add)->Apply(Sizes);

void BM_MpzInPlace_Add(benchmark::State& state) {
    const Operands o(state.range(0));
    Mpz r;
    for (auto _ : state) {
        mpz_add(r.v, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r.v);
    }
}
BENCHMARK(BM_MpzInPlace_Add)->Apply(Sizes);

void BM_BigDecimal_Sub(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a - o.b);
    }
}
BENCHMARK(BM_BigDecimal_Sub)->Apply(Sizes);

void BM_Mpz_Sub(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        mpz_t r;
        mpz_init(r);
        mpz_sub(r, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r);
        mpz_clear(r);
    }
}
BENCHMARK(BM_Mpz_Sub)->Apply(Sizes);

void BM_MpzInPlace_Sub(benchmark::State& state) {
    const Operands o(state.range(0));
    Mpz r;
    for (auto _ : state) {
        mpz_sub(r.v, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r.v);
    }
}
BENCHMARK(BM_MpzInPlace_Sub)->Apply(Sizes);

void BM_BigDecimal_Mul(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a * o.b);
    }
}
BENCHMARK(BM_BigDecimal_Mul)->Apply(Sizes);

void BM_Mpz_Mul(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        mpz_t r;
        mpz_init(r);
        mpz_mul(r, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r);
        mpz_clear(r);
    }
}
BENCHMARK(BM_Mpz_Mul)->Apply(Sizes);

void BM_MpzInPlace_Mul(benchmark::State& state) {
    const Operands o(state.range(0));
    Mpz r;
    for (auto _ : state) {
        mpz_mul(r.v, o.za.v, o.zb.v);
        benchmark::DoNotOptimize(r.v);
    }
}
BENCHMARK(BM_MpzInPlace_Mul)->Apply(Sizes);

// Both operands at scale 10, quotient at scale 10: (a * 10^10) / b, truncated.
void BM_BigDecimal_Div(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a.Divide(o.b, kScale));
    }
}
BENCHMARK(BM_BigDecimal_Div)->Apply(Sizes);

void BM_Mpz_Div(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        mpz_t t;
        mpz_t q;
        mpz_init(t);
        mpz_init(q);
        mpz_mul(t, o.za.v, o.pow10.v);
        mpz_tdiv_q(q, t, o.zb.v);
        benchmark::DoNotOptimize(q);
        mpz_clear(q);
        mpz_clear(t);
    }
}
BENCHMARK(BM_Mpz_Div)->Apply(Sizes);

void BM_MpzInPlace_Div(benchmark::State& state) {
    const Operands o(state.range(0));
    Mpz t;
    Mpz q;
    for (auto _ : state) {
        mpz_mul(t.v, o.za.v, o.pow10.v);
        mpz_tdiv_q(q.v, t.v, o.zb.v);
        benchmark::DoNotOptimize(q.v);
    }
}
BENCHMARK(BM_MpzInPlace_Div)->Apply(Sizes);

// Operands equal but for the last digit: the whole length is read.
void BM_BigDecimal_CompareTo(benchmark::State& state) {
    const Operands o(state.range(0));
    std::string other = o.textA;
    other.back() = other.back() == '9' ? '8' : '9';
    const BigDecimal b(other.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a.CompareTo(b));
    }
}
BENCHMARK(BM_BigDecimal_CompareTo)->Apply(Sizes);

void BM_Mpz_CompareTo(benchmark::State& state) {
    const Operands o(state.range(0));
    std::string other = o.digitsA;
    other.back() = other.back() == '9' ? '8' : '9';
    const Mpz b(other);
    for (auto _ : state) {
        benchmark::DoNotOptimize(mpz_cmp(o.za.v, b.v));
    }
}
BENCHMARK(BM_Mpz_CompareTo)->Apply(Sizes);

void BM_BigDecimal_ToString(benchmark::State& state) {
    const Operands o(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(o.a.ToString());
    }
}
BENCHMARK(BM_BigDecimal_ToString)->Apply(Sizes);

// Digits into a reused buffer, then an owned string with the point put in: what a
// caller of GMP writes to get the same text.
void BM_Mpz_ToString(benchmark::State& state) {
    const Operands o(state.range(0));
    std::vector<char> buffer(mpz_sizeinbase(o.za.v, 10) + 2);
    for (auto _ : state) {
        mpz_get_str(buffer.data(), 10, o.za.v);
        const size_t point = std::strlen(buffer.data()) - kScale;
        std::string text;
        text.reserve(point + kScale + 1);
        text.append(buffer.data(), point).append(1, '.').append(buffer.data() + point);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_Mpz_ToString)->Apply(Sizes);

}  // namespace
