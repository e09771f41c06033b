// putCData and the narrowing stream operator for wide strings.
#include "tavi/kxt/xmltext.h"

#include "tavi/kxt/utf.h"

#include <ostream>
#include <string>

namespace Kxt {

namespace {

// The characters that XML markup claims, and the whitespace controls that an attribute value
// would not keep, with what each is written as.
struct Escape {
    char32_t code;
    char const *text;
};

constexpr Escape escapes[] = {
    {U'&', "&amp;"},
    {U'<', "&lt;"},
    {U'>', "&gt;"},
    {U'"', "&quot;"},
    {U'\'', "&apos;"},
    {U'\t', "&#9;"},
    {U'\n', "&#10;"},
    {U'\r', "&#13;"},
};

char const *escape_of(char32_t code)
{
    for (Escape const &escape : escapes)
        if (escape.code == code)
            return escape.text;
    return nullptr;
}

// Code points that XML 1.0 excludes from its character set (apart from the surrogates, which
// the decoder has already replaced): controls below U+0020 other than the three whitespace
// ones, and the two non-characters at the end of the BMP.
bool outside_xml(char32_t code)
{
    return (code < 0x20 && code != U'\t' && code != U'\n' && code != U'\r') || code == 0xFFFE || code == 0xFFFF;
}

}  // namespace

void putCData(std::ostream &out, wchar const *text)
{
    if (!text)
        return;
    wchar const *position = text;
    wchar const *const end = text + std::char_traits<wchar>::length(text);
    std::string bytes;
    bytes.reserve(end - text);
    while (position != end) {
        char32_t const code = next_code_point(position, end);
        if (char const *escape = escape_of(code))
            bytes += escape;
        else
            append_utf8(bytes, outside_xml(code) ? replacement_character : code);
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace Kxt

std::ostream &operator<<(std::ostream &out, Kxt::wchar const *text)
{
    if (text) {
        std::string const bytes = Kxt::to_string(text);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    return out;
}
