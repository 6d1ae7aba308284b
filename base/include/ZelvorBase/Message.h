#pragma once

#include <string>

#include <ZelvorBase/Export.h>
#include <ZelvorBase/ReturnString.h>

namespace ZelvorBase {

// The domain of messages that belong to no particular subsystem.
constexpr unsigned short MESSAGE_DOMAIN_UNKNOWN = 0;

// A message with a domain, a numeric id and a wide text. It is the base of every
// exception the libraries throw: they are thrown by value as ExceptionImpl<T>, with T
// Message or a tag class derived from it, and caught as `const Message&` or as the
// exact ExceptionImpl<T>.
class ZELVOR_BASE_API Message {
  public:
    Message();
    virtual ~Message();
    Message(const Message&) = default;
    Message& operator=(const Message&) = default;

    void SetDomainAndID(unsigned short domain, int id);
    // Copies the text; null sets the empty text.
    void SetMessage(const wchar_t* text);

    unsigned short GetDomain() const noexcept { return mDomain; }
    int GetID() const noexcept { return mID; }
    // Never null; L"" when no text was set.
    const wchar_t* GetMessage() const noexcept { return mText.c_str(); }

  private:
    unsigned short mDomain = MESSAGE_DOMAIN_UNKNOWN;
    int mID = 0;
    std::wstring mText;
};

// The tag of a refusal by a MemoryContract; its id is the refusal code.
class ZELVOR_BASE_API ContractManagerAllocException : public Message {};

namespace internal {
// "text\n<description of code>", the text of a contract refusal.
ZELVOR_BASE_API std::wstring ConcatenateWithDescription(const wchar_t* text, unsigned int code);
}  // namespace internal

// The thrown form of a message tag T (Message or derived from it).
template <class T>
class ZELVOR_BASE_API ExceptionImpl : public T {
  public:
    // Domain MESSAGE_DOMAIN_UNKNOWN, id -1, the text (empty for null).
    explicit ExceptionImpl(const wchar_t* text) {
        this->SetDomainAndID(MESSAGE_DOMAIN_UNKNOWN, -1);
        this->SetMessage(text);
    }
    // The same from a UTF-8 text, through UTF8ToWideChar(text, true).
    explicit ExceptionImpl(const char* text) : ExceptionImpl(UTF8ToWideChar(text, true).c_str()) {}
    // Id `code`; the text is `text`, a line feed and the system's description of
    // `code`. Should building that text fail, the failure is swallowed and the message
    // keeps no text, so that the exception itself can still be thrown.
    ExceptionImpl(const wchar_t* text, unsigned int code) {
        this->SetDomainAndID(MESSAGE_DOMAIN_UNKNOWN, static_cast<int>(code));
        try {
            this->SetMessage(internal::ConcatenateWithDescription(text, code).c_str());
        } catch (...) {  // NOLINT(bugprone-empty-catch): swallowed by contract
        }
    }
};

}  // namespace ZelvorBase
