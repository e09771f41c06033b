// The converter objects, on top of the UTF-8 coder.
#include "tavi/kxt/codecvt.h"

#include "tavi/kxt/utf.h"

#include <cctype>

namespace Kxt {

namespace {

bool same_name(char const *a, char const *b)
{
    for (; *a && *b; ++a, ++b)
        if (std::tolower(static_cast<unsigned char>(*a)) != std::tolower(static_cast<unsigned char>(*b)))
            return false;
    return *a == *b;
}

bool is_utf8(char const *encoding)
{
    return encoding && (same_name(encoding, "UTF-8") || same_name(encoding, "UTF8"));
}

}  // namespace

codecvt_string_to_ustring::codecvt_string_to_ustring(char const *encoding, bool strict)
    : valid_(is_utf8(encoding)), strict_(strict)
{
}

wstring codecvt_string_to_ustring::operator()(char const *text, std::size_t length) const
{
    wstring out;
    failed_ = !valid_ || !append_utf8_as_utf16(out, valid_ ? text : nullptr, length, strict_);
    return out;
}

wstring codecvt_string_to_ustring::operator()(char const *text) const
{
    return (*this)(text, text ? std::char_traits<char>::length(text) : 0);
}

codecvt_ustring_to_string::codecvt_ustring_to_string(char const *encoding, bool strict)
    : valid_(is_utf8(encoding)), strict_(strict)
{
}

std::string codecvt_ustring_to_string::operator()(wchar const *text, std::size_t length) const
{
    std::string out;
    failed_ = !valid_ || !append_utf16_as_utf8(out, valid_ ? text : nullptr, length, strict_);
    return out;
}

std::string codecvt_ustring_to_string::operator()(wchar const *text) const
{
    return (*this)(text, text ? std::char_traits<wchar>::length(text) : 0);
}

}  // namespace Kxt
