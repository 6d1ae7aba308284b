#include <ZelvorDataType/DynamicTime.h>

namespace ZelvorDataType {

DynamicTime::DynamicTime(DYNAMIC_TIME dynamicTime, int dayOffset) noexcept
    : mDynamicTime(dynamicTime),
      mDayOffset(dayOffset),
      mYear(0),
      mMonth(0),
      mDay(0),
      mHour(0),
      mMinute(0),
      mSecond(0),
      mWeek(0),
      mDayOfWeek(-1),
      mMonthOffset(0) {}

DynamicTime::DynamicTime(const DynamicTime& other) noexcept = default;

DynamicTime& DynamicTime::operator=(const DynamicTime& other) noexcept = default;

DynamicTime::~DynamicTime() = default;

DYNAMIC_TIME DynamicTime::GetDynamicTime() const noexcept {
    return mDynamicTime;
}

void DynamicTime::PutDynamicTime(DYNAMIC_TIME dynamicTime) noexcept {
    if (dynamicTime != DYNAMIC_TIME_NONE) {
        mDynamicTime = dynamicTime;
    }
}

int DynamicTime::GetDynamicDayOffset() const noexcept {
    return mDayOffset;
}
void DynamicTime::PutDynamicDayOffset(int dayOffset) noexcept {
    mDayOffset = dayOffset;
}
short DynamicTime::GetDynamicMonthOffset() const noexcept {
    return mMonthOffset;
}
void DynamicTime::PutDynamicMonthOffset(short monthOffset) noexcept {
    mMonthOffset = monthOffset;
}

int DynamicTime::GetYear() const noexcept {
    return mYear;
}
int DynamicTime::GetMonth() const noexcept {
    return mMonth;
}
int DynamicTime::GetWeek() const noexcept {
    return mWeek;
}
int DynamicTime::GetDay() const noexcept {
    return mDay;
}
int DynamicTime::GetHour() const noexcept {
    return mHour;
}
int DynamicTime::GetMinute() const noexcept {
    return mMinute;
}
int DynamicTime::GetSecond() const noexcept {
    return mSecond;
}
int DynamicTime::GetDayOfWeek() const noexcept {
    return mDayOfWeek;
}

void DynamicTime::PutYear(int year) noexcept {
    mYear = year;
}
void DynamicTime::PutMonth(int month) noexcept {
    mMonth = month;
}
void DynamicTime::PutDay(int day) noexcept {
    mDay = day;
}
void DynamicTime::PutHour(int hour) noexcept {
    mHour = hour;
}
void DynamicTime::PutMinute(int minute) noexcept {
    mMinute = minute;
}
void DynamicTime::PutSecond(int second) noexcept {
    mSecond = second;
}
void DynamicTime::PutWeek(int week) noexcept {
    mWeek = week;
}
void DynamicTime::PutDayOfWeek(int dayOfWeek) noexcept {
    mDayOfWeek = dayOfWeek;
}

}  // namespace ZelvorDataType
