#include "Json.h"

#include <cstdio>
#include <stdexcept>

namespace zelvor {

Json& Json::Add(std::string name, Json value) {
    std::get<Object>(mValue).emplace_back(std::move(name), std::move(value));
    return *this;
}

Json& Json::Push(Json value) {
    std::get<Array>(mValue).push_back(std::move(value));
    return *this;
}

std::string Json::Dump() const {
    std::string out;
    DumpTo(out);
    return out;
}

namespace {

void DumpString(std::string& out, const std::string& text) {
    out += '"';
    for (const char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                    out += escaped;
                } else {
                    out += c;
                }
        }
    }
    out += '"';
}

}  // namespace

void Json::DumpTo(std::string& out) const {
    if (std::holds_alternative<std::monostate>(mValue)) {
        out += "null";
    } else if (const bool* b = std::get_if<bool>(&mValue)) {
        out += *b ? "true" : "false";
    } else if (const std::int64_t* i = std::get_if<std::int64_t>(&mValue)) {
        out += std::to_string(*i);
    } else if (const std::string* s = std::get_if<std::string>(&mValue)) {
        DumpString(out, *s);
    } else if (const Array* a = std::get_if<Array>(&mValue)) {
        out += '[';
        for (std::size_t n = 0; n < a->size(); ++n) {
            if (n > 0) {
                out += ',';
            }
            (*a)[n].DumpTo(out);
        }
        out += ']';
    } else {
        const Object& o = std::get<Object>(mValue);
        out += '{';
        for (std::size_t n = 0; n < o.size(); ++n) {
            if (n > 0) {
                out += ',';
            }
            DumpString(out, o[n].first);
            out += ':';
            o[n].second.DumpTo(out);
        }
        out += '}';
    }
}

}  // namespace zelvor
