// Loads cell values from any bytes and checks the saved form and the comparisons. The
// input is one or two saved forms; the pointer that comes back is never followed.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <ZelvorDataType/CellFmtData.h>

namespace {

using ZelvorDataType::CellFmtData;

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

bool SameFields(const CellFmtData& a, const CellFmtData& b) {
    const double va = a.GetValue();
    const double vb = b.GetValue();
    const _GUID ia = a.GetFmtID();
    const _GUID ib = b.GetFmtID();
    // Bit for bit, so that a NaN loaded back is the same NaN.
    return std::bit_cast<std::uint64_t>(va) == std::bit_cast<std::uint64_t>(vb) &&
           a.GetCellFmtStructPtr() == b.GetCellFmtStructPtr() && a.GetType() == b.GetType() &&
           std::memcmp(&ia, &ib, sizeof ia) == 0;
}

// Loads from `bytes` (all of them, as the size given) and checks the result.
CellFmtData LoadAndCheck(std::vector<unsigned char> bytes) {
    CellFmtData cell;
    const CellFmtData before(cell);
    const auto size = static_cast<unsigned int>(bytes.size());
    const int loaded = cell.LoadObj(size, bytes.data());
    if (size < CellFmtData::kSavedSize) {
        Check(loaded == -1);
        Check(SameFields(cell, before));
        return cell;
    }
    Check(loaded == 0);
    // Saving over a copy of the input gives the input back: bytes 0-35 round-trip and
    // bytes 36-39 are left alone.
    std::vector<unsigned char> saved(bytes);
    Check(cell.SaveObj(size, saved.data(), 0) == 0);
    Check(saved == bytes);
    Check(cell.SaveObj(CellFmtData::kSavedSize - 1, saved.data(), 0) == -1);

    const CellFmtData copy(cell);
    Check(SameFields(copy, cell));
    Check((copy == cell) == !std::isnan(cell.GetValue()));
    Check(!(cell < copy));
    return cell;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const size_t form = CellFmtData::kSavedSize;
    const CellFmtData a = LoadAndCheck(std::vector<unsigned char>(data, data + size));
    if (size < 2 * form) {
        return 0;
    }
    const CellFmtData b = LoadAndCheck(std::vector<unsigned char>(data + form, data + 2 * form));
    // Equality is symmetric and excludes order; order is asymmetric.
    Check((a == b) == (b == a));
    if (a == b) {
        Check(!(a < b) && !(b < a));
    }
    if (a < b) {
        Check(!(b < a));
    }
    return 0;
}
