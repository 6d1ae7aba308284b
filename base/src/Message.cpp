#include <ZelvorBase/Guid.h>
#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReferenceCounted.h>

namespace ZelvorBase {

const _GUID GUID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};

ReferenceCounted::~ReferenceCounted() = default;

Message::Message() = default;
Message::~Message() = default;

void Message::SetDomainAndID(unsigned short domain, int id) {
    mDomain = domain;
    mID = id;
}

void Message::SetMessage(const wchar_t* text) {
    mText = text != nullptr ? text : L"";
}

namespace internal {
std::wstring ConcatenateWithDescription(const wchar_t* text, unsigned int code) {
    std::wstring result = text != nullptr ? text : L"";
    result += L'\n';
    result += GetSystemErrorDescription(code).c_str();
    return result;
}
}  // namespace internal

}  // namespace ZelvorBase
