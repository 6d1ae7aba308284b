#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zelvor {

// A small JSON value for the --json output: null, bool, integer, string, array or an
// object whose members keep the order in which they were added (so the output reads in
// the same order as the plain text). Numbers that are not integers travel as strings
// (serial dates, decimals), so no precision is lost on the way to a script.
class Json {
  public:
    using Array = std::vector<Json>;
    using Object = std::vector<std::pair<std::string, Json>>;

    Json() = default;  // null
    Json(bool value) : mValue(value) {}
    Json(int value) : mValue(static_cast<std::int64_t>(value)) {}
    Json(unsigned int value) : mValue(static_cast<std::int64_t>(value)) {}
    Json(long value) : mValue(static_cast<std::int64_t>(value)) {}
    Json(long long value) : mValue(static_cast<std::int64_t>(value)) {}
    Json(const char* value) : mValue(std::string(value)) {}
    Json(std::string value) : mValue(std::move(value)) {}
    Json(std::string_view value) : mValue(std::string(value)) {}
    Json(Array value) : mValue(std::move(value)) {}
    Json(Object value) : mValue(std::move(value)) {}

    // Appends a member (this must be an object) and returns this, for chaining.
    Json& Add(std::string name, Json value);
    // Appends an element (this must be an array).
    Json& Push(Json value);

    // The compact text on one line, strings escaped (control characters as \u00XX;
    // other bytes pass through, the tool writes UTF-8).
    std::string Dump() const;

  private:
    void DumpTo(std::string& out) const;

    std::variant<std::monostate, bool, std::int64_t, std::string, Array, Object> mValue;
};

inline Json Object() {
    return Json(Json::Object{});
}
inline Json Array() {
    return Json(Json::Array{});
}

}  // namespace zelvor
