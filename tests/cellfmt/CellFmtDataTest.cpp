#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

using ZelvorDataType::CellFmtData;
using ZelvorDataType::CellFmtStruct;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr _GUID kFormat = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};

_GUID With(_GUID id, int byte, uint8_t value) {
    reinterpret_cast<unsigned char*>(&id)[byte] = value;
    return id;
}

bool SameBytes(const _GUID& a, const _GUID& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(CellFmtData, DefaultsAndAccessors) {
    const CellFmtData cell;
    EXPECT_EQ(cell.GetValue(), 0.0);
    EXPECT_EQ(cell.GetCellFmtStructPtr(), nullptr);
    EXPECT_EQ(cell.GetType(), CELLFMT_TYPE_DEFAULT);
    EXPECT_TRUE(SameBytes(cell.GetFmtID(), ZelvorBase::GUID_NULL));

    CellFmtStruct format;
    CellFmtData other(2.5, CELLFMT_TYPE_NULL, kFormat);
    EXPECT_EQ(other.GetCellFmtStructPtr(), nullptr);
    other.PutCellFmtStructPtr(&format);
    const CellFmtData copy(other);  // shares the description
    EXPECT_EQ(copy.GetCellFmtStructPtr(), &format);
    EXPECT_EQ(copy.GetType(), CELLFMT_TYPE_NULL);
    EXPECT_TRUE(SameBytes(copy.GetFmtID(), kFormat));
}

TEST(CellFmtData, EqualityAndOrder) {
    CellFmtStruct format;
    const auto make = [](double value, int type = 1, _GUID id = kFormat,
                         CellFmtStruct* fmt = nullptr) {
        CellFmtData cell(value, static_cast<EnumCellFmtDataTypes>(type), id);
        cell.PutCellFmtStructPtr(fmt);
        return cell;
    };
    const struct {
        CellFmtData left, right;
        bool equal, less;
    } cases[] = {
        {CellFmtData(), CellFmtData(), true, false},
        {make(1.0, 1, kFormat, &format), make(1.0), true, false},  // description ignored
        {make(0.0), make(-0.0), true, false},
        {make(1.0), make(2.0), false, true},
        {make(2.0, 1), make(1.0, 5), false, false},
        {make(1.0, 1), make(1.0, 14), false, false},
        {make(1.0, -7), make(1.0, -7), true, false},  // codes pass through unread
        {make(1.0), make(1.0, 1, With(kFormat, 0, 0)), false, false},
        {make(1.0), make(1.0, 1, With(kFormat, 15, 0)), false, false},
        {make(kNaN), make(kNaN), false, false},
        {make(kNaN), make(1.0), false, false},
        {make(1.0), make(kNaN), false, false},
        {make(-INFINITY), make(1.0), false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.left.GetValue() << " vs " << c.right.GetValue());
        EXPECT_EQ(c.left == c.right, c.equal);
        EXPECT_EQ(c.right == c.left, c.equal);
        EXPECT_EQ(c.left < c.right, c.less);
    }
    const CellFmtData nan = make(kNaN);
    const CellFmtData copy(nan);
    EXPECT_FALSE(copy == nan);
}

TEST(CellFmtStruct, DefaultsAndEveryFieldCounts) {
    const CellFmtStruct base;
    EXPECT_EQ(base.mNumberFormat, L"#,##0");
    EXPECT_EQ(base.mTextA, L"I");
    EXPECT_TRUE(base.mTextB.empty() && base.mTextC.empty());
    EXPECT_EQ(base.mCategory, 0);
    EXPECT_EQ(base.mWordA, 0xFFFFFFu);
    EXPECT_EQ(base.mWordB, 0u);
    EXPECT_EQ(base.mCodeA, 2);
    EXPECT_EQ(base.mFlagA, 0);
    EXPECT_EQ(base.mCodeB, 0);
    EXPECT_EQ(base.mCodeC, 10);
    EXPECT_EQ(base.mLocale, 0x409);
    EXPECT_TRUE(base == CellFmtStruct());

    const std::function<void(CellFmtStruct&)> changes[] = {
        [](CellFmtStruct& s) { s.mCategory = 1; },
        [](CellFmtStruct& s) { s.mNumberFormat = L"#,##1"; },  // same length
        [](CellFmtStruct& s) { s.mNumberFormat = L"#,##0.00"; },
        [](CellFmtStruct& s) { s.mWordA = 0; },
        [](CellFmtStruct& s) { s.mWordB = 1ull << 63; },
        [](CellFmtStruct& s) { s.mTextA = L""; },
        [](CellFmtStruct& s) { s.mCodeA = 3; },
        [](CellFmtStruct& s) { s.mTextB = L"x"; },
        [](CellFmtStruct& s) { s.mFlagA = 1; },
        [](CellFmtStruct& s) { s.mCodeB = 1; },
        [](CellFmtStruct& s) { s.mTextC.push_back(L'\0'); },  // length alone differs
        [](CellFmtStruct& s) { s.mCodeC = 11; },
        [](CellFmtStruct& s) { s.mLocale = 1031; },
    };
    for (size_t i = 0; i < std::size(changes); ++i) {
        CellFmtStruct changed;
        changes[i](changed);
        EXPECT_FALSE(changed == base) << "change " << i;
        EXPECT_FALSE(base == changed) << "change " << i;
        EXPECT_TRUE(CellFmtStruct(changed) == changed) << "change " << i;
    }
}

TEST(CellFmtData, SavedFormLayoutAndSizes) {
    CellFmtStruct format;
    CellFmtData cell(-1.5, static_cast<EnumCellFmtDataTypes>(0x01020304), kFormat);
    cell.PutCellFmtStructPtr(&format);

    std::vector<unsigned char> out(41, 0xAB);
    EXPECT_EQ(cell.SaveObj(39, out.data(), 0), -1);
    EXPECT_EQ(out, std::vector<unsigned char>(41, 0xAB));
    EXPECT_EQ(cell.SaveObj(40, nullptr, 0), -1);
    ASSERT_EQ(cell.SaveObj(40, out.data(), 7), 0);

    const double value = -1.5;
    const CellFmtStruct* pointer = &format;
    const int32_t type = 0x01020304;
    EXPECT_EQ(std::memcmp(out.data(), &value, 8), 0);
    EXPECT_EQ(std::memcmp(out.data() + 8, &pointer, 8), 0);
    EXPECT_EQ(std::memcmp(out.data() + 16, &type, 4), 0);
    EXPECT_EQ(std::memcmp(out.data() + 20, &kFormat, 16), 0);
    EXPECT_EQ(std::vector<unsigned char>(out.begin() + 36, out.end()),
              std::vector<unsigned char>(5, 0xAB));

    CellFmtData loaded;
    EXPECT_EQ(loaded.LoadObj(39, out.data()), -1);
    EXPECT_EQ(loaded.LoadObj(40, nullptr), -1);
    EXPECT_TRUE(loaded == CellFmtData());
    ASSERT_EQ(loaded.LoadObj(40, out.data()), 0);
    EXPECT_TRUE(loaded == cell);
    EXPECT_EQ(loaded.GetCellFmtStructPtr(), &format);
    EXPECT_EQ(loaded.GetType(), cell.GetType());
}

}  // namespace
