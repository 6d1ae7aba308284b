#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorTime.h>
#include <ZelvorSerialization/MemoryDataStream.h>

#include "RelativeSupport.h"
#include "support/TestDoubles.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::Text;
using ZelvorRelativeTest::Ymd;
using ZelvorRelativeTest::ZoneScope;
using ZelvorSerialization::MemoryDataStream;

// Tokyo is nine hours east of UTC all year, which keeps expected fields simple.
class ZelvorTimeInTokyo : public testing::Test {
  protected:
    ZoneScope mZone{"Asia/Tokyo"};
};

DateTime Raw(const ZelvorTime& value) {
    return DateTime(value.GetYear(true, true), value.GetMonth(true, true), value.GetDay(true, true),
                    value.GetHour(true, true), value.GetMinutes(true, true), value.GetSeconds(true),
                    value.GetMilliSeconds());
}

ZelvorTime Dynamic(DYNAMIC_TIME kind, ZelvorBase::Buffer* buffer = nullptr) {
    ZelvorTime value(buffer);
    value.PutDynamicTime(kind);
    return value;
}

TEST_F(ZelvorTimeInTokyo, StaticConstructionPicksTheZoneOfTheRecord) {
    const DateTime date(2024, 3, 14, 15, 30, 45, 123);
    const struct {
        TIME_MODE mode;
        bool isUTC;
        TIME_MODE realMode;
        Ymd record;
    } cases[] = {
        {TIME_MODE_UTC, true, TIME_MODE_UTC, {2024, 3, 14, 15, 30, 45, 123}},
        {TIME_MODE_UTC, false, TIME_MODE_UTC, {2024, 3, 14, 6, 30, 45, 123}},
        {TIME_MODE_LOCAL, true, TIME_MODE_LOCAL, {2024, 3, 15, 0, 30, 45, 123}},
        {TIME_MODE_LOCAL, false, TIME_MODE_LOCAL, {2024, 3, 14, 15, 30, 45, 123}},
        {TIME_MODE_DYNAMIC, true, TIME_MODE_UTC, {2024, 3, 14, 15, 30, 45, 123}},
        {TIME_MODE_DYNAMIC, false, TIME_MODE_UTC, {2024, 3, 14, 6, 30, 45, 123}},
        {TIME_MODE_EMPTY, true, TIME_MODE_UTC, {2024, 3, 14, 15, 30, 45, 123}},
    };
    ZelvorBase::Buffer arena;
    for (const auto& c : cases) {
        const ZelvorTime heap(date, c.mode, c.isUTC);
        const ZelvorTime inArena(date, c.mode, c.isUTC, &arena);
        EXPECT_EQ(heap.GetRealMode(), c.realMode) << c.mode << c.isUTC;
        EXPECT_EQ(Text(Raw(heap)), Text(c.record.Make())) << c.mode << c.isUTC;
        EXPECT_EQ(Text(Raw(inArena)), Text(c.record.Make())) << c.mode << c.isUTC;
    }
    // From a serial date the milliseconds are put last; out of range they are refused.
    EXPECT_EQ(Text(Raw(ZelvorTime(45365.5, 250, TIME_MODE_LOCAL, false))),
              Text(DateTime(2024, 3, 14, 12, 0, 0, 250)));
    EXPECT_EQ(Text(Raw(ZelvorTime(45365.5, 1000, TIME_MODE_LOCAL, true))),
              Text(DateTime(2024, 3, 14, 21)));
}

TEST_F(ZelvorTimeInTokyo, ModesAndConversion) {
    const ZelvorTime empty;
    EXPECT_EQ(empty.GetRealMode(), TIME_MODE_EMPTY);
    EXPECT_EQ(empty.GetMode(), TIME_MODE_LOCAL);
    const ZelvorTime today = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(today.GetRealMode(), TIME_MODE_DYNAMIC);
    EXPECT_EQ(today.GetMode(), TIME_MODE_LOCAL);

    DateTime date(2001, 2, 3);
    EXPECT_EQ(empty.ToDateTime(true, date), 1);
    EXPECT_EQ(Text(date), Text(DateTime(2001, 2, 3)));
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).ToDateTime(true, date), E_TIME_UNRESOLVED);
    EXPECT_EQ(Text(date), Text(DateTime(2001, 2, 3)));

    // A dynamic value resolves against the date given, to UTC, then converts back.
    date = DateTime(2024, 3, 14, 15, 30);
    EXPECT_EQ(today.ToDateTime(true, date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(2024, 3, 13, 15)));
    date = DateTime(2024, 3, 14, 15, 30);
    EXPECT_EQ(today.ToDateTime(false, date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(2024, 3, 14)));

    // A static value takes no reference time.
    const ZelvorTime utc(DateTime(2024, 3, 14, 20), TIME_MODE_UTC, true);
    date = DateTime(1999, 1, 1);
    EXPECT_EQ(utc.ToDateTime(false, date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(2024, 3, 15, 5)));

    ZelvorTime value(DateTime(2024, 3, 14, 20), TIME_MODE_UTC, true);
    EXPECT_EQ(value.SetMode(TIME_MODE_LOCAL), 0);
    EXPECT_EQ(value.SetMode(TIME_MODE_LOCAL), 0);
    EXPECT_EQ(Text(Raw(value)), Text(DateTime(2024, 3, 15, 5)));
    EXPECT_EQ(value.SetMode(TIME_MODE_DYNAMIC), E_TIME_REFUSED);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_LOCAL);
    EXPECT_EQ(value.SetMode(TIME_MODE_UTC), 0);
    EXPECT_EQ(Text(Raw(value)), Text(DateTime(2024, 3, 14, 20)));
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(rule.SetMode(TIME_MODE_UTC), 0);
    EXPECT_EQ(rule.GetRealMode(), TIME_MODE_DYNAMIC);
    ZelvorTime nothing;
    EXPECT_EQ(nothing.SetMode(TIME_MODE_UTC), E_TIME_EMPTY);
    EXPECT_EQ(nothing.GetRealMode(), TIME_MODE_EMPTY);
}

TEST_F(ZelvorTimeInTokyo, GettersByZoneAndRawness) {
    // 2023-12-31 20:00 UTC is already 2024 in Tokyo.
    const ZelvorTime utc(DateTime(2023, 12, 31, 20, 0, 7, 9), TIME_MODE_UTC, true);
    ZelvorTime localCopy(utc);
    localCopy.SetMode(TIME_MODE_LOCAL);
    const ZelvorTime rule = Dynamic(DYNAMIC_TIME_EARLIEST);
    const ZelvorTime empty;
    const struct {
        const char* name;
        std::function<int()> get;
        int expected;
    } cases[] = {
        {"utc raw", [&] { return utc.GetYear(false, true); }, 2023},
        {"utc as local", [&] { return utc.GetYear(false, false); }, 2024},
        {"utc as utc", [&] { return utc.GetYear(true, false); }, 2023},
        {"local raw ignores zone", [&] { return localCopy.GetYear(true, true); }, 2024},
        {"local as utc", [&] { return localCopy.GetDay(true, false); }, 31},
        {"local hour raw", [&] { return localCopy.GetHour(false, true); }, 5},
        {"seconds", [&] { return localCopy.GetSeconds(false); }, 7},
        {"milliseconds", [&] { return localCopy.GetMilliSeconds(); }, 9},
        {"weekday of a local record", [&] { return localCopy.GetDayOfWeek(true, true); }, 1},
        {"unset weekday of a rule", [&] { return rule.GetDayOfWeek(false, true); }, -1},
        {"unresolved rule reads 1899-12-30", [&] { return rule.GetMonth(true, false); }, 12},
        {"no milliseconds in a rule", [&] { return rule.GetMilliSeconds(); }, 0},
        {"empty year", [&] { return empty.GetYear(true, false); }, -2146944584},
        {"empty week", [&] { return empty.GetWeek(false, true); }, E_TIME_EMPTY},
        {"empty seconds", [&] { return empty.GetSeconds(true); }, E_TIME_EMPTY},
        {"empty milliseconds", [&] { return empty.GetMilliSeconds(); }, E_TIME_EMPTY},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.get(), c.expected) << c.name;
    }
}

TEST_F(ZelvorTimeInTokyo, PuttersConvertAroundTheField) {
    const DateTime start(2024, 3, 14, 6, 30);  // UTC; 15:30 in Tokyo
    const struct {
        const char* name;
        TIME_MODE mode;
        std::function<int(ZelvorTime&)> put;
        int result;
        Ymd record;
    } cases[] = {
        {"hour out of range",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutHour(25, true); },
         0,
         {2024, 3, 14, 6, 30}},
        {"local hour on a utc record",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutHour(5, false); },
         0,
         {2024, 3, 13, 20, 30}},
        {"utc hour on a local record",
         TIME_MODE_LOCAL,
         [](ZelvorTime& t) { return t.PutHour(23, true); },
         0,
         {2024, 3, 15, 8, 30}},
        {"refused local day still written back",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutDay(0, false); },
         0,
         {2024, 3, 14, 6, 30}},
        {"week refused",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutWeek(6, true); },
         E_TIME_REFUSED,
         {2024, 3, 14, 6, 30}},
        {"week accepted",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutWeek(2, false); },
         0,
         {2024, 3, 7, 6, 30}},
        {"weekday within the month",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutDayOfWeek(6, true, true); },
         0,
         {2024, 3, 16, 6, 30}},
        {"seconds without zone",
         TIME_MODE_LOCAL,
         [](ZelvorTime& t) { return t.PutSeconds(59); },
         0,
         {2024, 3, 14, 15, 30, 59}},
        {"milliseconds",
         TIME_MODE_UTC,
         [](ZelvorTime& t) { return t.PutMilliSeconds(999); },
         0,
         {2024, 3, 14, 6, 30, 0, 999}},
    };
    for (const auto& c : cases) {
        ZelvorTime value(start, c.mode, true);
        EXPECT_EQ(c.put(value), c.result) << c.name;
        EXPECT_EQ(Text(Raw(value)), Text(c.record.Make())) << c.name;
    }
    // A weekday move out of the month is refused, the last flag notwithstanding.
    ZelvorTime may(DateTime(2024, 5, 1), TIME_MODE_UTC, true);
    EXPECT_EQ(may.PutDayOfWeek(0, true, true), E_TIME_REFUSED);
    EXPECT_EQ(Text(Raw(may)), Text(DateTime(2024, 5, 1)));
    ZelvorTime empty;
    EXPECT_EQ(empty.PutHour(1, true), E_TIME_EMPTY);
    EXPECT_EQ(empty.PutSeconds(1), E_TIME_EMPTY);
    EXPECT_EQ(empty.PutMilliSeconds(1), E_TIME_EMPTY);
}

TEST_F(ZelvorTimeInTokyo, DynamicMembers) {
    ZelvorTime value(DateTime(2024, 1, 1), TIME_MODE_UTC, true);
    int kind = 0;
    short months = 0;
    int days = 0;
    EXPECT_EQ(value.PutDynamicTime(DYNAMIC_TIME_NONE), 0);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_UTC);
    EXPECT_EQ(value.GetDynamicTime(kind), 0);
    EXPECT_EQ(kind, DYNAMIC_TIME_NONE);
    EXPECT_EQ(value.PutDynamicDayOffset(3), E_TIME_NOT_DYNAMIC);
    EXPECT_EQ(value.GetDynamicMonthOffset(months), E_TIME_NOT_DYNAMIC);

    EXPECT_EQ(value.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH), 0);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_DYNAMIC);
    EXPECT_EQ(value.PutDay(-1, true), 0);
    EXPECT_EQ(value.PutWeek(42, false), 0);
    EXPECT_EQ(value.PutMilliSeconds(5), 0);
    EXPECT_EQ(value.PutDynamicMonthOffset(-2), 0);
    EXPECT_EQ(value.PutDynamicDayOffset(7), 0);
    // A new kind on a dynamic value keeps every other field.
    EXPECT_EQ(value.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY), 0);
    EXPECT_EQ(value.GetDay(true, true), -1);
    EXPECT_EQ(value.GetWeek(true, true), 42);
    EXPECT_EQ(value.GetDynamicMonthOffset(months), 0);
    EXPECT_EQ(months, -2);
    EXPECT_EQ(value.GetDynamicDayOffset(days), 0);
    EXPECT_EQ(days, 7);
    EXPECT_EQ(value.GetDynamicTime(kind), 0);
    EXPECT_EQ(kind, 0x105);

    ZelvorTime empty;
    EXPECT_EQ(empty.GetDynamicTime(kind), E_TIME_EMPTY);
    EXPECT_EQ(empty.PutDynamicDayOffset(1), E_TIME_EMPTY);
    EXPECT_EQ(empty.PutDynamicTime(DYNAMIC_TIME_NONE), 0);
    EXPECT_EQ(empty.GetRealMode(), TIME_MODE_EMPTY);
}

TEST_F(ZelvorTimeInTokyo, DerivedDates) {
    const ZelvorTime local(DateTime(2024, 3, 1, 10), TIME_MODE_LOCAL, false);
    DateTime out(0.0);
    EXPECT_EQ(local.GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, out), 0);
    EXPECT_EQ(Text(out), Text(DateTime(2024, 2, 29, 10)));
    out = DateTime(2000, 1, 1);
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, out),
              E_TIME_UNRESOLVED);
    EXPECT_EQ(Text(out), Text(DateTime(2000, 1, 1)));
    EXPECT_EQ(ZelvorTime().GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, out), E_TIME_EMPTY);

    // 1710430245 is 2024-03-14 15:30:45 UTC; its fields are the rule's local reference.
    const ZelvorTime today = Dynamic(DYNAMIC_TIME_TODAY);
    double serial = 0;
    EXPECT_EQ(today.TolocalDATEWithFixedTime(serial, false, 1710430245), 0);
    EXPECT_DOUBLE_EQ(serial, 45365.0);
    EXPECT_EQ(today.TolocalDATEWithFixedTime(serial, true, 1710430245), 0);
    EXPECT_DOUBLE_EQ(serial, 45364.625);
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).TolocalDATEWithFixedTime(serial, true, 1710430245), 0);
    EXPECT_DOUBLE_EQ(serial, DateTime(1710430245L, 0).ToDATE());
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).TolocalDATE(serial, true), 0);
    EXPECT_DOUBLE_EQ(serial, 0.0);
    EXPECT_EQ(local.TolocalDATE(serial, false), 0);
    EXPECT_DOUBLE_EQ(serial, 45352.0 + 10.0 / 24);
    EXPECT_EQ(ZelvorTime().TolocalDATE(serial, false), E_TIME_EMPTY);
}

TEST_F(ZelvorTimeInTokyo, OrderAcrossForms) {
    const ZelvorTime empty;
    const ZelvorTime utc(DateTime(2024, 3, 14, 6), TIME_MODE_UTC, true);
    const ZelvorTime sameInstantLocal(DateTime(2024, 3, 14, 15), TIME_MODE_LOCAL, false);
    const ZelvorTime later(DateTime(2024, 3, 14, 6, 0, 0, 1), TIME_MODE_UTC, true);
    const ZelvorTime latest = Dynamic(DYNAMIC_TIME_LATEST);
    const ZelvorTime earliest = Dynamic(DYNAMIC_TIME_EARLIEST);
    const ZelvorTime flaggedLatest = Dynamic(DYNAMIC_TIME_LATEST | DYNAMIC_TIME_RELATIVE_HOUR);
    const ZelvorTime epoch(DateTime(0.0), TIME_MODE_UTC, true);
    ZelvorTime tomorrow = Dynamic(DYNAMIC_TIME_TODAY);
    tomorrow.PutDay(1, true);
    ZelvorTime yesterday = Dynamic(DYNAMIC_TIME_TODAY);
    yesterday.PutDay(-1, true);
    const ZelvorTime relativeToday = Dynamic(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_RELATIVE_HOUR);

    const struct {
        const char* name;
        const ZelvorTime& left;
        const ZelvorTime& right;
        bool equal, less, greater;
    } cases[] = {
        {"empty, empty", empty, empty, true, false, false},
        {"empty, static", empty, utc, false, true, false},
        {"static, empty", utc, empty, false, false, true},
        {"earliest before empty", earliest, empty, false, true, false},
        {"empty before latest", empty, latest, false, true, false},
        {"utc, local of one instant", utc, sameInstantLocal, true, false, false},
        {"local, later utc", sameInstantLocal, later, false, true, false},
        {"latest after static", latest, utc, false, false, true},
        {"earliest before static", earliest, utc, false, true, false},
        {"latest, itself", latest, latest, true, false, false},
        {"earliest, itself", earliest, earliest, true, false, false},
        {"earliest before latest", earliest, latest, false, true, false},
        {"same kind, other days", tomorrow, yesterday, true, false, false},
        {"flagged latest reads 1899-12-30", flaggedLatest, epoch, true, false, false},
        {"flagged latest before 2024", flaggedLatest, utc, false, true, false},
        {"flags make another kind", relativeToday, tomorrow, false, true, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.left == c.right, c.equal) << c.name;
        EXPECT_EQ(c.left < c.right, c.less) << c.name;
        EXPECT_EQ(c.left > c.right, c.greater) << c.name;
    }
}

std::array<std::uint8_t, 44> Saved(const ZelvorTime& value) {
    std::array<std::uint8_t, 44> block{};
    EXPECT_EQ(value.SaveObj(44, block.data()), 0);
    return block;
}

std::int32_t Word(const std::array<std::uint8_t, 44>& block, int offset) {
    std::int32_t word = 0;
    std::memcpy(&word, block.data() + offset, 4);
    return word;
}

TEST_F(ZelvorTimeInTokyo, SavedRecordLayout) {
    EXPECT_EQ(ZelvorTime::GetSaveObjSize(), 44);
    std::array<std::uint8_t, 48> untouched;
    untouched.fill(0xAA);
    const ZelvorTime local(DateTime(2024, 3, 14, 15, 30, 45, 123), TIME_MODE_LOCAL, false);
    EXPECT_EQ(local.SaveObj(43, untouched.data()), -1);
    EXPECT_EQ(untouched[0], 0xAA);
    EXPECT_EQ(local.SaveObj(48, untouched.data()), 0);
    EXPECT_EQ(untouched[44], 0xAA);

    auto empty = Saved(ZelvorTime());
    EXPECT_EQ(std::vector<std::uint8_t>(empty.begin(), empty.begin() + 4),
              (std::vector<std::uint8_t>{0x9B, 0xFF, 0xFF, 0xFF}));
    for (int offset = 4; offset < 44; offset += 4) {
        EXPECT_EQ(Word(empty, offset), 0) << offset;
    }
    const auto date = Saved(local);
    const std::int32_t expected[] = {-100, 2024, 3, 14, 15, 30, 45, 123, 3, 4, 1};
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(Word(date, 4 * i), expected[i]) << "word " << i;
    }

    ZelvorTime rule = Dynamic(DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY);
    rule.PutDynamicMonthOffset(-2);
    rule.PutDynamicDayOffset(-9);
    const auto words = Saved(rule);
    EXPECT_EQ(std::vector<std::uint8_t>(words.begin(), words.begin() + 4),
              (std::vector<std::uint8_t>{0x05, 0x01, 0xFE, 0xFF}));
    EXPECT_EQ(Word(words, 28), -9);
    EXPECT_EQ(Word(words, 36), -1);
    EXPECT_EQ(Word(words, 40), 1);
    ZelvorTime back;
    EXPECT_EQ(back.LoadObj(44, const_cast<std::uint8_t*>(words.data())), 0);
    int kind = 0;
    short months = 0;
    back.GetDynamicTime(kind);
    back.GetDynamicMonthOffset(months);
    EXPECT_EQ(kind, 0x105);
    EXPECT_EQ(months, -2);
    EXPECT_EQ(back.GetDayOfWeek(true, true), -1);
}

TEST_F(ZelvorTimeInTokyo, LoadingTakesTheFormOfTheRecord) {
    auto record = [](std::initializer_list<std::int32_t> words) {
        std::array<std::uint8_t, 44> block{};
        std::memcpy(block.data(), words.begin(), 4 * words.size());
        return block;
    };
    const struct {
        const char* name;
        std::array<std::uint8_t, 44> block;
        TIME_MODE mode;
        Ymd raw;  // static results only
    } cases[] = {
        {"clamped hour",
         record({-100, 2024, 2, 30, 99, 0, 0, 0, 0, 0, 1}),
         TIME_MODE_LOCAL,
         {2024, 2, 29, 23}},
        {"mode word 2 reads as utc",
         record({-100, 2024, 1, 1, 0, 0, 0, 0, 0, 0, 2}),
         TIME_MODE_UTC,
         {2024, 1, 1}},
        {"mode word -101 reads as utc",
         record({-100, 2024, 1, 1, 0, 0, 0, 0, 0, 0, -101}),
         TIME_MODE_UTC,
         {2024, 1, 1}},
        {"empty", record({-101, 5, 5, 5}), TIME_MODE_EMPTY, {}},
        {"any other tag is a rule", record({-102}), TIME_MODE_DYNAMIC, {}},
    };
    ZelvorBase::Buffer arena;
    const ZelvorTime starts[] = {ZelvorTime(),
                                 ZelvorTime(DateTime(1999, 9, 9), TIME_MODE_UTC, true),
                                 Dynamic(DYNAMIC_TIME_TODAY)};
    for (const auto& c : cases) {
        for (const ZelvorTime& start : starts) {
            for (ZelvorBase::Buffer* buffer : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
                ZelvorTime value(start, buffer);
                auto block = c.block;
                EXPECT_EQ(value.LoadObj(43, block.data()), -1);
                EXPECT_EQ(value.GetRealMode(), start.GetRealMode());
                EXPECT_EQ(value.LoadObj(44, block.data()), 0) << c.name;
                EXPECT_EQ(value.GetRealMode(), c.mode) << c.name;
                if (static_cast<unsigned>(c.mode) < 2u) {
                    EXPECT_EQ(Text(Raw(value)), Text(c.raw.Make())) << c.name;
                }
            }
        }
    }
}

TEST_F(ZelvorTimeInTokyo, SavedFormsRoundTrip) {
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_RELATIVE_MINUTE);
    rule.PutYear(-1, true);
    rule.PutMonth(2, true);
    rule.PutWeek(-3, true);
    rule.PutDay(INT_MIN, true);
    rule.PutDayOfWeek(6, true, false);
    rule.PutHour(INT_MAX, true);
    rule.PutMinutes(-59, true);
    rule.PutSeconds(61);
    rule.PutDynamicDayOffset(-100000);
    rule.PutDynamicMonthOffset(-32768);
    const ZelvorTime values[] = {
        ZelvorTime(),
        ZelvorTime(DateTime(2024, 2, 29, 23, 59, 58, 999), TIME_MODE_UTC, true),
        ZelvorTime(DateTime(65535, 12, 31, 1), TIME_MODE_LOCAL, false),
        rule,
    };
    auto sameRule = [](const ZelvorTime& a, const ZelvorTime& b) {
        for (auto get : {&ZelvorTime::GetYear, &ZelvorTime::GetMonth, &ZelvorTime::GetWeek,
                         &ZelvorTime::GetDay, &ZelvorTime::GetDayOfWeek, &ZelvorTime::GetHour,
                         &ZelvorTime::GetMinutes}) {
            EXPECT_EQ((a.*get)(true, true), (b.*get)(true, true));
        }
        EXPECT_EQ(a.GetSeconds(true), b.GetSeconds(true));
        int da = 1, db = 2;
        short ma = 1, mb = 2;
        a.GetDynamicDayOffset(da);
        b.GetDynamicDayOffset(db);
        a.GetDynamicMonthOffset(ma);
        b.GetDynamicMonthOffset(mb);
        EXPECT_EQ(da, db);
        EXPECT_EQ(ma, mb);
    };
    for (const ZelvorTime& original : values) {
        for (const ZelvorTime& start : values) {
            ZelvorTime fromRecord(start);
            auto block = Saved(original);
            ASSERT_EQ(fromRecord.LoadObj(44, block.data()), 0);
            MemoryDataStream stream;
            EXPECT_EQ(original.SaveToStream(&stream), 0);
            ZelvorTime fromStream(start);
            EXPECT_EQ(fromStream.LoadFromStream(&stream), 0);
            EXPECT_EQ(stream.GetRemaining(), 0u);
            for (const ZelvorTime* copy : {&fromRecord, &fromStream}) {
                EXPECT_EQ(copy->GetRealMode(), original.GetRealMode());
                EXPECT_TRUE(*copy == original);
                if (original.GetRealMode() == TIME_MODE_DYNAMIC) {
                    sameRule(*copy, original);
                } else if (original.GetRealMode() != TIME_MODE_EMPTY) {
                    EXPECT_EQ(Text(Raw(*copy)), Text(Raw(original)));
                }
            }
        }
    }
}

TEST_F(ZelvorTimeInTokyo, StreamEdges) {
    MemoryDataStream emptyValue;
    ZelvorTime().SaveToStream(&emptyValue);
    int word = 0;
    EXPECT_EQ(emptyValue.ReadInt(&word), 0);
    EXPECT_EQ(word, TIME_MODE_EMPTY);
    EXPECT_EQ(emptyValue.GetRemaining(), 0u);
    EXPECT_EQ(emptyValue.ReadInt(&word), 1);
    EXPECT_EQ(word, TIME_MODE_EMPTY);

    // An unknown mode changes nothing and reads no further.
    MemoryDataStream unknown;
    unknown.WriteInt(5);
    unknown.WriteInt(77);
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(rule.LoadFromStream(&unknown), 0);
    EXPECT_EQ(rule.GetRealMode(), TIME_MODE_DYNAMIC);
    EXPECT_EQ(unknown.GetRemaining(), 5u);

    // A stream with nothing in it reads mode 0: a UTC value, its date what it was.
    MemoryDataStream nothing;
    ZelvorTime value;
    EXPECT_EQ(value.LoadFromStream(&nothing), 0);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_UTC);
    EXPECT_EQ(Text(Raw(value)), Text(DateTime(0.0)));
    EXPECT_EQ(value.LoadFromStream(nullptr), -1);
    EXPECT_EQ(value.SaveToStream(nullptr), -1);

    // A read of the wrong type stores nothing and consumes nothing.
    MemoryDataStream typed;
    typed.WriteInt(3);
    DateTime date(2000, 1, 1);
    EXPECT_NE(typed.ReadDateTime(date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(2000, 1, 1)));
    EXPECT_EQ(typed.GetRemaining(), 5u);

    // Rules come back whole, DYNAMIC_TIME_NONE among them; dates with their zone words.
    MemoryDataStream exact;
    exact.WriteDynamicTime(DynamicTime(DYNAMIC_TIME_NONE, 4));
    exact.WriteDateTime(DateTime(2024, 1, 2, 3, 4, 5, 6, -540, 7));
    const MemoryDataStream copy(exact.GetData(), exact.GetSize());
    MemoryDataStream reader(copy);
    DynamicTime read(DYNAMIC_TIME_TODAY, 0);
    EXPECT_EQ(reader.ReadDynamicTime(read), 0);
    EXPECT_EQ(read.GetDynamicTime(), DYNAMIC_TIME_NONE);
    EXPECT_EQ(read.GetDynamicDayOffset(), 4);
    EXPECT_EQ(reader.ReadDateTime(date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(2024, 1, 2, 3, 4, 5, 6)));
    EXPECT_EQ(date.GetZoneMinutes(), -540);
    EXPECT_EQ(date.GetZoneSpare(), 7);
}

// Every transition between the four forms, on the heap and in an arena. The sanitizer
// build is what judges these: a leak, a double free or a free of arena memory fails it.
TEST_F(ZelvorTimeInTokyo, EveryTransitionOwnsItsRecord) {
    const std::vector<std::function<ZelvorTime(ZelvorBase::Buffer*)>> forms = {
        [](ZelvorBase::Buffer* b) { return ZelvorTime(b); },
        [](ZelvorBase::Buffer* b) {
            return ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_UTC, true, b);
        },
        [](ZelvorBase::Buffer* b) {
            return ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_LOCAL, true, b);
        },
        [](ZelvorBase::Buffer* b) {
            ZelvorTime t(b);
            t.PutDynamicTime(DYNAMIC_TIME_THIS_WEEK);
            return t;
        },
    };
    ZelvorBase::Buffer arena;
    for (ZelvorBase::Buffer* home : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
        for (size_t from = 0; from < forms.size(); ++from) {
            for (size_t to = 0; to < forms.size(); ++to) {
                const ZelvorTime source = forms[to](nullptr);
                ZelvorTime target(forms[from](nullptr), home);
                target = source;
                EXPECT_TRUE(target == source) << from << " to " << to;
                // The copy shares nothing: changing it leaves the source alone.
                target.PutYear(1990, true);
                target.PutDynamicDayOffset(5);
                int offset = 0;
                if (source.GetDynamicDayOffset(offset) == 0) {
                    EXPECT_EQ(offset, 0) << from << " to " << to;
                } else if (source.GetRealMode() != TIME_MODE_EMPTY) {
                    EXPECT_EQ(source.GetYear(true, true), 2024) << from << " to " << to;
                }
                auto block = Saved(source);
                ZelvorTime loaded(forms[from](nullptr), home);
                loaded.LoadObj(44, block.data());
                MemoryDataStream stream;
                source.SaveToStream(&stream);
                ZelvorTime streamed(forms[from](nullptr), home);
                streamed.LoadFromStream(&stream);
                ZelvorTime changed(forms[from](nullptr), home);
                changed.PutDynamicTime(DYNAMIC_TIME_TODAY);
                changed.SetToCurrentTime();
                changed.PutDynamicTime(DYNAMIC_TIME_NOW);
                changed.Reset();
                changed.Reset();
            }
        }
    }
}

TEST_F(ZelvorTimeInTokyo, RefusedArenaLeavesAnEmptyValue) {
    ZelvorTest::RefusingBuffer refusing(1);
    ZelvorTime value(&refusing);
    EXPECT_THROW(value.PutDynamicTime(DYNAMIC_TIME_TODAY), std::bad_alloc);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_EMPTY);
    EXPECT_THROW(value = ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_UTC, true), std::bad_alloc);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_EMPTY);
    EXPECT_THROW(ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_UTC, true, &refusing), std::bad_alloc);
}

}  // namespace
