// UTF-8 decoding and encoding to and from UTF-16, replacing whatever is ill-formed.
#include "tavi/kxt/utf.h"

namespace Kxt {

namespace {

// The well-formed UTF-8 sequences, by their first byte. The second byte has a range of its own
// that excludes overlong forms (E0, F0), encoded surrogates (ED) and values above U+10FFFF (F4);
// every later byte lies in 80..BF. `payload` masks the bits that the first byte contributes.
// A byte in none of these rows (80..C1, F5..FF) never starts a character.
struct LeadRow {
    unsigned char first, last;   // range of the first byte
    int trailing;                // bytes that follow it
    unsigned char low, high;     // range of the second byte
    unsigned char payload;
};

constexpr LeadRow lead_rows[] = {
    // first last  trailing  low   high  payload
    {0x00, 0x7F, 0, 0x00, 0x00, 0x7F},
    {0xC2, 0xDF, 1, 0x80, 0xBF, 0x1F},
    {0xE0, 0xE0, 2, 0xA0, 0xBF, 0x0F},
    {0xE1, 0xEC, 2, 0x80, 0xBF, 0x0F},
    {0xED, 0xED, 2, 0x80, 0x9F, 0x0F},
    {0xEE, 0xEF, 2, 0x80, 0xBF, 0x0F},
    {0xF0, 0xF0, 3, 0x90, 0xBF, 0x07},
    {0xF1, 0xF3, 3, 0x80, 0xBF, 0x07},
    {0xF4, 0xF4, 3, 0x80, 0x8F, 0x07},
};

LeadRow const *lead_row(unsigned char byte)
{
    for (LeadRow const &row : lead_rows)
        if (byte >= row.first && byte <= row.last)
            return &row;
    return nullptr;
}

// A code point above the BMP goes out as a high surrogate for its upper ten bits (after
// subtracting 0x10000) and a low surrogate for the lower ten.
void append_utf16(wstring &out, char32_t code)
{
    if (code < 0x10000) {
        out.push_back(static_cast<wchar>(code));
        return;
    }
    code -= 0x10000;
    out.push_back(static_cast<wchar>(0xD800 + (code >> 10)));
    out.push_back(static_cast<wchar>(0xDC00 + (code & 0x3FF)));
}

bool is_high_surrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool is_low_surrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

bool append_utf8_as_utf16(wstring &out, char const *data, std::size_t length, bool strict)
{
    if (!data)
        return true;
    auto const *bytes = reinterpret_cast<unsigned char const *>(data);
    bool well_formed = true;
    std::size_t i = 0;
    while (i < length) {
        LeadRow const *row = lead_row(bytes[i]);
        if (row && row->trailing == 0) {
            out.push_back(bytes[i++]);
            continue;
        }
        // Take continuation bytes while they fit the sequence; the first that doesn't is left
        // to start the next character, so one bad byte never swallows a good one.
        char32_t code = row ? (bytes[i] & row->payload) : 0;
        std::size_t next = i + 1;
        int taken = 0;
        if (row) {
            while (taken < row->trailing && next < length) {
                unsigned char const byte = bytes[next];
                unsigned char const low = taken == 0 ? row->low : 0x80;
                unsigned char const high = taken == 0 ? row->high : 0xBF;
                if (byte < low || byte > high)
                    break;
                code = (code << 6) | (byte & 0x3F);
                ++next;
                ++taken;
            }
        }
        if (row && taken == row->trailing) {
            append_utf16(out, code);
        } else {
            well_formed = false;
            if (strict)
                return false;
            out.push_back(static_cast<wchar>(replacement_character));
        }
        i = next;
    }
    return well_formed;
}

char32_t next_code_point(wchar const *&position, wchar const *end, bool *well_formed)
{
    char32_t const unit = *position++;
    if (is_high_surrogate(unit) && position != end && is_low_surrogate(*position)) {
        char32_t const low = *position++;
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    if (is_high_surrogate(unit) || is_low_surrogate(unit)) {
        if (well_formed)
            *well_formed = false;
        return replacement_character;
    }
    return unit;
}

// UTF-8 puts 7, 11, 16 or 21 bits of the code point into 1, 2, 3 or 4 bytes: the first byte
// carries a length marker and the top bits, each following byte 10xxxxxx with six more.
void append_utf8(std::string &out, char32_t code)
{
    if ((code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF)
        code = replacement_character;
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (code >> 18)));
        out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    }
}

bool append_utf16_as_utf8(std::string &out, wchar const *data, std::size_t length, bool strict)
{
    if (!data)
        return true;
    bool all_well_formed = true;
    wchar const *const end = data + length;
    while (data != end) {
        bool well_formed = true;
        char32_t const code = next_code_point(data, end, &well_formed);
        if (!well_formed) {
            all_well_formed = false;
            if (strict)
                return false;
        }
        append_utf8(out, code);
    }
    return all_well_formed;
}

wstring to_ustring(char const *text, std::size_t length)
{
    wstring out;
    out.reserve(length);
    append_utf8_as_utf16(out, text, length);
    return out;
}

wstring to_ustring(std::string const &text) { return to_ustring(text.data(), text.size()); }

wstring to_ustring(char const *text)
{
    return text ? to_ustring(text, std::char_traits<char>::length(text)) : wstring();
}

std::string to_string(wchar const *text, std::size_t length)
{
    std::string out;
    out.reserve(length);
    append_utf16_as_utf8(out, text, length);
    return out;
}

std::string to_string(wstring const &text) { return to_string(text.data(), text.size()); }

std::string to_string(wchar const *text)
{
    return text ? to_string(text, std::char_traits<wchar>::length(text)) : std::string();
}

}  // namespace Kxt
