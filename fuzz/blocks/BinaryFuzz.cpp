// Drives one Binary, on the heap and in an arena, through a random sequence of
// operations and checks every step against a model of the block and its view.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include <ZelvorDataType/Binary.h>

namespace {

struct Model {
    std::vector<unsigned char> block;  // the allocated block
    size_t offset = 0;                 // start of the view in the block
    size_t size = 0;                   // length of the view
    bool owned = true;                 // heap: GiveUpBinary works
};

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

void CheckAgainst(const ZelvorDataType::Binary& b, const Model& m) {
    Check(b.GetSize() == m.size);
    if (m.size == 0) {
        Check(b.c_ptr() == nullptr);
        return;
    }
    Check(b.c_ptr() != nullptr);
    Check(std::memcmp(b.c_ptr(), m.block.data() + m.offset, m.size) == 0);
}

class Reader {
  public:
    Reader(const uint8_t* data, size_t size) : mData(data), mSize(size) {}
    bool Empty() const { return mPos >= mSize; }
    uint8_t Byte() { return Empty() ? 0 : mData[mPos++]; }

  private:
    const uint8_t* mData;
    size_t mSize;
    size_t mPos = 0;
};

void Run(const uint8_t* data, size_t size, ZelvorBase::Buffer* buffer) {
    ZelvorDataType::Binary* b = ZelvorDataType::CreateBinary(buffer);
    std::unique_ptr<ZelvorDataType::Binary> owner(buffer == nullptr ? b : nullptr);
    Model m;
    m.owned = buffer == nullptr;
    ZelvorDataType::BinaryImpl other(buffer);
    Reader in(data, size);
    while (!in.Empty()) {
        const uint8_t op = in.Byte() % 8;
        const size_t n = in.Byte() % 64;
        switch (op) {
            case 0:
            case 1: {  // SetBinary with a pattern (op 0) or with zeros (op 1)
                std::vector<unsigned char> bytes(n);
                for (size_t i = 0; i < n; ++i) {
                    bytes[i] = op == 0 ? static_cast<unsigned char>(in.Byte()) : 0;
                }
                b->SetBinary(op == 0 ? bytes.data() : nullptr, n);
                if (n == 0) {
                    break;
                }
                if (n > m.block.size()) {
                    m.block.assign(n, 0);
                }
                std::memcpy(m.block.data(), bytes.data(), n);
                m.offset = 0;
                m.size = n;
                break;
            }
            case 2:  // ResetSize: only the view changes, unless the block grows
                b->ResetSize(n);
                if (n == 0) {
                    break;
                }
                if (n > m.block.size()) {
                    m.block.assign(n, 0);
                    b->SetBinary(nullptr, n);  // a new block's bytes are unspecified
                }
                m.offset = 0;
                m.size = n;
                break;
            case 3:
                b->ZapHead(n);
                if (n > m.size) {
                    m.size = 0;
                } else {
                    m.offset += n;
                    m.size -= n;
                }
                break;
            case 4:
                b->ZapTail(n);
                m.size = n > m.size ? 0 : m.size - n;
                break;
            case 5:
                b->UnZap();
                m.offset = 0;
                m.size = m.block.size();
                break;
            case 6: {
                std::unique_ptr<unsigned char[]> block(b->GiveUpBinary());
                if (!m.owned) {
                    Check(block == nullptr);
                    break;
                }
                Check((block != nullptr) == !m.block.empty());
                if (block != nullptr) {
                    Check(std::memcmp(block.get(), m.block.data(), m.block.size()) == 0);
                }
                m = Model{};
                break;
            }
            default: {  // compare with a second block built from the model's view
                other.SetBinary(m.block.data() + m.offset, m.size);
                if (m.size == 0) {
                    break;
                }
                other.UnZap();
                other.ResetSize(m.size);
                Check(*b == other);
                Check(!(*b < other) && !(other < *b));
                break;
            }
        }
        CheckAgainst(*b, m);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Run(data, size, nullptr);
    ZelvorBase::Buffer arena;
    Run(data, size, &arena);
    return 0;
}
