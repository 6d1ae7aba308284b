#pragma once

// Tables of cases kept as text beside the suites that read them: one case per line,
// fields separated by '|' with the spaces around them dropped, and blank lines and lines
// that start with '#' skipped. Each case keeps its file and line, so a failure names the
// row that failed.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace ZelvorTest {

struct Case {
    std::string where;  // "decimal/Arithmetic.cases:12"
    std::vector<std::string> fields;

    // Field `n`, or "" (with a failure) when the row is too short.
    const std::string& operator[](std::size_t n) const {
        static const std::string kNone;
        if (n >= fields.size()) {
            ADD_FAILURE() << where << ": no field " << n;
            return kNone;
        }
        return fields[n];
    }
};

inline std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The cases of `name`, a path under the tests folder. A file that can't be read or holds
// no case fails the test that asked for it.
inline std::vector<Case> ReadCases(const std::string& name) {
    std::ifstream in(std::string(ZELVOR_TEST_DATA) + "/" + name);
    std::vector<Case> cases;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (Trimmed(line).empty() || Trimmed(line).front() == '#') {
            continue;
        }
        Case row{name + ":" + std::to_string(number), {}};
        for (std::size_t begin = 0;;) {
            const auto bar = line.find('|', begin);
            row.fields.push_back(Trimmed(line.substr(begin, bar - begin)));
            if (bar == std::string::npos) {
                break;
            }
            begin = bar + 1;
        }
        cases.push_back(std::move(row));
    }
    EXPECT_FALSE(cases.empty()) << "no cases in " << name;
    return cases;
}

// The whole numbers of a field, written "2024 3 31 10", as `Number` (a type wider than
// char, which would read characters); reading stops at the first word that is not one.
template <class Number = long long>
std::vector<Number> Numbers(const std::string& field) {
    std::istringstream in(field);
    std::vector<Number> numbers;
    for (Number n{}; in >> n;) {
        numbers.push_back(n);
    }
    return numbers;
}

}  // namespace ZelvorTest
