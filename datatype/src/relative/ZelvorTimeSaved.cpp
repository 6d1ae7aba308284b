#include <cstdint>
#include <cstring>

#include <ZelvorDataType/ZelvorTime.h>
#include <ZelvorSerialization/DataStream.h>

namespace ZelvorDataType {

namespace {

constexpr int kWords = 11;
constexpr int kRecordSize = kWords * 4;
constexpr int kStaticMarker = -100;
constexpr int kEmptyMarker = -101;

// Word positions in the record; 7 is the millisecond of a date and the day offset of a
// rule, 10 the mode of a date.
enum Word { kTag, kYear, kMonth, kDay, kHour, kMinute, kSecond, kSeventh, kWeek, kWeekday, kMode };

using Record = std::int32_t[kWords];
static_assert(sizeof(Record) == kRecordSize);

}  // namespace

int ZelvorTime::GetSaveObjSize() noexcept {
    return kRecordSize;
}

int ZelvorTime::SaveObj(unsigned int size, void* block) const noexcept {
    if (size < static_cast<unsigned>(kRecordSize) || block == nullptr) {
        return -1;
    }
    Record words = {};
    if (IsStatic()) {
        const DateTime& date = *StaticRecord();
        words[kTag] = kStaticMarker;
        words[kYear] = date.GetYear();
        words[kMonth] = date.GetMonth();
        words[kDay] = date.GetDay();
        words[kHour] = date.GetHour();
        words[kMinute] = date.GetMinute();
        words[kSecond] = date.GetSecond();
        words[kSeventh] = date.GetMillisecond();
        words[kWeek] = date.GetWeek();
        words[kWeekday] = date.GetDayOfWeek();
        words[kMode] = mMode;
    } else if (IsDynamic()) {
        const DynamicTime& rule = *DynamicRecord();
        const std::uint32_t monthOffset = static_cast<std::uint16_t>(rule.GetDynamicMonthOffset());
        words[kTag] = static_cast<std::int32_t>((monthOffset << 16) |
                                                static_cast<std::uint32_t>(rule.GetDynamicTime()));
        words[kYear] = rule.GetYear();
        words[kMonth] = rule.GetMonth();
        words[kDay] = rule.GetDay();
        words[kHour] = rule.GetHour();
        words[kMinute] = rule.GetMinute();
        words[kSecond] = rule.GetSecond();
        words[kSeventh] = rule.GetDynamicDayOffset();
        words[kWeek] = rule.GetWeek();
        words[kWeekday] = rule.GetDayOfWeek();
        words[kMode] = 1;  // a rule's mode word is always 1
    } else {
        words[kTag] = kEmptyMarker;
    }
    // The block need not be aligned for 32-bit words; a copy is right either way.
    std::memcpy(block, words, kRecordSize);
    return 0;
}

int ZelvorTime::LoadObj(unsigned int size, void* block) {
    if (size < static_cast<unsigned>(kRecordSize) || block == nullptr) {
        return -1;
    }
    Record words;
    std::memcpy(words, block, kRecordSize);

    if (words[kTag] == kEmptyMarker) {
        ReleaseRecord();
        return 0;
    }
    if (words[kTag] == kStaticMarker) {
        // The constructor clamps whatever the words hold; week and day of week are
        // worked out anew when asked for. A mode word that SaveObj never writes (not 0
        // or 1) reads as UTC, as the static constructors read such a mode.
        const DateTime date(words[kYear], words[kMonth], words[kDay], words[kHour], words[kMinute],
                            words[kSecond], words[kSeventh], 0, 0);
        const int mode = words[kMode];
        MakeStatic(mode == TIME_MODE_LOCAL ? TIME_MODE_LOCAL : TIME_MODE_UTC, date);
        return 0;
    }
    // Any other tag is a rule: the kind in the low 16 bits, zero-extended (so never
    // DYNAMIC_TIME_NONE), the month offset in the high 16 bits with its sign.
    const auto tag = static_cast<std::uint32_t>(words[kTag]);
    DynamicTime& rule = MakeDynamic(DynamicTime(DYNAMIC_TIME_NONE, 0));
    rule.PutDynamicTime(static_cast<DYNAMIC_TIME>(tag & 0xFFFFu));
    rule.PutDay(words[kDay]);
    rule.PutDayOfWeek(words[kWeekday]);
    rule.PutHour(words[kHour]);
    rule.PutDynamicDayOffset(words[kSeventh]);
    rule.PutMinute(words[kMinute]);
    rule.PutMonth(words[kMonth]);
    rule.PutSecond(words[kSecond]);
    rule.PutWeek(words[kWeek]);
    rule.PutYear(words[kYear]);
    rule.PutDynamicMonthOffset(static_cast<short>(words[kTag] >> 16));
    return 0;
}

int ZelvorTime::SaveToStream(ZelvorSerialization::WriteDataStream* stream) const {
    if (stream == nullptr) {
        return -1;
    }
    stream->WriteInt(mMode);
    if (IsStatic()) {
        stream->WriteDateTime(*StaticRecord());
    } else if (IsDynamic()) {
        stream->WriteDynamicTime(*DynamicRecord());
    }
    return 0;
}

int ZelvorTime::LoadFromStream(ZelvorSerialization::ReadDataStream* stream) {
    if (stream == nullptr) {
        return -1;
    }
    int mode = 0;  // stands when the stream has no word left
    stream->ReadInt(&mode);
    if (mode == TIME_MODE_UTC || mode == TIME_MODE_LOCAL) {
        // The form is set before the read, so that a stream that throws leaves a
        // consistent value behind: the old date or 1899-12-30.
        if (IsStatic()) {
            mMode = static_cast<TIME_MODE>(mode);
        } else {
            MakeStatic(static_cast<TIME_MODE>(mode), DateTime(0.0));
        }
        stream->ReadDateTime(*StaticRecord());
    } else if (mode == TIME_MODE_EMPTY) {
        ReleaseRecord();
    } else if (mode == TIME_MODE_DYNAMIC) {
        stream->ReadDynamicTime(MakeDynamic(DynamicTime(DYNAMIC_TIME_NONE, 0)));
    }
    return 0;
}

}  // namespace ZelvorDataType
