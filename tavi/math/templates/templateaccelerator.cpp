// TemplateAccelerator: reading the text form and telling a void accelerator.
#include "tavi/math/templates/templateaccelerator.h"

namespace Tavi {

namespace {

bool is_blank(wchar c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }

wchar const *skip_blanks(wchar const *p)
{
    while (is_blank(*p))
        ++p;
    return p;
}

wchar lower(wchar c) { return (c >= u'A' && c <= u'Z') ? static_cast<wchar>(c - u'A' + u'a') : c; }

// Whether the text at p starts with `word` (lower case), in any case. Stops at the text's end.
bool starts_with_word(wchar const *p, char const *word)
{
    for (; *word; ++p, ++word)
        if (*p == 0 || lower(*p) != static_cast<wchar>(*word))
            return false;
    return true;
}

// The modifier words and the bit each adds.
struct ModifierWord
{
    char const *word;
    long length;
    std::int32_t bit;
};

ModifierWord const modifier_words[] = {
    {"shift", 5, Input::modifier_shift},
    {"ctrl", 4, Input::modifier_control},
};

bool is_digit_or_capital(wchar c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z'); }

}  // namespace

// The text is any number of "<modifier> +" prefixes, then one key character, then nothing but blanks.
// Without a modifier the key is a typed character and may be anything; with one it must be a digit or
// a capital, the key code of that key, and shift alone is refused.
bool TemplateAccelerator::parse(wchar const *text)
{
    key_ = 0;
    modifiers_ = 0;
    if (text == nullptr)
        return true;
    wchar const *p = skip_blanks(text);
    if (*p == 0)
        return true;

    for (;;) {
        p = skip_blanks(p);
        ModifierWord const *found = nullptr;
        for (ModifierWord const &m : modifier_words)
            if (starts_with_word(p, m.word)) {
                found = &m;
                break;
            }
        if (found == nullptr)
            break;
        p = skip_blanks(p + found->length);
        if (*p != u'+')
            return false;
        p = skip_blanks(p + 1);
        modifiers_ += found->bit;
    }

    wchar const c = *p;
    if (c == 0)
        return false;
    if (*skip_blanks(p + 1) != 0)
        return false;
    if (modifiers_ == Input::modifier_shift)
        return false;
    if (modifiers_ == 0) {
        key_ = c;
        modifiers_ = typed_character;
        return true;
    }
    if (!is_digit_or_capital(c))
        return false;
    key_ = c;
    return true;
}

bool TemplateAccelerator::is_void() const
{
    if (modifiers_ == typed_character)
        return key_ == 0;
    return key_ == 0 || key_ == Input::key_shift || key_ == Input::key_control || key_ == Input::key_alt;
}

}  // namespace Tavi
