#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

#include "support/Cases.h"

namespace {

using ZelvorDataType::CellFmtData;
using ZelvorDataType::CellFmtStruct;

constexpr _GUID kFormat = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};

// A cell as cellfmt/Order.cases writes it.
CellFmtData CellOf(const std::string& field, CellFmtStruct* format) {
    if (field == "default") {
        return CellFmtData();
    }
    size_t used = 0;
    const double value = std::stod(field, &used);
    const std::vector<int> n = ZelvorTest::Numbers<int>(field.substr(used));
    _GUID id = kFormat;
    if (n.size() > 1 && n[1] >= 0) {
        reinterpret_cast<unsigned char*>(&id)[n[1]] = 0xEE;
    }
    CellFmtData cell(value, static_cast<EnumCellFmtDataTypes>(n.empty() ? 1 : n[0]), id);
    cell.PutCellFmtStructPtr(field.find("described") == std::string::npos ? nullptr : format);
    return cell;
}

TEST(CellFmtData, EqualityAndOrder) {
    const _GUID id = CellFmtData().GetFmtID();
    EXPECT_EQ(std::memcmp(&id, &ZelvorBase::GUID_NULL, sizeof id), 0);
    EXPECT_EQ(CellFmtData().GetType(), CELLFMT_TYPE_DEFAULT);

    CellFmtStruct format;
    for (const auto& c : ZelvorTest::ReadCases("cellfmt/Order.cases")) {
        SCOPED_TRACE(c.where);
        const CellFmtData left = CellOf(c[0], &format);
        const CellFmtData right = CellOf(c[1], &format);
        EXPECT_EQ(left == right, c[2] == "yes");
        EXPECT_EQ(right == left, c[2] == "yes");
        EXPECT_EQ(left < right, c[3] == "yes");
    }
}

TEST(CellFmtStruct, DefaultsAndEveryFieldCounts) {
    const CellFmtStruct base;
    EXPECT_TRUE(base.mNumberFormat == L"#,##0" && base.mTextA == L"I" && base.mTextC.empty());
    EXPECT_TRUE(base.mWordA == 0xFFFFFF && base.mCodeA == 2 && base.mLocale == 0x409);
    const std::function<void(CellFmtStruct&)> changes[] = {
        [](CellFmtStruct& s) { s.mCategory = 1; },
        [](CellFmtStruct& s) { s.mNumberFormat = L"#,##1"; },
        [](CellFmtStruct& s) { s.mWordA = 0; },
        [](CellFmtStruct& s) { s.mWordB = 1ull << 63; },
        [](CellFmtStruct& s) { s.mTextA = L""; },
        [](CellFmtStruct& s) { s.mCodeA = 3; },
        [](CellFmtStruct& s) { s.mTextB = L"x"; },
        [](CellFmtStruct& s) { s.mFlagA = 1; },
        [](CellFmtStruct& s) { s.mCodeB = 1; },
        [](CellFmtStruct& s) { s.mTextC.push_back(L'\0'); },  // the length alone differs
        [](CellFmtStruct& s) { s.mCodeC = 11; },
        [](CellFmtStruct& s) { s.mLocale = 1031; },
    };
    for (size_t i = 0; i < std::size(changes); ++i) {
        CellFmtStruct changed;
        changes[i](changed);
        EXPECT_FALSE(changed == base || base == changed) << "change " << i;
        EXPECT_TRUE(CellFmtStruct(changed) == changed) << "change " << i;
    }
    EXPECT_TRUE(base == CellFmtStruct());
}

TEST(CellFmtData, SavedFormLayoutAndSizes) {
    CellFmtStruct format;
    CellFmtData cell(-1.5, static_cast<EnumCellFmtDataTypes>(0x01020304), kFormat);
    cell.PutCellFmtStructPtr(&format);
    std::vector<unsigned char> out(41, 0xAB);
    std::vector<unsigned char> expected = out;
    EXPECT_EQ(cell.SaveObj(39, out.data(), 0), -1);
    EXPECT_EQ(cell.SaveObj(40, nullptr, 0), -1);
    EXPECT_EQ(out, expected);
    ASSERT_EQ(cell.SaveObj(40, out.data(), 7), 0);
    const double value = -1.5;
    const CellFmtStruct* pointer = &format;
    const int32_t type = 0x01020304;
    std::memcpy(&expected[0], &value, 8);  // bytes 36 to 40 stay as they were
    std::memcpy(&expected[8], &pointer, 8);
    std::memcpy(&expected[16], &type, 4);
    std::memcpy(&expected[20], &kFormat, 16);
    EXPECT_EQ(out, expected);

    CellFmtData loaded;
    EXPECT_EQ(loaded.LoadObj(39, out.data()), -1);
    EXPECT_EQ(loaded.LoadObj(40, nullptr), -1);
    EXPECT_TRUE(loaded == CellFmtData());
    ASSERT_EQ(loaded.LoadObj(40, out.data()), 0);
    EXPECT_TRUE(loaded == cell);
    EXPECT_EQ(loaded.GetCellFmtStructPtr(), &format);
}

}  // namespace
