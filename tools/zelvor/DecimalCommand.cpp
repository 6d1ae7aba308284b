// zelvor decimal A OP B: exact arithmetic on decimal text, truncated, never rounded.

#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReturnString.h>
#include <ZelvorDataType/BigDecimal.h>
#include <unicode/uloc.h>
#include <CLI/CLI.hpp>

#include "Common.h"

namespace zelvor {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::BigDecimalHandle;

namespace {

// A result scale, or an exponent, beyond this would only ask for memory: 1e2000000000
// is two thousand million digits.
constexpr long long kMaxScale = 100000;

struct DecimalOptions {
    std::string a, op, b, locale;
    std::string scale;
};

// Refuses exponents that would blow the number up to millions of digits, before the
// library is asked to hold them.
void CheckExponent(const char* which, const std::string& text) {
    std::size_t letter = text.find_first_of("eE");
    if (letter == std::string::npos || letter + 1 >= text.size()) {
        return;
    }
    std::string digits = text.substr(letter + 1);
    if (!digits.empty() && (digits[0] == '+' || digits[0] == '-')) {
        digits.erase(0, 1);
    }
    const std::size_t first = digits.find_first_not_of('0');
    const std::size_t significant = first == std::string::npos ? 0 : digits.size() - first;
    bool allDigits = true;
    for (const char c : digits) {
        allDigits = allDigits && std::isdigit(static_cast<unsigned char>(c)) != 0;
    }
    if (allDigits && (significant > 6 || std::stoll("0" + digits) > kMaxScale)) {
        throw UsageError(std::string(which) + ": the exponent of '" + text +
                         "' is out of range (at most " + std::to_string(kMaxScale) + ")");
    }
}

std::unique_ptr<BigDecimal> Operand(const char* which, const std::string& text) {
    CheckExponent(which, text);
    auto value = std::make_unique<BigDecimal>(text.c_str());
    if (value->IsInvalid()) {
        throw UsageError(std::string(which) + ": '" + text +
                         "' is not a decimal number (digits with an optional sign, point and "
                         "exponent, e.g. -12.50 or 1.5e-3)");
    }
    return value;
}

// A locale by name ("de", "de_DE", "de-DE") or by numeric identifier ("0x407", "1031").
// Returns the identifier; an unknown one is refused rather than left to the neutral
// separator.
unsigned int LocaleId(const std::string& text) {
    const bool numeric = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0]));
    unsigned int lcid = 0;
    if (numeric) {
        std::size_t used = 0;
        unsigned long parsed = 0;
        try {
            parsed = std::stoul(text, &used, 0);
        } catch (const std::exception&) {
            used = 0;
        }
        if (used != text.size() || parsed > 0xFFFFFFFFUL) {
            throw UsageError("--locale: '" + text + "' is not a locale identifier");
        }
        lcid = static_cast<unsigned int>(parsed);
        if (lcid == 0 || lcid == 0x400) {
            return lcid;  // the default locale
        }
        char name[ULOC_FULLNAME_CAPACITY];
        UErrorCode status = U_ZERO_ERROR;
        uloc_getLocaleForLCID(lcid, name, static_cast<int32_t>(sizeof name), &status);
        if (U_FAILURE(status) || name[0] == '\0') {
            throw UsageError("--locale: " + text + " is not a known locale identifier");
        }
        return lcid;
    }
    std::string name = text;
    for (char& c : name) {
        c = c == '-' ? '_' : c;
    }
    lcid = uloc_getLCID(name.c_str());
    if (lcid == 0) {
        throw UsageError("--locale: '" + text +
                         "' is not a known locale (a name such as de_DE, or an identifier "
                         "such as 0x407)");
    }
    return lcid;
}

int Compute(const Context& context, const DecimalOptions& o);

// The library's refusals ("Divide by Zero") come back naming the operation.
int Run(const Context& context, const DecimalOptions& o) {
    try {
        return Compute(context, o);
    } catch (const ZelvorBase::Message& e) {
        throw UsageError(o.a + " " + o.op + " " + o.b + ": " +
                         ZelvorBase::WideCharToUTF8(e.GetMessage(), false).c_str());
    }
}

int Compute(const Context& context, const DecimalOptions& o) {
    const std::unique_ptr<BigDecimal> a = Operand("A", o.a);
    const std::unique_ptr<BigDecimal> b = Operand("B", o.b);
    const std::string& op = o.op;
    const bool compare = op == "cmp";
    const bool scaled = !o.scale.empty();
    const int scale =
        scaled ? static_cast<int>(ParseInteger("--scale", o.scale, 0, kMaxScale)) : -1;
    if (compare && scaled) {
        throw UsageError("--scale does not apply to cmp");
    }

    if (compare) {
        const int order = a->CompareTo(*b);
        const char* words = order < 0 ? "less" : order > 0 ? "greater" : "equal";
        if (context.json) {
            Print(Object()
                      .Add("command", "decimal")
                      .Add("a", std::string(a->ToString().c_str()))
                      .Add("op", op)
                      .Add("b", std::string(b->ToString().c_str()))
                      .Add("result", order)
                      .Add("meaning", std::string("A is ") + words)
                      .Dump());
        } else {
            Print(std::string(a->ToString().c_str()) + " cmp " + b->ToString().c_str() + " = " +
                  std::to_string(order) + " (A is " + words + ")");
        }
        return 0;
    }

    BigDecimalHandle result;
    if (op == "+") {
        result = *a + *b;
    } else if (op == "-") {
        result = *a - *b;
    } else if (op == "x" || op == "*") {
        result = *a * *b;
    } else if (op == "/") {
        result = scaled ? a->Divide(*b, scale) : *a / *b;
    } else {
        throw UsageError("OP: '" + op + "' is not an operation (+, -, x or *, /, cmp)");
    }
    // Other operations keep their exact scale unless one is asked for: the library's
    // division by one at that scale cuts the digits (or pads zeros), never rounding.
    if (scaled && op != "/") {
        result = result->Divide(BigDecimal(1), scale);
    }

    const std::string plain = result->ToString().c_str();
    std::string shown = plain;
    if (!o.locale.empty()) {
        shown = ZelvorBase::WideCharToUTF8(result->ToWString(LocaleId(o.locale)).c_str(), false)
                    .c_str();
    }
    if (context.json) {
        Json out = Object()
                       .Add("command", "decimal")
                       .Add("a", std::string(a->ToString().c_str()))
                       .Add("op", op)
                       .Add("b", std::string(b->ToString().c_str()))
                       .Add("result", plain)
                       .Add("scale", result->Scale())
                       .Add("precision", result->Precision())
                       .Add("signum", result->Signum())
                       .Add("integer_digits", std::string(result->GetIntegerDigits().c_str()))
                       .Add("fraction_digits", std::string(result->GetFractionDigits().c_str()));
        if (!o.locale.empty()) {
            out.Add("locale", o.locale).Add("localized", shown);
        }
        Print(out.Dump());
        return 0;
    }
    Print(std::string(a->ToString().c_str()) + " " + op + " " + b->ToString().c_str() + " = " +
          shown + " (scale " + std::to_string(result->Scale()) + ")");
    return 0;
}

}  // namespace

void AddDecimalCommand(CLI::App& parent, std::vector<Command>& commands) {
    const auto options = std::make_shared<DecimalOptions>();
    CLI::App* app = parent.add_subcommand(
        "decimal",
        "Exact decimal arithmetic: A OP B with OP one of + - x / cmp (* works when quoted). "
        "Sums keep the larger scale, products the sum of the scales, quotients the scale of "
        "A; digits beyond a scale are cut, never rounded");
    app->add_option("A", options->a, "First operand, e.g. 1.50, -7, 1.5e-3")->required();
    app->add_option("OP", options->op, "+, -, x (or *), / or cmp")->required();
    app->add_option("B", options->b, "Second operand")->required();
    app->add_option("--scale", options->scale,
                    "Places of the result (0-100000): the quotient's scale for /, otherwise "
                    "the exact result cut (or padded) to it");
    app->add_option("--locale", options->locale,
                    "Write the result with this locale's decimal separator: a name (de_DE) "
                    "or identifier (0x407)");
    commands.push_back({app, [options](const Context& context) { return Run(context, *options); }});
}

}  // namespace zelvor
