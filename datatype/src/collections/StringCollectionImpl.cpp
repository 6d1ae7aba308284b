#include <ZelvorDataType/StringCollection.h>

#include <cwchar>
#include <memory>

#include "collections/CollectionIndex.h"

namespace ZelvorDataType {

namespace {

// A heap copy of `text` with its terminator, or null for a null text.
std::unique_ptr<wchar_t[]> CopyText(const wchar_t* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const size_t length = std::wcslen(text) + 1;
    std::unique_ptr<wchar_t[]> copy(new wchar_t[length]);
    std::wmemcpy(copy.get(), text, length);
    return copy;
}

}  // namespace

StringCollection::~StringCollection() = default;

StringCollectionImpl::StringVectorGuard::~StringVectorGuard() {
    if (mDismissed) {
        return;
    }
    for (wchar_t*& text : mVector) {
        delete[] text;
        text = nullptr;
    }
}

StringCollectionImpl::StringCollectionImpl() noexcept : mGuard(mStrings) {}

// mGuard goes first (members die in reverse order) and frees the texts; then the vector.
StringCollectionImpl::~StringCollectionImpl() = default;

void StringCollectionImpl::Insert(const wchar_t* text) {
    std::unique_ptr<wchar_t[]> copy = CopyText(text);
    mStrings.push_back(copy.get());
    static_cast<void>(copy.release());  // the list owns it now
}

void StringCollectionImpl::Insert(const StringCollection& other) {
    std::vector<wchar_t*> copies;
    StringVectorGuard guard(copies);
    // The count is read afresh each round, and `other` may be this collection: its
    // entries are copied before any of them is appended, so a self-insert sees only
    // the entries it started with.
    for (size_t index = 0; index < other.GetCount(); ++index) {
        std::unique_ptr<wchar_t[]> copy = CopyText(other.GetString(index));
        copies.push_back(copy.get());
        static_cast<void>(copy.release());  // the guard frees it from now on
    }
    // Appending plain pointers either happens whole or throws with mStrings untouched.
    mStrings.insert(mStrings.end(), copies.begin(), copies.end());
    guard.Dismiss();
}

size_t StringCollectionImpl::GetCount() const {
    return mStrings.size();
}

const wchar_t* StringCollectionImpl::GetString(size_t index) const {
    internal::CheckCollectionIndex(index, mStrings.size());
    return mStrings[index];
}

void StringCollectionImpl::Clear() {
    for (wchar_t*& text : mStrings) {
        delete[] text;
        text = nullptr;
    }
    mStrings.clear();
}

StringCollection* CreateStringCollection() {
    return new StringCollectionImpl();
}

}  // namespace ZelvorDataType
