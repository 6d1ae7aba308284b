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

inline ZelvorDataType::Variant Date(const ZelvorDataType::DateTime& value) {
    ZelvorDataType::Variant v;
    v.SetDate(value);
    return v;
}

inline ZelvorDataType::Variant Time(const ZelvorDataType::DateTime& value) {
    ZelvorDataType::Variant v;
    v.SetTime(value);
    return v;
}

inline std::string Narrow(const ZelvorBase::ReturnString& text) {
    return text.c_str();
}

inline std::wstring Wide(const ZelvorBase::ReturnWString& text) {
    return text.c_str();
}

}  // namespace VariantTest
