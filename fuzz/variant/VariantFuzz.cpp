// Builds two Variants from the input (tag, storage and payload each), then runs every
// comparison, cast and text form on them and checks the invariants that tie them
// together. Allowed throws: "Variant types incomparable" where IsTypeComparable is
// false, the strict casts' "Cannot convert" on another tag, "Not enough memory left."
// from a refusing contract, and "Invalid BigDecimal" from an invalid decimal.
//
// Input layout, per Variant: a kind byte, a storage byte (heap, arena, contract that
// grants, contract that refuses), then the payload of the kind (see Build). After the
// two Variants: the lengths of the wide and narrow arrays handed to the array forms.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;
using VariantError = ZelvorBase::ExceptionImpl<ZelvorDataType::VariantException>;
using DecimalError = ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>;

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

class Reader {
  public:
    Reader(const uint8_t* data, size_t size) : mData(data), mSize(size) {}
    uint8_t Byte() { return mPos < mSize ? mData[mPos++] : 0; }
    template <class T>
    T Raw() {
        unsigned char bytes[sizeof(T)];
        for (auto& b : bytes) {
            b = Byte();
        }
        T value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    std::string Text() {
        std::string text(Byte(), '\0');
        for (auto& c : text) {
            c = static_cast<char>(Byte());
        }
        return text;
    }

  private:
    const uint8_t* mData;
    size_t mSize;
    size_t mPos = 0;
};

// A decimal text whose exponent has at most three digits: a BigDecimal writes out every
// zero that its exponent asks for, so "1e999999999" alone would take a gigabyte.
std::string DecimalText(Reader& in) {
    std::string text = in.Text();
    const size_t letter = text.find_first_of("eE");
    if (letter != std::string::npos && text.size() > letter + 5) {
        text.resize(letter + 5);
    }
    return text;
}

// Grants or refuses every request; lives on the stack.
class Contract : public ZelvorBase::MemoryContract {
  public:
    explicit Contract(bool refuse) : mRefuse(refuse) {}
    long long RequestMemory(size_t /*bytes*/, int /*count*/) override { return mRefuse ? 8 : 0; }
    void MemoryTaken(size_t /*bytes*/) override {}
    void AddRef() override {}
    void Release() override {}

  private:
    bool mRefuse;
};

// A Variant of the kind and storage the input asks for. A refusal of the contract
// leaves it empty, which is checked here.
std::unique_ptr<Variant> Build(Reader& in, ZelvorBase::Buffer& arena, Contract& grants,
                               Contract& refuses) {
    const int kind = in.Byte() % 15;
    const int storage = in.Byte() % 4;
    std::unique_ptr<Variant> v;
    if (storage == 0) {
        v = std::make_unique<Variant>(static_cast<ZelvorBase::Buffer*>(nullptr));
    } else if (storage == 1) {
        v = std::make_unique<Variant>(&arena);
    } else {
        v = std::make_unique<Variant>(storage == 2 ? &grants : &refuses);
    }
    try {
        switch (kind) {
            case 1:
                *v = in.Raw<int>();
                break;
            case 2:
                *v = in.Raw<unsigned int>();
                break;
            case 3:
                *v = in.Raw<short>();
                break;
            case 4:
                *v = in.Raw<long long>();
                break;
            case 5:
                *v = in.Raw<float>();
                break;
            case 6:
                *v = in.Raw<double>();
                break;
            case 7:
                *v = in.Text().c_str();
                break;
            case 8: {
                std::wstring text(in.Byte(), L'\0');
                for (auto& c : text) {
                    c = in.Raw<wchar_t>();
                }
                *v = text.c_str();
                break;
            }
            case 9: {
                const std::string bytes = in.Text();
                std::unique_ptr<ZelvorDataType::Binary> block(
                    ZelvorDataType::CreateBinary(bytes.data(), bytes.size()));
                *v = block.get();
                break;
            }
            case 10:
            case 11:
            case 12: {
                int f[7];
                for (int& x : f) {
                    x = in.Raw<uint16_t>();
                }
                const DateTime when(f[0], f[1], f[2], f[3], f[4], f[5], f[6]);
                if (kind == 10) {
                    v->SetDate(when);
                } else if (kind == 11) {
                    v->SetTime(when);
                } else {
                    *v = when;
                }
                break;
            }
            case 13:
                *v = BigDecimal(DecimalText(in).c_str());
                break;
            case 14: {
                const double value = in.Raw<double>();
                const auto type = static_cast<EnumCellFmtDataTypes>(in.Raw<int>());
                *v = ZelvorDataType::CellFmtData(value, type, in.Raw<_GUID>());
                break;
            }
            default:
                break;
        }
    } catch (const VariantError& e) {
        Check(std::wcscmp(e.GetMessage(), L"Not enough memory left.") == 0);
        Check(v->GetVarType() == -1);
    }
    return v;
}

bool IsInvalidDecimal(const Variant& v) {
    return v.GetVarType() == 30 && v.ToBigDecimal()->IsInvalid();
}

void Compare(Variant& a, Variant& b) {
    const bool invalid = IsInvalidDecimal(a) || IsInvalidDecimal(b);
    try {
        (void)(a == b);
        (void)(b == a);
        const bool below = a < b;
        Check(a.IsTypeComparable(b));
        // A strict order: never both ways.
        Check(!(below && b < a));
    } catch (const VariantError& e) {
        Check(std::wcscmp(e.GetMessage(), L"Variant types incomparable") == 0);
        Check(!a.IsTypeComparable(b));
    } catch (const DecimalError&) {
        Check(invalid);
    }
    Check(a.IsTypeComparable(b) == b.IsTypeComparable(a));
}

void CastsAndTexts(const Variant& v, unsigned int wideLength, unsigned int narrowLength) {
    (void)static_cast<short>(v);
    (void)static_cast<int>(v);
    (void)static_cast<unsigned int>(v);
    (void)static_cast<long long>(v);
    (void)static_cast<float>(v);
    (void)static_cast<double>(v);
    (void)(v == static_cast<int>(v));
    (void)(v == static_cast<double>(v));
    (void)(v == L"0");
    (void)(v == "0");

    const int tag = v.GetVarType();
    const auto strict = [](auto cast, bool allowed) {
        try {
            cast();
            Check(allowed);
        } catch (const VariantError&) {
            Check(!allowed);
        }
    };
    const bool isDate = tag == 14 || tag == 15 || tag == 16;
    strict([&] { (void)v.ToBinary(); }, tag == 11);
    strict([&] { (void)v.ToDateTime(); }, isDate);
    strict([&] { (void)static_cast<DateTime>(v); }, isDate);
    strict([&] { (void)v.ToBigDecimal(); }, tag == 30);
    strict([&] { (void)static_cast<ZelvorDataType::CellFmtData>(v); }, tag == 31);
    Check((v.GetRawWString() != nullptr) == (tag == 9));

    if (IsInvalidDecimal(v)) {
        return;  // every text form passes on "Invalid BigDecimal"
    }
    const ZelvorBase::ReturnWString wide = v.ToWString();
    const ZelvorBase::ReturnString narrow = v.ToString();
    (void)v.ToStringVBBehavior();
    Check(v.GetStringLength() == std::strlen(narrow.c_str()));
    if (tag != 31) {
        Check(v.GetWStringLength() == std::wcslen(wide.c_str()));
    }

    // The arrays sit inside larger ones whose tails must stay untouched.
    constexpr size_t kGuard = 8;
    std::vector<wchar_t> w(wideLength + kGuard, L'#');
    std::vector<char> n(narrowLength + kGuard, '#');
    v.ToWString(w.data(), wideLength);
    v.ToString(n.data(), narrowLength);
    for (size_t i = wideLength; i < w.size(); ++i) {
        Check(w[i] == L'#');
    }
    for (size_t i = narrowLength; i < n.size(); ++i) {
        Check(n[i] == '#');
    }
    if (narrowLength > 0) {
        Check(std::strncmp(n.data(), narrow.c_str(), narrowLength - 1) == 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Reader in(data, size);
    ZelvorBase::Buffer arena;
    Contract grants(false);
    Contract refuses(true);
    std::unique_ptr<Variant> a = Build(in, arena, grants, refuses);
    std::unique_ptr<Variant> b = Build(in, arena, grants, refuses);
    const unsigned int wideLength = in.Byte() % 40;
    const unsigned int narrowLength = in.Byte() % 40;

    Compare(*a, *b);
    Compare(*b, *a);
    CastsAndTexts(*a, wideLength, narrowLength);
    CastsAndTexts(*b, wideLength, narrowLength);

    // A copy is equal wherever the value equals itself (not for a NaN or an invalid
    // decimal); the heap copy's contract is the source's own, which may refuse.
    try {
        const Variant copy(*a);
        if (!IsInvalidDecimal(*a) && *a == *a) {
            Check(copy == *a);
        }
    } catch (const VariantError& e) {
        Check(std::wcscmp(e.GetMessage(), L"Not enough memory left.") == 0);
    }
    const int tagA = a->GetVarType();
    const int tagB = b->GetVarType();
    a->swap(*b);
    Check(a->GetVarType() == tagB && b->GetVarType() == tagA);
    return 0;
}
