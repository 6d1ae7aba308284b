#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <functional>
#include <vector>

#include <ZelvorDataType/ZelvorTime.h>
#include <ZelvorSerialization/MemoryDataStream.h>

#include "RelativeSupport.h"
#include "support/TestDoubles.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::Dynamic;
using ZelvorRelativeTest::Text;
using ZelvorRelativeTest::Ymd;
using ZelvorSerialization::MemoryDataStream;
// The eleven words of the saved record.
using Block = std::array<std::int32_t, 11>;

// Tokyo is nine hours east of UTC all year, which keeps expected fields simple.
class InTokyo : public testing::Test {
  protected:
    void SetUp() override { ZelvorRelativeTest::PinZone("Asia/Tokyo"); }
};

// The stored fields of a static value.
DateTime Raw(const ZelvorTime& t) {
    return DateTime(t.GetYear(true, true), t.GetMonth(true, true), t.GetDay(true, true),
                    t.GetHour(true, true), t.GetMinutes(true, true), t.GetSeconds(true),
                    t.GetMilliSeconds());
}

Block Saved(const ZelvorTime& value) {
    Block block{};
    EXPECT_EQ(value.SaveObj(44, block.data()), 0);
    return block;
}

TEST_F(InTokyo, StaticConstructionPicksTheZoneOfTheRecord) {
    const DateTime date(2024, 3, 14, 15, 30, 45, 123);
    const struct {
        TIME_MODE mode;
        bool isUTC;
        TIME_MODE realMode;
        Ymd record;
    } cases[] = {
        // clang-format off
        {TIME_MODE_UTC, true, TIME_MODE_UTC, {2024, 3, 14, 15, 30, 45, 123}},
        {TIME_MODE_UTC, false, TIME_MODE_UTC, {2024, 3, 14, 6, 30, 45, 123}},
        {TIME_MODE_LOCAL, true, TIME_MODE_LOCAL, {2024, 3, 15, 0, 30, 45, 123}},
        {TIME_MODE_LOCAL, false, TIME_MODE_LOCAL, {2024, 3, 14, 15, 30, 45, 123}},
        {TIME_MODE_DYNAMIC, false, TIME_MODE_UTC, {2024, 3, 14, 6, 30, 45, 123}},
        {TIME_MODE_EMPTY, true, TIME_MODE_UTC, {2024, 3, 14, 15, 30, 45, 123}},
        // clang-format on
    };
    ZelvorBase::Buffer arena;
    for (const auto& c : cases) {
        for (ZelvorBase::Buffer* home : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
            const ZelvorTime value(date, c.mode, c.isUTC, home);
            EXPECT_EQ(value.GetRealMode(), c.realMode) << c.mode << c.isUTC;
            EXPECT_EQ(Text(Raw(value)), Text(c.record.Make())) << c.mode << c.isUTC;
        }
    }
    // From a serial date the milliseconds go on last; out of range they are refused.
    EXPECT_EQ(Text(Raw(ZelvorTime(45365.5, 250, TIME_MODE_LOCAL, false))),
              Text(DateTime(2024, 3, 14, 12, 0, 0, 250)));
    EXPECT_EQ(Text(Raw(ZelvorTime(45365.5, 1000, TIME_MODE_LOCAL, true))),
              Text(DateTime(2024, 3, 14, 21)));
}

TEST_F(InTokyo, ModesAndConversion) {
    const ZelvorTime today = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(ZelvorTime().GetMode() * 10 + today.GetMode(), 11);
    DateTime date(2001, 2, 3);
    EXPECT_EQ(ZelvorTime().ToDateTime(true, date), 1);
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).ToDateTime(true, date), E_TIME_UNRESOLVED);
    EXPECT_EQ(Text(date), Text(DateTime(2001, 2, 3)));
    // A dynamic value resolves against the date given, to UTC, then converts back.
    for (bool wantUTC : {true, false}) {
        date = DateTime(2024, 3, 14, 15, 30);
        EXPECT_EQ(today.ToDateTime(wantUTC, date), 0);
        EXPECT_EQ(Text(date), Text(wantUTC ? DateTime(2024, 3, 13, 15) : DateTime(2024, 3, 14)));
    }
    ZelvorTime value(DateTime(2024, 3, 14, 20), TIME_MODE_UTC, true);
    EXPECT_EQ(value.SetMode(TIME_MODE_LOCAL), 0);
    EXPECT_EQ(value.SetMode(TIME_MODE_LOCAL), 0);  // converts once
    EXPECT_EQ(Text(Raw(value)), Text(DateTime(2024, 3, 15, 5)));
    EXPECT_EQ(value.SetMode(TIME_MODE_DYNAMIC), E_TIME_REFUSED);
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(rule.SetMode(TIME_MODE_UTC), 0);
    EXPECT_EQ(rule.GetRealMode(), TIME_MODE_DYNAMIC);
    EXPECT_EQ(ZelvorTime().SetMode(TIME_MODE_UTC), E_TIME_EMPTY);
}

TEST_F(InTokyo, FieldsByZoneAndRawness) {
    // 2023-12-31 20:00:07.009 UTC is already 2024-01-01 05:00 in Tokyo.
    const ZelvorTime utc(DateTime(2023, 12, 31, 20, 0, 7, 9), TIME_MODE_UTC, true);
    ZelvorTime local(utc);
    local.SetMode(TIME_MODE_LOCAL);
    const ZelvorTime rule = Dynamic(DYNAMIC_TIME_EARLIEST);
    const ZelvorTime empty;
    const struct {
        const char* name;
        int got, expected;
    } cases[] = {
        {"utc raw", utc.GetYear(false, true), 2023},
        {"utc read locally", utc.GetYear(false, false), 2024},
        {"local raw ignores the zone", local.GetYear(true, true), 2024},
        {"local read in utc", local.GetDay(true, false), 31},
        {"local seconds", local.GetSeconds(false), 7},
        {"unset weekday of a rule", rule.GetDayOfWeek(false, true), -1},
        {"unresolved rule reads 1899-12-30", rule.GetMonth(true, false), 12},
        {"no milliseconds in a rule", rule.GetMilliSeconds(), 0},
        {"empty year", empty.GetYear(true, false), -2146944584},
        {"empty seconds", empty.GetSeconds(true), E_TIME_EMPTY},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.got, c.expected) << c.name;
    }

    const DateTime start(2024, 3, 14, 6, 30);  // UTC; 15:30 in Tokyo
    const struct {
        const char* name;
        TIME_MODE mode;
        std::function<int(ZelvorTime&)> put;
        int result;
        Ymd record;
    } puts[] = {
        // clang-format off
        {"hour refused", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutHour(25, true); }, 0, {2024, 3, 14, 6, 30}},
        {"local hour, utc record", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutHour(5, false); }, 0,
         {2024, 3, 13, 20, 30}},
        {"utc hour, local record", TIME_MODE_LOCAL, [](ZelvorTime& t) { return t.PutHour(23, true); }, 0,
         {2024, 3, 15, 8, 30}},
        {"refused day written back", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutDay(0, false); }, 0,
         {2024, 3, 14, 6, 30}},
        {"week refused", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutWeek(6, true); }, E_TIME_REFUSED,
         {2024, 3, 14, 6, 30}},
        {"local week", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutWeek(2, false); }, 0, {2024, 3, 7, 6, 30}},
        {"seconds without zone", TIME_MODE_LOCAL, [](ZelvorTime& t) { return t.PutSeconds(59); }, 0,
         {2024, 3, 14, 15, 30, 59}},
        {"milliseconds", TIME_MODE_UTC, [](ZelvorTime& t) { return t.PutMilliSeconds(999); }, 0,
         {2024, 3, 14, 6, 30, 0, 999}},
        // clang-format on
    };
    for (const auto& c : puts) {
        ZelvorTime value(start, c.mode, true);
        EXPECT_EQ(c.put(value), c.result) << c.name;
        EXPECT_EQ(Text(Raw(value)), Text(c.record.Make())) << c.name;
    }
    // Sunday of the week of Wednesday May 1st is in April: refused, the flag notwithstanding.
    ZelvorTime may(DateTime(2024, 5, 1), TIME_MODE_UTC, true);
    EXPECT_EQ(may.PutDayOfWeek(0, true, true), E_TIME_REFUSED);
    EXPECT_EQ(Text(Raw(may)), Text(DateTime(2024, 5, 1)));
    EXPECT_EQ(ZelvorTime().PutHour(1, true), E_TIME_EMPTY);
}

TEST_F(InTokyo, DynamicMembers) {
    ZelvorTime value(DateTime(2024, 1, 1), TIME_MODE_UTC, true);
    int kind = 0, days = 0;
    short months = 0;
    EXPECT_EQ(value.PutDynamicTime(DYNAMIC_TIME_NONE) + value.GetDynamicTime(kind), 0);
    EXPECT_EQ(kind, DYNAMIC_TIME_NONE);
    EXPECT_EQ(value.PutDynamicDayOffset(3), E_TIME_NOT_DYNAMIC);
    EXPECT_EQ(ZelvorTime().PutDynamicDayOffset(3), E_TIME_EMPTY);
    value.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH);
    value.PutDay(-1, true);
    value.PutDynamicMonthOffset(-2);
    value.PutDynamicDayOffset(7);
    // A new kind on a dynamic value keeps every other field.
    value.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY);
    value.GetDynamicMonthOffset(months);
    value.GetDynamicDayOffset(days);
    value.GetDynamicTime(kind);
    EXPECT_EQ(std::vector<int>({kind, months, days, value.GetDay(true, true)}),
              std::vector<int>({0x105, -2, 7, -1}));
}

TEST_F(InTokyo, DerivedDates) {
    DateTime out(2000, 1, 1);
    EXPECT_EQ(Dynamic(DYNAMIC_TIME_EARLIEST).GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, out),
              E_TIME_UNRESOLVED);
    const ZelvorTime local(DateTime(2024, 3, 1, 10), TIME_MODE_LOCAL, false);
    EXPECT_EQ(local.GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, out), 0);
    EXPECT_EQ(Text(out), Text(DateTime(2024, 2, 29, 10)));
    // 1710430245 is 2024-03-14 15:30:45 UTC; its fields are the rule's local reference.
    double local0 = 0, utc = 0, unresolved = 0;
    Dynamic(DYNAMIC_TIME_TODAY).TolocalDATEWithFixedTime(local0, false, 1710430245);
    Dynamic(DYNAMIC_TIME_TODAY).TolocalDATEWithFixedTime(utc, true, 1710430245);
    Dynamic(DYNAMIC_TIME_EARLIEST).TolocalDATEWithFixedTime(unresolved, true, 1710430245);
    EXPECT_EQ(std::vector<double>({local0, utc, unresolved}),
              std::vector<double>({45365.0, 45364.625, DateTime(1710430245L, 0).ToDATE()}));
    EXPECT_EQ(ZelvorTime().TolocalDATE(utc, false), E_TIME_EMPTY);
}

TEST_F(InTokyo, OrderAcrossForms) {
    const ZelvorTime empty;
    const ZelvorTime utc(DateTime(2024, 3, 14, 6), TIME_MODE_UTC, true);
    const ZelvorTime local(DateTime(2024, 3, 14, 15), TIME_MODE_LOCAL, false);  // same instant
    const ZelvorTime later(DateTime(2024, 3, 14, 6, 0, 0, 1), TIME_MODE_UTC, true);
    const ZelvorTime latest = Dynamic(DYNAMIC_TIME_LATEST);
    const ZelvorTime earliest = Dynamic(DYNAMIC_TIME_EARLIEST);
    const ZelvorTime flaggedLatest = Dynamic(DYNAMIC_TIME_LATEST | DYNAMIC_TIME_RELATIVE_HOUR);
    const ZelvorTime epoch(DateTime(0.0), TIME_MODE_UTC, true);
    ZelvorTime tomorrow = Dynamic(DYNAMIC_TIME_TODAY);
    tomorrow.PutDay(1, true);
    ZelvorTime yesterday = Dynamic(DYNAMIC_TIME_TODAY);
    yesterday.PutDay(-1, true);
    const ZelvorTime thisHour = Dynamic(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_RELATIVE_HOUR);
    const struct {
        const char* name;
        const ZelvorTime &left, &right;
        bool equal, less, greater;
    } cases[] = {
        // clang-format off
        {"empty, empty", empty, empty, true, false, false},
        {"empty before static", empty, utc, false, true, false},
        {"static after empty", utc, empty, false, false, true},
        {"earliest before empty", earliest, empty, false, true, false},
        {"empty before latest", empty, latest, false, true, false},
        {"utc, itself", utc, utc, true, false, false},
        {"utc and local of one instant", utc, local, true, false, false},
        {"local before later utc", local, later, false, true, false},
        {"latest after static", latest, utc, false, false, true},
        {"earliest before static", earliest, utc, false, true, false},
        {"latest, itself", latest, latest, true, false, false},
        {"earliest, itself", earliest, earliest, true, false, false},
        {"earliest before latest", earliest, latest, false, true, false},
        {"latest after earliest", latest, earliest, false, false, true},
        {"latest after empty", latest, empty, false, false, true},
        {"same kind, other days", tomorrow, yesterday, true, false, false},
        {"flagged latest is 1899-12-30", flaggedLatest, epoch, true, false, false},
        {"flagged latest before 2024", flaggedLatest, utc, false, true, false},
        {"flags make another kind", thisHour, tomorrow, false, true, false},
        // clang-format on
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.left == c.right, c.equal) << c.name;
        EXPECT_EQ(c.left < c.right, c.less) << c.name;
        EXPECT_EQ(c.left > c.right, c.greater) << c.name;
    }
}

TEST_F(InTokyo, SomeValuesNeverExpire) {
    const ZelvorTime marker(DateTime(2001, 1, 1), TIME_MODE_LOCAL, false);
    for (const ZelvorTime& value :
         {ZelvorTime(), marker, Dynamic(DYNAMIC_TIME_LATEST), Dynamic(DYNAMIC_TIME_EARLIEST),
          Dynamic(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_BUSINESS_DAY), Dynamic(DYNAMIC_TIME(15))}) {
        ZelvorTime out(marker);
        EXPECT_EQ(value.GetExpiration(out), 1) << value.GetRealMode();
        EXPECT_EQ(Saved(out), Saved(marker));
    }
}

TEST_F(InTokyo, SavedRecordLayout) {
    std::array<std::uint8_t, 48> block;
    block.fill(0xAA);
    const ZelvorTime local(DateTime(2024, 3, 14, 15, 30, 45, 123), TIME_MODE_LOCAL, false);
    EXPECT_EQ(local.SaveObj(43, block.data()), -1);
    EXPECT_EQ(block[0], 0xAA);
    EXPECT_EQ(local.SaveObj(48, block.data()) + block[44], 0xAA);

    const ZelvorTime rule = Dynamic(DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY, -9, -2);
    const struct {
        const ZelvorTime& value;
        Block words;
    } cases[] = {
        {local, {-100, 2024, 3, 14, 15, 30, 45, 123, 3, 4, 1}},
        {ZelvorTime(), {-101, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        // Bytes 05 01 FE FF: the kind low, the month offset high.
        {rule, {static_cast<std::int32_t>(0xFFFE0105u), 0, 0, 0, 0, 0, 0, -9, 0, -1, 1}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Saved(c.value), c.words);
    }
}

TEST_F(InTokyo, LoadingTakesTheFormOfTheRecord) {
    const struct {
        const char* name;
        Block block;
        TIME_MODE mode;
        Ymd raw;  // static results only
    } cases[] = {
        // clang-format off
        {"clamped", {-100, 2024, 2, 30, 99, 0, 0, 0, 0, 0, 1}, TIME_MODE_LOCAL, {2024, 2, 29, 23}},
        {"mode word 2 is utc", {-100, 2024, 1, 1, 0, 0, 0, 0, 0, 0, 2}, TIME_MODE_UTC, {2024, 1, 1}},
        {"mode word -101 is utc", {-100, 2024, 1, 1, 0, 0, 0, 0, 0, 0, -101}, TIME_MODE_UTC, {2024, 1, 1}},
        {"empty", {-101, 5, 5, 5}, TIME_MODE_EMPTY, {0, 1, 1}},
        {"any other tag is a rule", {-102}, TIME_MODE_DYNAMIC, {0, 1, 1}},
        // clang-format on
    };
    ZelvorBase::Buffer arena;
    const ZelvorTime starts[] = {ZelvorTime(),
                                 ZelvorTime(DateTime(1999, 9, 9), TIME_MODE_UTC, true),
                                 Dynamic(DYNAMIC_TIME_TODAY)};
    for (const auto& c : cases) {
        for (const ZelvorTime& start : starts) {
            for (ZelvorBase::Buffer* home : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
                ZelvorTime value(start, home);
                Block block = c.block;
                EXPECT_EQ(value.LoadObj(43, block.data()), -1);
                EXPECT_EQ(value.GetRealMode(), start.GetRealMode());
                EXPECT_EQ(value.LoadObj(44, block.data()), 0) << c.name;
                EXPECT_EQ(value.GetRealMode(), c.mode) << c.name;
                if (c.mode == TIME_MODE_UTC || c.mode == TIME_MODE_LOCAL) {
                    EXPECT_EQ(Text(Raw(value)), Text(c.raw.Make())) << c.name;
                }
            }
        }
    }
}

TEST_F(InTokyo, SavedFormsRoundTrip) {
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_RELATIVE_MINUTE);
    rule.PutYear(-1, true);
    rule.PutWeek(-3, true);
    rule.PutDay(INT_MIN, true);
    rule.PutDayOfWeek(6, true, false);
    rule.PutHour(INT_MAX, true);
    rule.PutSeconds(61);
    rule.PutDynamicDayOffset(-100000);
    rule.PutDynamicMonthOffset(-32768);
    const ZelvorTime values[] = {
        ZelvorTime(), rule, ZelvorTime(DateTime(2024, 2, 29, 23, 59, 58, 999), TIME_MODE_UTC, true),
        ZelvorTime(DateTime(65535, 12, 31, 1), TIME_MODE_LOCAL, false)};
    // The saved record holds every field of every form, so equal records mean equal values.
    for (const ZelvorTime& original : values) {
        for (const ZelvorTime& start : values) {
            ZelvorTime fromRecord(start);
            Block block = Saved(original);
            ASSERT_EQ(fromRecord.LoadObj(44, block.data()), 0);
            EXPECT_EQ(Saved(fromRecord), Saved(original));
            MemoryDataStream stream;
            EXPECT_EQ(original.SaveToStream(&stream), 0);
            ZelvorTime fromStream(start);
            EXPECT_EQ(fromStream.LoadFromStream(&stream), 0);
            EXPECT_EQ(stream.GetRemaining(), 0u);
            EXPECT_EQ(Saved(fromStream), Saved(original));
        }
    }
}

TEST_F(InTokyo, StreamEdges) {
    // An unknown mode changes nothing and reads no further.
    MemoryDataStream unknown;
    unknown.WriteInt(5);
    unknown.WriteInt(77);
    ZelvorTime rule = Dynamic(DYNAMIC_TIME_TODAY);
    EXPECT_EQ(rule.LoadFromStream(&unknown), 0);
    EXPECT_EQ(rule.GetRealMode(), TIME_MODE_DYNAMIC);
    EXPECT_EQ(unknown.GetRemaining(), 5u);
    // Nothing to read is mode 0: a UTC value, its date what it was.
    MemoryDataStream nothing;
    ZelvorTime value;
    EXPECT_EQ(value.LoadFromStream(&nothing), 0);
    EXPECT_EQ(value.GetRealMode(), TIME_MODE_UTC);
    EXPECT_EQ(Text(Raw(value)), Text(DateTime(0.0)));

    // A read of the wrong type stores and consumes nothing; a rule comes back whole,
    // DYNAMIC_TIME_NONE among the kinds, a date with its zone words.
    MemoryDataStream exact;
    exact.WriteDynamicTime(DynamicTime(DYNAMIC_TIME_NONE, 4));
    exact.WriteDateTime(DateTime(2024, 1, 2, 3, 4, 5, 6, -540, 7));
    MemoryDataStream reader(exact.GetData(), exact.GetSize());
    DateTime date(2000, 1, 1);
    DynamicTime read(DYNAMIC_TIME_TODAY, 0);
    EXPECT_NE(reader.ReadDateTime(date), 0);
    EXPECT_EQ(reader.ReadDynamicTime(read) + reader.ReadDateTime(date), 0);
    EXPECT_EQ(read.GetDynamicTime() * 10 + read.GetDynamicDayOffset(), -996);
    EXPECT_EQ(Text(date), Text(DateTime(2024, 1, 2, 3, 4, 5, 6)));
    EXPECT_EQ(date.GetZoneMinutes() * 10 + date.GetZoneSpare(), -5393);
    EXPECT_EQ(reader.ReadDateTime(date), 1);  // past the end
}

// Assignment between every two forms, on the heap and in an arena, is a deep copy;
// Reset empties any form, twice over, and the clock fills an empty value. The fault
// suite takes every form to every other by assignment, record and stream, each
// allocation failing in turn and the heap blocks counted; the sanitizer build judges
// double frees and frees of arena memory here.
TEST_F(InTokyo, AssignmentsCopyDeeplyAndResetEmpties) {
    const ZelvorTime forms[] = {ZelvorTime(), ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_UTC, true),
                                ZelvorTime(DateTime(2024, 1, 1), TIME_MODE_LOCAL, true),
                                Dynamic(DYNAMIC_TIME_THIS_WEEK)};
    ZelvorBase::Buffer arena;
    for (ZelvorBase::Buffer* home : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
        for (const ZelvorTime& from : forms) {
            for (const ZelvorTime& source : forms) {
                const Block before = Saved(source);
                ZelvorTime target(from, home);
                target = source;
                target.PutYear(1990, true);
                target.PutDynamicDayOffset(5);
                EXPECT_EQ(Saved(source), before);
                target.Reset();
                target.Reset();
                EXPECT_EQ(target.GetRealMode(), TIME_MODE_EMPTY);
                target.SetToCurrentTime();
                EXPECT_EQ(target.GetRealMode(), TIME_MODE_UTC);
            }
        }
    }
}

}  // namespace
