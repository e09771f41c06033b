// TemplateAccelerator: the key that enters a template. Either a plain typed character (modifiers -1)
// or a key combination: a key code with a bit set of modifiers (1 shift, 2 ctrl). The text form of the
// setup file is a character ("+"), or modifier words joined to a digit or capital by "+"
// ("ctrl+N", "CTRL + shift + 1").
#pragma once

#include <cstdint>

#include "tavi/glyph/input.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class TemplateAccelerator
{
public:
    // The modifiers value of a plain typed character.
    static constexpr std::int32_t typed_character = -1;

    // Void: matches nothing.
    TemplateAccelerator() : key_(0), modifiers_(0) {}
    // A key combination: the key code and the modifier bits (Input::modifier_shift, modifier_control).
    TemplateAccelerator(Input::Key key, int modifiers) : key_(key), modifiers_(modifiers) {}
    // A plain typed character.
    explicit TemplateAccelerator(wchar c) : key_(c), modifiers_(typed_character) {}
    TemplateAccelerator(TemplateAccelerator const &) = default;
    TemplateAccelerator &operator=(TemplateAccelerator const &) = default;

    std::int32_t key() const { return key_; }
    std::int32_t modifiers() const { return modifiers_; }
    bool is_character() const { return modifiers_ == typed_character; }

    // Reads the text form. Null or blank text gives a void accelerator and succeeds. On failure the
    // fields keep what had been read so far.
    bool parse(wchar const *text);

    // True when no input can match: a character of code 0, or a combination whose key is 0 or one of
    // the modifier keys themselves (shift 16, ctrl 17, alt 18).
    bool is_void() const;

private:
    std::int32_t key_;
    std::int32_t modifiers_;
};

inline bool operator==(TemplateAccelerator const &a, TemplateAccelerator const &b)
{
    return a.key() == b.key() && a.modifiers() == b.modifiers();
}
inline bool operator!=(TemplateAccelerator const &a, TemplateAccelerator const &b) { return !(a == b); }

}  // namespace Tavi
