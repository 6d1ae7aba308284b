#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "CalendarSupport.h"

namespace {

using CalendarTest::Text;
using CalendarTest::Words;
using ZelvorDataType::DateTime;

// Years of one and of five digits print in the tables of the other suites.
TEST(Text, Formats) {
    const DateTime value(2024, 3, 5, 7, 8, 9, 12);
    EXPECT_EQ(Text(value), "2024-03-05 07:08:09.012");
    EXPECT_EQ(std::wstring(value.ToWString().c_str()), L"2024-03-05 07:08:09.012");
    EXPECT_STREQ(value.ToDateString().c_str(), "3/5/2024");
    EXPECT_STREQ(DateTime(12345, 11, 30).ToDateString().c_str(), "11/30/12345");
}

TEST(Text, ReadsBack) {
    // What FromString reads of `text`, the value it leaves and the zone words it keeps.
    const auto expect = [](const char* text, int read, const std::string& after) {
        SCOPED_TRACE(text == nullptr ? "null" : text);
        DateTime value(2001, 2, 3, 4, 5, 6, 7, 60);
        EXPECT_EQ(value.FromString(text), read);
        EXPECT_EQ(Text(value), after);
        EXPECT_EQ(value.GetZoneMinutes(), read == 0 ? 60 : 0);
    };
    for (const auto& c : ZelvorTest::ReadCases("calendar/ReadsBack.cases")) {
        SCOPED_TRACE(c.where);
        expect(c[0].c_str(), std::stoi(c[1]), c[2]);
    }
    // Blanks and signs are taken as strtoul takes them.
    expect("  2024-+3-05", 12, "2024-03-05 00:00:00.000");
    expect(nullptr, 0, "2001-02-03 04:05:06.007");
}

TEST(SavedForm, WritesElevenWords) {
    DateTime value(65535, 5, 6, 7, 8, 9, 10);
    EXPECT_EQ(Words(value, 1),
              (std::array<int32_t, 11>{-100, 65535, 5, 6, 7, 8, 9, 10, -1, -1, 1}));
    value.GetDayOfWeek();
    EXPECT_EQ(Words(value)[8] * 10 + Words(value)[9], 21);  // Monday in week 2

    unsigned char block[44];
    std::memset(block, 0xAB, sizeof block);
    EXPECT_EQ(value.SaveObj(43, block, 0), -1);
    EXPECT_EQ(block[0], 0xAB);
    EXPECT_EQ(DateTime::GetSaveObjSize(), 44);

    // Through a misaligned block and back, strictly: all nine fields, caches as saved.
    unsigned char shifted[45];
    ASSERT_EQ(value.SaveObj(44, shifted + 1, 0), 0);
    DateTime loaded(0.0);
    EXPECT_EQ(loaded.LoadObj(44, shifted + 1, false), 0);
    EXPECT_EQ(Text(loaded), Text(value));
    EXPECT_EQ(Words(loaded), Words(value));
}

TEST(SavedForm, LoadsStrictlyOrLeniently) {
    const std::array<int32_t, 11> good = {-100, 2024, 4, 10, 7, 8, 9, 10, 2, 3, 0};
    const struct {
        std::vector<std::pair<int, int32_t>> changes;  // word index, new value
        bool lenient;
        int result;
        const char* text;  // nullptr: not to be used as a date
    } cases[] = {
        {{}, false, 0, "2024-04-10 07:08:09.010"},
        {{{10, 2}}, false, -1, nullptr},
        {{{10, 2}}, true, 0, "2024-04-10 07:08:09.010"},
        {{{0, 7}}, false, -1, nullptr},
        {{{0, 7}}, true, 0, "2024-04-10 07:08:09.010"},
        {{{2, 13}}, false, -1, nullptr},
        {{{2, 13}}, true, 0, "2024-12-10 07:08:09.010"},
        {{{3, 31}}, false, 0, "2024-04-30 07:08:09.010"},
        {{{4, 24}, {5, 0}, {6, 0}}, false, 0, "2024-04-11 00:00:00.010"},
        {{{1, 0x12345}}, false, 0, "9029-04-10 07:08:09.010"},  // low 16 bits of the year
        {{{0, -101}, {2, 99}}, false, 0, "1899-12-30 00:00:00.000"},
    };
    for (const auto& c : cases) {
        std::array<int32_t, 11> words = good;
        for (const auto& [index, word] : c.changes) {
            words[index] = word;
        }
        DateTime value(1999, 1, 2, 3, 4, 5, 6, 45);
        EXPECT_EQ(value.LoadObj(44, words.data(), c.lenient), c.result) << c.changes.size();
        if (c.text != nullptr) {
            EXPECT_EQ(Text(value), c.text);
        }
    }
}

// What a refusal leaves, word by word, and what the empty form keeps.
TEST(SavedForm, PartialLoadsAndEmptyForm) {
    std::array<int32_t, 11> words = {-100, 2024, 0, 10, 24, 0, 0, 10, 2, 3, 0};
    DateTime value(1999, 1, 2, 3, 4, 5, 6, 45);
    EXPECT_EQ(value.LoadObj(44, words.data(), false), -1);  // month 0 refused
    EXPECT_EQ(value.GetHour(), 0);                          // the hour-24 step already ran
    EXPECT_EQ(value.GetMonth(), 0);
    words[0] = 5;
    DateTime marked(1999, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(marked.LoadObj(44, words.data(), false), -1);  // only day and weekday taken
    EXPECT_EQ(Text(marked), "1999-01-10 03:04:05.006");
    EXPECT_EQ(marked.LoadObj(43, words.data(), true), -1);

    words[0] = -101;
    EXPECT_EQ(value.LoadObj(44, words.data(), false), 0);
    EXPECT_EQ(value.GetZoneMinutes(), 45);
    EXPECT_EQ(Words(value)[8] * 10 + Words(value)[9], -11);

    // Week and day of week are taken as saved, unchecked.
    words = {-100, 2024, 4, 10, 7, 8, 9, 10, 5, 0, 0};
    EXPECT_EQ(value.LoadObj(44, words.data(), false), 0);
    EXPECT_EQ(value.GetWeek() * 10 + value.GetDayOfWeek(), 50);
}

}  // namespace
