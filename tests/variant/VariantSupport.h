#pragma once

// Helpers shared by the Variant suites.

#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

namespace VariantTest {

using VariantError = ZelvorBase::ExceptionImpl<ZelvorDataType::VariantException>;
using DecimalError = ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>;

// The text of the VariantException (or, prefixed "decimal: ", the BigDecimalException)
// that `f` throws; "" when it throws nothing.
template <class F>
std::wstring Thrown(F&& f) {
    try {
        f();
    } catch (const VariantError& e) {
        return e.GetMessage();
    } catch (const DecimalError& e) {
        return std::wstring(L"decimal: ") + e.GetMessage();
    }
    return L"";
}

// Tag 14 (a date) or 15 (a time) holding `value`.
inline ZelvorDataType::Variant Date(const ZelvorDataType::DateTime& value, bool time = false) {
    ZelvorDataType::Variant v;
    time ? v.SetTime(value) : v.SetDate(value);
    return v;
}
inline ZelvorDataType::Variant Time(const ZelvorDataType::DateTime& value) {
    return Date(value, true);
}

}  // namespace VariantTest
