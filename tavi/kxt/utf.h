// Conversion between UTF-8 bytes and UTF-16 wide text.
#pragma once

#include "tavi/kxt/wchar.h"

#include <cstddef>
#include <string>

namespace Kxt {

// What every ill-formed piece of input becomes.
constexpr char32_t replacement_character = 0xFFFD;

// Decodes `length` bytes of UTF-8 and appends them to `out` as UTF-16. Each maximal ill-formed
// piece (a stray byte, an overlong form, an encoded surrogate, a value above U+10FFFF, a cut-off
// sequence) becomes one U+FFFD, the way Unicode recommends, and decoding goes on behind it. With
// `strict` set, decoding stops instead at the first ill-formed piece and appends nothing for it.
// The answer is true when the whole input was well-formed.
bool append_utf8_as_utf16(wstring &out, char const *data, std::size_t length, bool strict = false);

// Encodes `length` units of UTF-16 and appends them to `out` as UTF-8. A surrogate pair becomes
// one four-byte sequence; a surrogate without its partner becomes U+FFFD, or, with `strict`
// set, ends the encoding. The answer is true when the whole input was well-formed.
bool append_utf16_as_utf8(std::string &out, wchar const *data, std::size_t length, bool strict = false);

// Reads the code point at `position` (before `end`) and moves past it. A lone surrogate reads as
// U+FFFD, and `well_formed`, when given, is set to false.
char32_t next_code_point(wchar const *&position, wchar const *end, bool *well_formed = nullptr);

// Appends one code point as UTF-8; a surrogate or a value above U+10FFFF is written as U+FFFD.
void append_utf8(std::string &out, char32_t code);

// Whole-string forms of the above, with ill-formed input replaced. A null pointer is the empty
// string.
wstring to_ustring(std::string const &text);
wstring to_ustring(char const *text);
wstring to_ustring(char const *text, std::size_t length);
std::string to_string(wstring const &text);
std::string to_string(wchar const *text);
std::string to_string(wchar const *text, std::size_t length);

}  // namespace Kxt
