// Converter objects between narrow text of a named encoding and wide UTF-16 text.
#pragma once

#include "tavi/kxt/wchar.h"

#include <cstddef>
#include <string>

namespace Kxt {

// Both converters are made from an encoding name and a `strict` flag, and are then called like
// functions. The one encoding known is UTF-8 (named "UTF-8" or "UTF8", in any case); a converter
// made for another name is not `valid`, and converts everything to the empty string.
//
// Ill-formed input never stops the program. Without `strict`, each ill-formed piece becomes
// U+FFFD and the conversion goes on; with `strict`, the result ends where the ill-formed input
// begins. Either way `failed` tells afterwards whether the last call met any.

class codecvt_string_to_ustring {
public:
    explicit codecvt_string_to_ustring(char const *encoding = "UTF-8", bool strict = false);

    wstring operator()(char const *text, std::size_t length) const;
    wstring operator()(char const *text) const;
    wstring operator()(std::string const &text) const { return (*this)(text.data(), text.size()); }

    bool valid() const { return valid_; }
    bool strict() const { return strict_; }
    bool failed() const { return failed_; }

private:
    bool valid_;
    bool strict_;
    mutable bool failed_ = false;
};

class codecvt_ustring_to_string {
public:
    explicit codecvt_ustring_to_string(char const *encoding = "UTF-8", bool strict = false);

    std::string operator()(wchar const *text, std::size_t length) const;
    std::string operator()(wchar const *text) const;
    std::string operator()(wstring const &text) const { return (*this)(text.data(), text.size()); }

    bool valid() const { return valid_; }
    bool strict() const { return strict_; }
    bool failed() const { return failed_; }

private:
    bool valid_;
    bool strict_;
    mutable bool failed_ = false;
};

}  // namespace Kxt
