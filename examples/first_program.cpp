// The smallest program on the installed package: it links Zelvor::DataType alone and
// uses a date and an exact decimal.
#include <cstdio>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>

int main() {
    using ZelvorDataType::BigDecimal;
    using ZelvorDataType::DateTime;
    const DateTime invoiced(2024, 3, 8, 16, 30);
    const BigDecimal price("19.99");
    const auto total = price * BigDecimal(3);  // exact: 59.97
    std::printf("%s: %s\n", invoiced.ToString().c_str(), total->ToString().c_str());
    return 0;
}
