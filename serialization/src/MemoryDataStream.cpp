#include <ZelvorSerialization/MemoryDataStream.h>

#include <array>
#include <cstdint>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>

namespace ZelvorSerialization {

namespace {

// Item tags. The payloads are fixed: one word, nine 16-bit fields, eleven words.
constexpr unsigned char kIntTag = 'I';
constexpr unsigned char kDateTag = 'D';
constexpr unsigned char kRuleTag = 'R';
constexpr std::size_t kIntSize = 4;
constexpr std::size_t kDateFields = 9;
constexpr std::size_t kRuleFields = 11;

void Put32(std::vector<unsigned char>& out, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(static_cast<unsigned char>(bits >> shift));
    }
}

void Put16(std::vector<unsigned char>& out, int value) {
    const auto bits = static_cast<std::uint16_t>(value);
    out.push_back(static_cast<unsigned char>(bits));
    out.push_back(static_cast<unsigned char>(bits >> 8));
}

std::int32_t Get32(const unsigned char* in) noexcept {
    std::uint32_t bits = 0;
    for (int i = 3; i >= 0; --i) {
        bits = (bits << 8) | in[i];
    }
    return static_cast<std::int32_t>(bits);
}

std::uint16_t Get16(const unsigned char* in) noexcept {
    return static_cast<std::uint16_t>(in[0] | (in[1] << 8));
}

}  // namespace

MemoryDataStream::MemoryDataStream() = default;

MemoryDataStream::MemoryDataStream(const void* bytes, std::size_t size) {
    if (bytes != nullptr && size != 0) {
        const auto* first = static_cast<const unsigned char*>(bytes);
        mBytes.assign(first, first + size);
    }
}

MemoryDataStream::~MemoryDataStream() = default;

int MemoryDataStream::WriteInt(int value) {
    mBytes.push_back(kIntTag);
    Put32(mBytes, value);
    return 0;
}

int MemoryDataStream::WriteDateTime(const ZelvorDataType::DateTime& value) {
    mBytes.push_back(kDateTag);
    // The year is unsigned 16 bits, the rest signed; all travel as their 16-bit pattern.
    Put16(mBytes, value.GetYear());
    Put16(mBytes, value.GetMonth());
    Put16(mBytes, value.GetDay());
    Put16(mBytes, value.GetHour());
    Put16(mBytes, value.GetMinute());
    Put16(mBytes, value.GetSecond());
    Put16(mBytes, value.GetMillisecond());
    Put16(mBytes, value.GetZoneMinutes());
    Put16(mBytes, value.GetZoneSpare());
    return 0;
}

int MemoryDataStream::WriteDynamicTime(const ZelvorDataType::DynamicTime& value) {
    mBytes.push_back(kRuleTag);
    Put32(mBytes, value.GetDynamicTime());
    Put32(mBytes, value.GetDynamicDayOffset());
    Put32(mBytes, value.GetYear());
    Put32(mBytes, value.GetMonth());
    Put32(mBytes, value.GetDay());
    Put32(mBytes, value.GetHour());
    Put32(mBytes, value.GetMinute());
    Put32(mBytes, value.GetSecond());
    Put32(mBytes, value.GetWeek());
    Put32(mBytes, value.GetDayOfWeek());
    Put32(mBytes, value.GetDynamicMonthOffset());
    return 0;
}

const unsigned char* MemoryDataStream::Peek(unsigned char tag, std::size_t payload) const noexcept {
    const std::size_t left = mBytes.size() - mReadPosition;
    if (left < 1 + payload || mBytes[mReadPosition] != tag) {
        return nullptr;
    }
    return mBytes.data() + mReadPosition + 1;
}

int MemoryDataStream::ReadInt(int* value) {
    const unsigned char* in = Peek(kIntTag, kIntSize);
    if (in == nullptr || value == nullptr) {
        return 1;
    }
    *value = Get32(in);
    mReadPosition += 1 + kIntSize;
    return 0;
}

int MemoryDataStream::ReadDateTime(ZelvorDataType::DateTime& value) {
    const unsigned char* in = Peek(kDateTag, 2 * kDateFields);
    if (in == nullptr) {
        return 1;
    }
    std::array<int, kDateFields> f{};
    f[0] = Get16(in);  // the year is unsigned
    for (std::size_t i = 1; i < kDateFields; ++i) {
        f[i] = static_cast<std::int16_t>(Get16(in + 2 * i));
    }
    // Built by the constructor, which clamps: what came from WriteDateTime is in range
    // already and comes back unchanged, anything else becomes a real date.
    value = ZelvorDataType::DateTime(f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8]);
    mReadPosition += 1 + 2 * kDateFields;
    return 0;
}

int MemoryDataStream::ReadDynamicTime(ZelvorDataType::DynamicTime& value) {
    const unsigned char* in = Peek(kRuleTag, 4 * kRuleFields);
    if (in == nullptr) {
        return 1;
    }
    std::array<std::int32_t, kRuleFields> f{};
    for (std::size_t i = 0; i < kRuleFields; ++i) {
        f[i] = Get32(in + 4 * i);
    }
    // A whole new record, so that DYNAMIC_TIME_NONE, which PutDynamicTime ignores,
    // comes back too.
    ZelvorDataType::DynamicTime rule(static_cast<ZelvorDataType::DYNAMIC_TIME>(f[0]), f[1]);
    rule.PutYear(f[2]);
    rule.PutMonth(f[3]);
    rule.PutDay(f[4]);
    rule.PutHour(f[5]);
    rule.PutMinute(f[6]);
    rule.PutSecond(f[7]);
    rule.PutWeek(f[8]);
    rule.PutDayOfWeek(f[9]);
    rule.PutDynamicMonthOffset(static_cast<short>(f[10]));
    value = rule;
    mReadPosition += 1 + 4 * kRuleFields;
    return 0;
}

const unsigned char* MemoryDataStream::GetData() const noexcept {
    return mBytes.data();
}

std::size_t MemoryDataStream::GetSize() const noexcept {
    return mBytes.size();
}

std::size_t MemoryDataStream::GetRemaining() const noexcept {
    return mBytes.size() - mReadPosition;
}

void MemoryDataStream::Rewind() noexcept {
    mReadPosition = 0;
}

}  // namespace ZelvorSerialization
