#pragma once

// Shared checks of the relative-time fuzz targets.

#include <cstdlib>

#include <ZelvorDataType/ZelvorTime.h>

#include "support/Zone.h"

namespace ZelvorFuzz {

// A fixed zone with daylight saving, so that runs repeat.
inline void PinZone() {
    ZelvorTest::PinZone("America/New_York");
}

inline void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

// 0 empty, 1 UTC, 2 local, 3 dynamic.
inline ZelvorDataType::ZelvorTime MakeForm(int form, ZelvorBase::Buffer* buffer) {
    using namespace ZelvorDataType;
    switch (form) {
        case 1:
            return ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_UTC, true, buffer);
        case 2:
            return ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_LOCAL, false, buffer);
        case 3: {
            ZelvorTime value(buffer);
            value.PutDynamicTime(DYNAMIC_TIME_THIS_QUARTER);
            value.PutDay(-1, true);
            return value;
        }
        default:
            return ZelvorTime(buffer);
    }
}

// One of the four forms, and a record that agrees with it.
inline void CheckConsistent(const ZelvorDataType::ZelvorTime& value) {
    using namespace ZelvorDataType;
    const TIME_MODE mode = value.GetRealMode();
    int kind = 0;
    short months = 0;
    switch (mode) {
        case TIME_MODE_UTC:
        case TIME_MODE_LOCAL: {
            Check(value.GetDynamicTime(kind) == 0 && kind == DYNAMIC_TIME_NONE);
            Check(value.GetDynamicMonthOffset(months) == E_TIME_NOT_DYNAMIC);
            const int month = value.GetMonth(true, true);
            const int day = value.GetDay(true, true);
            Check(month >= 1 && month <= 12 && day >= 1 && day <= 31);
            Check(value.GetHour(true, true) <= 23 && value.GetMilliSeconds() <= 999);
            break;
        }
        case TIME_MODE_DYNAMIC:
            Check(value.GetDynamicMonthOffset(months) == 0);
            Check(value.GetDynamicTime(kind) == 0);
            Check(value.GetMilliSeconds() == 0);
            break;
        case TIME_MODE_EMPTY:
            Check(value.GetYear(true, true) == E_TIME_EMPTY);
            Check(value.GetDynamicTime(kind) == E_TIME_EMPTY);
            break;
        default:
            Check(false);
    }
}

// Every reading that doesn't depend on the clock, against a fixed reference.
inline void Exercise(const ZelvorDataType::ZelvorTime& value) {
    using namespace ZelvorDataType;
    DateTime date(2024, 3, 14, 15, 30, 45, 123);
    value.ToDateTime(false, date);
    double serial = 0;
    value.TolocalDATEWithFixedTime(serial, true, 1710430245);
    const ZelvorTime copy(value);
    Check(copy == value && !(copy < value) && !(copy > value));
    ZelvorTime out;
    const int expiration = value.GetExpiration(out);
    Check(expiration == 1 || out.GetRealMode() == TIME_MODE_UTC);
}

}  // namespace ZelvorFuzz
