// Hash values agree with operator==: a property test over random pairs built to be equal
// often (one value in different forms, scales, zones and tags), and the unordered
// containers keyed by each type.

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include <ZelvorDataType/Format.h>
#include <gtest/gtest.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

struct Tally {
    long long pairs = 0;
    long long equal = 0;
};

// Both directions, as Variant's operator== is not symmetric for date tags.
template <class T>
void ExpectConsistent(Tally& tally, const T& a, const T& b) {
    for (const auto& [left, right] : {std::pair<const T&, const T&>(a, b), {b, a}}) {
        ++tally.pairs;
        if (left == right) {
            ++tally.equal;
            EXPECT_EQ(std::hash<T>{}(left), std::hash<T>{}(right))
                << ToText(left) << " and " << ToText(right);
        }
    }
}

// An integer near a place where the numeric readings part ways, with its sign: on or
// next to a multiple of half the distance between floats there, where float and double
// roundings split.
long long NearEdge(std::mt19937_64& random) {
    static const long long edges[] = {
        0,         1LL << 8,  1LL << 24, 1LL << 31, (1LL << 32) - (1LL << 24),
        1LL << 32, 1LL << 53, 1LL << 62};
    const long long base = edges[random() % std::size(edges)];
    const int bits = std::bit_width(static_cast<unsigned long long>(base));
    // From 2^24 on, half the distance between floats; at 2^24 a quarter of the distance
    // between the floats of the 32-bit partners of the negatives.
    const long long step = bits > 25 ? 1LL << (bits - 25) : bits == 25 ? 64 : 1;
    const long long value = base + (static_cast<long long>(random() % 33) - 16) * step +
                            static_cast<long long>(random() % 5) - 2;
    return random() % 2 == 0 ? value : -value;
}

// The value in one of the numeric tags, as the tag's own conversion reads it.
Variant InTag(double value, long long integer, unsigned which) {
    const Variant forms[] = {Variant(static_cast<short>(integer)),
                             Variant(static_cast<int>(integer)),
                             Variant(static_cast<unsigned int>(integer)),
                             Variant(integer),
                             Variant(static_cast<float>(integer)),
                             Variant(static_cast<double>(integer)),
                             Variant(value)};
    return forms[which % 7];
}

TEST(Hash, ConsistentWithEquality) {
    std::mt19937_64 random(1124);
    Tally tally;
    for (int n = 0; n < 20000; ++n) {
        // Numbers: one integer, or a neighbour of it, in every pair of tags; fractions too.
        const long long integer = NearEdge(random);
        const long long other =
            random() % 3 == 0 ? integer + static_cast<long long>(random() % 5) - 2 : integer;
        const double fraction = static_cast<double>(integer) + (n % 4 == 0 ? 0.5 : 0.0);
        for (unsigned pair = 0; pair < 49; ++pair) {
            ExpectConsistent(tally, InTag(fraction, integer, pair / 7),
                             InTag(fraction, other, pair % 7));
        }
    }
    for (const double special : {std::nan(""), double(INFINITY), -double(INFINITY), -0.0, 0.0}) {
        ExpectConsistent(tally, Variant(special), Variant(static_cast<float>(special)));
        ExpectConsistent(tally, Variant(special), Variant(0));
    }
    for (int n = 0; n < 20000; ++n) {
        // Decimals: digits with leading zeros, trailing zeros and exponents.
        const std::string digits = std::to_string(random() % 100000);
        const int scale = static_cast<int>(random() % 4);
        const std::string sign = random() % 2 == 0 ? "-" : "";
        const std::string plain = fmt::format("{}00{}.{:0<{}}", sign, digits, "", scale + 1);
        const std::string exponent = fmt::format("{}{}e{}", sign, digits, -(n % 3));
        const std::string shifted = fmt::format("{}{}{:0<{}}e-{}", sign, digits, "", n % 3, n % 3);
        ZelvorBase::Buffer arena;
        ExpectConsistent(tally, BigDecimal(plain.c_str()), BigDecimal(shifted.c_str(), &arena));
        ExpectConsistent(tally, BigDecimal(exponent.c_str()), BigDecimal(shifted.c_str()));
        ExpectConsistent(tally, Variant(BigDecimal(plain.c_str())),
                         Variant(BigDecimal(shifted.c_str())));
        // Quotients truncated to nothing keep their sign.
        const BigDecimalHandle tiny = BigDecimal(sign == "-" ? -1 : 1).Divide(BigDecimal(7), scale);
        ExpectConsistent(tally, *tiny, *BigDecimal(1).Divide(BigDecimal(9), scale + 1));
        ExpectConsistent(tally, *tiny, BigDecimal("0.000"));
    }
    ZelvorTest::ZoneScope zone("America/New_York");
    for (int n = 0; n < 20000; ++n) {
        // Dates: equal fields under other zone words and caches; around the repeated hour
        // of 2024-11-03 in New York, UTC values against local ones.
        const DateTime date(2024, 11, 3, static_cast<int>(random() % 8),
                            static_cast<int>(random() % 2) * 30, 0, static_cast<int>(random() % 2));
        const DateTime again(date.GetYear(), date.GetMonth(), date.GetDay(), date.GetHour(),
                             date.GetMinute(), date.GetSecond(), date.GetMillisecond(), 60, n);
        (void)again.GetDayOfWeek();
        ExpectConsistent(tally, date, again);
        ExpectConsistent(tally, TimeSpan(date - again), TimeSpan(0));
        const auto mode = [&] { return random() % 2 == 0 ? TIME_MODE_UTC : TIME_MODE_LOCAL; };
        ExpectConsistent(tally, ZelvorTime(date, mode(), true),
                         ZelvorTime(again, mode(), random() % 2 == 0));
        ZelvorTime ruleA;
        ZelvorTime ruleB;
        ruleA.PutDynamicTime(static_cast<int>(random() % 3));
        ruleB.PutDynamicTime(static_cast<int>(random() % 3));
        ruleB.PutDay(n, false);
        ExpectConsistent(tally, ruleA, ruleB);
        ExpectConsistent(tally, ZelvorTime(), ruleA);
        // Date tags: a date-time meets a date or a time of the same whole value.
        Variant a(date);
        Variant b;
        (random() % 2 == 0 ? b.SetDate(again) : b.SetTime(again));
        ExpectConsistent(tally, a, b);
    }
    std::printf("[ hash     ] %lld pairs compared, %lld of them equal\n", tally.pairs, tally.equal);
    EXPECT_GT(tally.equal, tally.pairs / 4);
}

// How many distinct keys the unordered containers see among `values`.
template <class T, class... More>
std::size_t Distinct(const T& first, const More&... more) {
    std::unordered_set<T> set{first, more...};
    const std::unordered_map<T, int> map{{first, 0}, {more, 0}...};
    EXPECT_EQ(map.size(), set.size());
    return set.size();
}

TEST(Hash, UnorderedContainers) {
    ZelvorTest::ZoneScope zone("Europe/Berlin");
    const DateTime noon(2024, 3, 5, 12);
    const struct {
        std::size_t got, want;
    } cases[] = {
        {Distinct(noon, DateTime(2024, 3, 5, 12, 0, 0, 0, 60, 1), DateTime(2024, 3, 5)), 2},
        {Distinct(TimeSpan(1000), TimeSpan(0, 0, 0, 1, 0), TimeSpan(-1000)), 2},
        {Distinct(BigDecimal("1.5"), BigDecimal("1.50"), BigDecimal("015e-1"), BigDecimal("-1.5")),
         2},
        {Distinct(ZelvorTime(noon, TIME_MODE_UTC, true), ZelvorTime(noon, TIME_MODE_LOCAL, true),
                  ZelvorTime()),
         2},
        {Distinct(Variant(2), Variant(2.0), Variant(2LL), Variant(L"2"), Variant()), 3},
    };
    for (const auto& [got, want] : cases) {
        EXPECT_EQ(got, want);
    }
}

}  // namespace
