#pragma once

// Values as text, for comparisons and messages in the suites.

#include <string>
#include <vector>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/StringCollection.h>

namespace ZelvorTest {

// "2024-03-14 15:30:45.123": a date as its text.
inline std::string Text(const ZelvorDataType::DateTime& value) {
    return value.ToString().c_str();
}

// A decimal as its text, or "(empty)" or "(invalid)" for a value that has none.
inline std::string Text(const ZelvorDataType::BigDecimal& value) {
    if (value.IsEmpty()) {
        return "(empty)";
    }
    return value.IsInvalid() ? "(invalid)" : value.ToString().c_str();
}

// The entries of a collection in order, a null one as "(null)".
inline std::vector<std::wstring> Texts(const ZelvorDataType::StringCollection& collection) {
    std::vector<std::wstring> texts;
    for (size_t i = 0; i < collection.GetCount(); ++i) {
        const wchar_t* text = collection.GetString(i);
        texts.emplace_back(text != nullptr ? text : L"(null)");
    }
    return texts;
}

}  // namespace ZelvorTest
