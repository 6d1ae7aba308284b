// The tour: variant values compared, converted and printed.
#include <cstdio>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

void VariantTour() {
    std::puts("\n== Variants ==");
    using ZelvorDataType::Variant;
    Variant number(-1);
    const Variant big(4294967295U);
    const Variant half(0.5);
    const Variant price(ZelvorDataType::BigDecimal("19.90"));
    const Variant text(L"42 apples");
    Variant when(ZelvorDataType::DateTime(2024, 3, 5, 7, 8, 9));
    std::printf("int -1 == unsigned 4294967295: %s (the same 32 bits; it prints as %s)\n",
                number == big ? "yes" : "no", big.ToString().c_str());
    std::printf("int -1 < unsigned 4294967295: %s (ordered as doubles)\n",
                number < big ? "yes" : "no");
    std::printf("double %s, or %s; as an int %d\n", half.ToString().c_str(),
                half.ToStringVBBehavior().c_str(), static_cast<int>(half));
    std::printf("text \"%s\" read as an int: %d\n", text.ToString().c_str(),
                static_cast<int>(text));
    std::printf("decimal %s keeps its scale; date %s, or %s\n", price.ToString().c_str(),
                when.ToString().c_str(), when.ToStringVBBehavior().c_str());
    try {
        (void)(when < number);
    } catch (const ZelvorBase::Message& e) {
        std::printf("a date against a number: %ls\n", e.GetMessage());
    }
}

}  // namespace ZelvorTour
