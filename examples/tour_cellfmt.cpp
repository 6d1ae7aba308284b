// The tour: cell-format values.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

void CellFormatTour() {
    std::puts("== Cell format values ==");
    const _GUID currency = {0xC0FFEE, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
    ZelvorDataType::CellFmtStruct format;
    format.mNumberFormat = L"#,##0.00";
    ZelvorDataType::CellFmtData price(1234.5, CELLFMT_TYPE_DEFAULT, currency);
    price.PutCellFmtStructPtr(&format);
    unsigned char saved[ZelvorDataType::CellFmtData::kSavedSize];
    price.SaveObj(sizeof saved, saved, 0);
    ZelvorDataType::CellFmtData loaded;
    loaded.LoadObj(sizeof saved, saved);
    std::printf(
        "  %.2f with format \"%s\", saved in %zu bytes and loaded back: %s\n", loaded.GetValue(),
        ZelvorBase::WideCharToUTF8(loaded.GetCellFmtStructPtr()->mNumberFormat.c_str(), false)
            .c_str(),
        sizeof saved, loaded == price ? "equal" : "different");
}

}  // namespace ZelvorTour
