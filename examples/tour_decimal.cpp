// The tour: exact decimals.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

void DecimalTour() {
    using ZelvorDataType::BigDecimal;
    std::puts("\n== Exact decimals ==");
    const BigDecimal tenth("0.1");
    const BigDecimal fifth("0.2");
    const auto sum = tenth + fifth;
    std::printf("0.1 + 0.2       = %s (equals 0.3: %s)\n", sum->ToString().c_str(),
                *sum == BigDecimal("0.3") ? "yes" : "no");

    const BigDecimal price("19.99");
    const BigDecimal rate("0.075");
    const auto subtotal = price * BigDecimal(3);
    const auto tax = *subtotal * rate;  // scales add up: 2 + 3 places
    const auto total = *subtotal + *tax;
    std::printf("19.99 * 3       = %s\n", subtotal->ToString().c_str());
    std::printf("  + 7.5%% tax    = %s (tax %s)\n", total->ToString().c_str(),
                tax->ToString().c_str());

    // Division truncates at the scale asked for; nothing rounds.
    const BigDecimal one("1");
    const BigDecimal seven("7");
    std::printf("1 / 7 to 30     = %s\n", one.Divide(seven, 30)->ToString().c_str());
    std::printf("1 / 7 as is     = %s (the dividend's scale, 0)\n",
                (one / seven)->ToString().c_str());

    const BigDecimal big("123456789012345678901234567890.5");
    std::printf("big * big       = %s\n", (big * big)->ToString().c_str());

    // 0x407 is German (Germany): a comma before the decimals.
    std::printf("total in German = %ls\n", total->ToWString(0x407).c_str());
}

}  // namespace ZelvorTour
