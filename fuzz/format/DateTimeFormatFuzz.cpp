// Arbitrary format strings for a DateTime: the first eight bytes pick the instant (any
// millisecond of the years 0 to 65535), the rest is what stands between "{:" and "}". A
// format is either refused with fmt::format_error or formatted; when it holds no pattern
// and no precision the result is the value's text padded to the width, and "%F %T"
// always gives the value's text back. A width is honoured however large it is, so a
// format may ask for a gigabyte of fill; a format with a run of more than five digits
// (the fill may be '%' or '.', so the run is looked for anywhere) is skipped to keep each
// run small.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <ZelvorDataType/Chrono.h>
#include <ZelvorDataType/Format.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace ZelvorDataType;
    if (size < 8) {
        return 0;
    }
    std::uint64_t bits = 0;
    std::memcpy(&bits, data, 8);
    const long long span = chrono_detail::kLastMs - chrono_detail::kFirstMs + 1;
    const DateTime value = chrono_detail::FromEpochMilliseconds(
        chrono_detail::kFirstMs + static_cast<long long>(bits % static_cast<std::uint64_t>(span)),
        "fuzz");
    const std::string format(reinterpret_cast<const char*>(data) + 8, size - 8);
    int digits = 0;
    for (const char c : format) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 5) {
            return 0;
        }
    }
    if (fmt::format("{:%F %T}", value) != ToText(value)) {
        std::abort();
    }
    try {
        const std::string text = fmt::format(fmt::runtime("{:" + format + "}"), value);
        if (format.find_first_of("%.") == std::string::npos &&
            text.find(ToText(value)) == std::string::npos) {
            std::abort();
        }
    } catch (const fmt::format_error&) {
        // A refused format; nothing else may escape.
    }
    return 0;
}
