// The text of a DateTime, reading it back, and the 44-byte saved form.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

namespace {

constexpr int32_t kSavedMarker = -100;
constexpr int32_t kEmptyMarker = -101;
constexpr unsigned int kSavedSize = 44;
constexpr int kSavedWords = 11;

// Writes `value` in decimal, zero-padded to at least `width` digits, as "%0*u" does.
// Fields go through as the unsigned reading of their int value, so a field outside its
// range prints as printf would print it.
char* PutUnsigned(char* out, uint32_t value, int width) {
    char digits[10];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    for (int pad = count; pad < width; ++pad) {
        *out++ = '0';
    }
    while (count > 0) {
        *out++ = digits[--count];
    }
    return out;
}

uint32_t AsUnsigned(int field) {
    return static_cast<uint32_t>(field);
}

// One number of the text, read as strtoul reads it: leading blanks and a sign taken, no
// digits at all reading as 0 without moving on. strtoul stops at the terminator.
uint32_t ReadNumber(const char*& cursor) {
    char* end = nullptr;
    const unsigned long value = std::strtoul(cursor, &end, 10);
    cursor = end;
    // The callers judge the low 32 bits.
    return static_cast<uint32_t>(value);
}

}  // namespace

ZelvorBase::ReturnString DateTime::ToString() const {
    char text[96];
    char* out = PutUnsigned(text, mYear, 4);
    *out++ = '-';
    out = PutUnsigned(out, AsUnsigned(mMonth), 2);
    *out++ = '-';
    out = PutUnsigned(out, AsUnsigned(mDay), 2);
    *out++ = ' ';
    out = PutUnsigned(out, AsUnsigned(mHour), 2);
    *out++ = ':';
    out = PutUnsigned(out, AsUnsigned(mMinute), 2);
    *out++ = ':';
    out = PutUnsigned(out, AsUnsigned(mSecond), 2);
    *out++ = '.';
    out = PutUnsigned(out, AsUnsigned(mMillisecond), 3);
    *out = '\0';
    return ZelvorBase::ReturnString(text);
}

ZelvorBase::ReturnWString DateTime::ToWString() const {
    return ZelvorBase::ASCIIToWideChar(ToString().c_str(), false);
}

ZelvorBase::ReturnString DateTime::ToDateString() const {
    char text[40];
    char* out = PutUnsigned(text, AsUnsigned(mMonth), 0);
    *out++ = '/';
    out = PutUnsigned(out, AsUnsigned(mDay), 0);
    *out++ = '/';
    out = PutUnsigned(out, mYear, 0);
    *out = '\0';
    return ZelvorBase::ReturnString(text);
}

int DateTime::FromString(const char* text) noexcept {
    if (text == nullptr) {
        return 0;
    }
    // All work happens on a scratch value, so a failure leaves this one alone.
    DateTime scratch(0.0);
    const char* cursor = text;

    const uint32_t year = ReadNumber(cursor);
    if (static_cast<int32_t>(year) <= 0) {
        return 0;
    }
    scratch.mYear = static_cast<unsigned short>(year);
    if (*cursor++ != '-') {
        return 0;
    }

    const uint32_t month = ReadNumber(cursor);
    if (month < 1 || month > 12) {
        return 0;
    }
    scratch.mMonth = static_cast<short>(month);
    if (month == 2) {
        // The scratch day, 30, must fit February before the day is put.
        scratch.AdjustDay();
    }
    if (*cursor++ != '-') {
        return 0;
    }

    const int32_t day = static_cast<int32_t>(ReadNumber(cursor));
    if (day == 0 || !scratch.PutDay(day)) {
        return 0;
    }

    if (*cursor == 'T' || *cursor == ' ') {
        ++cursor;
        const uint32_t hour = ReadNumber(cursor);
        if (hour > 23 || *cursor++ != ':') {
            return 0;
        }
        const uint32_t minute = ReadNumber(cursor);
        if (minute > 59 || *cursor++ != ':') {
            return 0;
        }
        const uint32_t second = ReadNumber(cursor);
        if (second > 59 || *cursor++ != '.') {
            return 0;
        }
        // The point must be followed by something; a lone digit is milliseconds, not
        // tenths: ".5" is 5 ms.
        if (*cursor == '\0') {
            return 0;
        }
        const uint32_t millisecond = ReadNumber(cursor);
        if (millisecond > 999) {
            return 0;
        }
        scratch.mHour = static_cast<short>(hour);
        scratch.mMinute = static_cast<short>(minute);
        scratch.mSecond = static_cast<short>(second);
        scratch.mMillisecond = static_cast<short>(millisecond);
    }

    scratch.mWeek = scratch.mDayOfWeek = -1;
    scratch.mZoneMinutes = scratch.mZoneSpare = 0;
    *this = scratch;  // sanitizes
    return static_cast<int>(cursor - text);
}

int DateTime::GetSaveObjSize() noexcept {
    return static_cast<int>(kSavedSize);
}

int DateTime::SaveObj(unsigned int size, void* buffer, int mode) const noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    // The year is zero-extended, every other field sign-extended; the caches go out as
    // they stand, without being filled.
    const int32_t words[kSavedWords] = {kSavedMarker, mYear,      mMonth,  mDay,
                                        mHour,        mMinute,    mSecond, mMillisecond,
                                        mWeek,        mDayOfWeek, mode};
    std::memcpy(buffer, words, sizeof words);
    return 0;
}

int DateTime::LoadObj(unsigned int size, void* buffer, bool lenient) noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    // The block may be unaligned; copy the words out.
    int32_t words[kSavedWords];
    std::memcpy(words, buffer, sizeof words);
    const auto low16 = [](int32_t word) { return static_cast<short>(word); };

    if (words[0] == kEmptyMarker) {
        // The empty form: the other words are not read, the zone words stay.
        mYear = 1899;
        mMonth = 12;
        mDay = 30;
        mHour = mMinute = mSecond = mMillisecond = 0;
        mWeek = mDayOfWeek = -1;
        return 0;
    }
    // The fields are taken in this order, so a strict refusal part-way leaves exactly
    // these ones replaced.
    mDay = low16(words[3]);
    mDayOfWeek = low16(words[9]);
    if (words[0] != kSavedMarker && !lenient) {
        return -1;
    }
    mHour = low16(words[4]);
    mMinute = low16(words[5]);
    mMillisecond = low16(words[7]);
    if (static_cast<uint32_t>(words[10]) >= 2 && !lenient) {
        return -1;
    }
    mYear = static_cast<unsigned short>(words[1]);
    mMonth = low16(words[2]);
    mSecond = low16(words[6]);
    mWeek = low16(words[8]);
    return Sanitize(lenient);
}

}  // namespace ZelvorDataType
