// The code shown in README.md, compiled and run here so that it can't rot. Each block
// between "// [readme]" and "// [/readme]" must stand, line for line, in a ```cpp block
// of the README (ReadmeTest checks it); the EXPECTs around the blocks check that they
// do what the README says.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

using namespace ZelvorDataType;

class ReadmeSnippet : public testing::Test {
  protected:
    void SetUp() override {
        setenv("TZ", "America/New_York", 1);
        tzset();
    }
};

TEST_F(ReadmeSnippet, ByteBlocks) {
    // [readme]
    std::unique_ptr<Binary> block(CreateBinary("\xCA\xFEhello", 7));
    block->ZapHead(2);  // the view is now "hello", nothing was copied
    block->UnZap();     // and the whole block is back

    ZelvorBase::Buffer arena;  // or in an arena: freed with it, never deleted
    Binary* scratch = CreateBinary(size_t{64}, &arena);
    // [/readme]
    EXPECT_EQ(block->GetSize(), 7u);
    EXPECT_EQ(scratch->GetSize(), 64u);
}

TEST_F(ReadmeSnippet, CalendarTime) {
    // [readme]
    const DateTime meeting(2024, 3, 8, 16, 30);  // Friday, local time
    const DateTime utc = meeting.ToUTCTime();    // 2024-03-08 21:30:00.000 in New York
    const DateTime due = meeting.Add(TimeSpan(2, 0, 0, 0, 0));  // two working days on
    std::string text = due.ToString().c_str();                  // "2024-03-12 16:30:00.000"
    const double serial = meeting.ToDATE();                     // days since 1899-12-30, 45359.6875
    // [/readme]
    EXPECT_EQ(std::string(utc.ToString().c_str()), "2024-03-08 21:30:00.000");
    EXPECT_EQ(text, "2024-03-12 16:30:00.000");
    EXPECT_DOUBLE_EQ(serial, 45359.6875);
}

TEST_F(ReadmeSnippet, ExactDecimals) {
    // [readme]
    const BigDecimal price("19.99");
    BigDecimalHandle total = price * BigDecimal(3);                       // "59.97", exact
    BigDecimalHandle third = BigDecimal("1").Divide(BigDecimal("3"), 4);  // "0.3333"
    std::wstring german = total->ToWString(0x407).c_str();                // L"59,97"
    // [/readme]
    EXPECT_STREQ(total->ToString().c_str(), "59.97");
    EXPECT_STREQ(third->ToString().c_str(), "0.3333");
    EXPECT_EQ(german, L"59,97");
}

TEST_F(ReadmeSnippet, RelativeTimes) {
    // [readme]
    DynamicTime quarterEnd(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_BUSINESS_DAY, 0);
    quarterEnd.PutDay(-1);                                      // its last business day
    DateTime when(2024, 2, 14, 15, 30);                         // the reference, local time
    const int failed = quarterEnd.ToDateTime(when);             // 0; when is now in UTC
    std::string local = when.ToLocalTime().ToString().c_str();  // "2024-03-29 00:00:00.000"
    // [/readme]
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(local, "2024-03-29 00:00:00.000");
}

TEST_F(ReadmeSnippet, Schedules) {
    // [readme]
    // Every weekday (Monday to Friday: bits 1 to 5 of the day-of-week mask) at 09:00.
    TimeSeries* weekdays = CreateTimeSeries(
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_FIXED, 0x3E, RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
        RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
    DateTime runs[5] = {DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0)};
    const unsigned found = weekdays->GetNextNTimePoints(DateTime(2024, 3, 8, 15), 5, runs);
    // found is 5; runs[0] is Monday 2024-03-11 13:00 UTC (09:00 in New York)
    weekdays->Delete();
    // [/readme]
    EXPECT_EQ(found, 5u);
    EXPECT_STREQ(runs[0].ToString().c_str(), "2024-03-11 13:00:00.000");
}

TEST_F(ReadmeSnippet, Variants) {
    // [readme]
    const Variant count(42);
    const Variant ratio(42.0);
    const bool same = count == ratio;  // true: equal as numbers
    Variant label(L"42 apples");
    const int leading = static_cast<int>(label);                           // 42, read by wcstol
    std::string printed = Variant(BigDecimal("1.50")).ToString().c_str();  // "1.50"
    // [/readme]
    EXPECT_TRUE(same);
    EXPECT_EQ(leading, 42);
    EXPECT_EQ(printed, "1.50");
}

}  // namespace
