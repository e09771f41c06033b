// MathString: the text of an atom, a wide string cut into runs, each run with a font class.
//
// The characters lie in one array; a second array holds one 32-bit descriptor per run, with the end
// offset of the run in its low 27 bits and the run's font class in its top 5 bits. A run starts where
// the one before it ends, and the string is as long as the end of its last run.
//
// A string is kept in one form only: no run is empty, and two neighbouring runs never have the same
// class (an append or insert of the same class next to a run extends it). So two strings of the same
// characters in the same classes are equal run for run, and a number typed digit by digit stays one
// run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathString
{
public:
    // The font class of a run. The numbers cross into setup data.
    enum Font {
        f_upright = 0,    // upright text
        f_text = 1,       // text: plain characters; the class that italic_fontstyle acts on
        f_symbol = 2,     // symbols
        f_extension = 3,  // math extension: the pieces of stretched symbols
        f_open_face = 4   // open face (double-struck letters)
    };

    // The descriptor of a run: end offset in the low bits, class in the high ones.
    static constexpr unsigned end_bits = 27;
    static constexpr std::uint32_t end_mask = (std::uint32_t(1) << end_bits) - 1;
    static constexpr std::uint32_t font_mask = 0x1f;
    // The longest string a descriptor can describe; more raises std::length_error.
    static constexpr std::size_t max_length = end_mask;

    MathString() = default;
    // One run of the class; a null or empty text gives the empty string.
    MathString(wchar const *text, Font font);
    MathString(wchar const *text, std::size_t length, Font font);

    // The string that a typed or handed-over text stands for: "&name;" is the named character (see
    // CharNames), any other character is a plain one in the class that CharNames::plain_char gives
    // it. An ampersand that doesn't open a name of letters and digits closed by ";" ("&", "& b;") is a
    // plain character. False for a name that isn't known or is too long (see append_name), or a
    // character below the space; `out` is then left alone.
    static bool decode(wchar const *text, std::size_t length, MathString &out);
    static bool decode(wchar const *text, MathString &out);  // a terminated text; null is empty
    // One typed character. False for a character below the space.
    static bool from_char(wchar c, MathString &out);

    // Appends the characters of a character name (without "&" and ";") as one run of the name's class.
    // False for a null or empty name, one of CharNames::name_limit characters or more, or an unknown
    // one, and nothing is appended. A name that stands for nothing (InvisibleTimes) appends nothing
    // and answers true.
    bool append_name(wchar const *name, std::size_t length);
    bool append_name(wchar const *name);

    void append(wchar const *text, std::size_t length, Font font);
    void append(wchar c, Font font);
    void append(MathString const &other);
    // Puts `other` in front of the unit at `position`; `position` == length() appends. A position
    // beyond the end raises std::out_of_range.
    void insert(std::size_t position, MathString const &other);
    // Takes out up to `count` units from `position` on. A position beyond the end raises
    // std::out_of_range.
    void erase(std::size_t position, std::size_t count);
    // The units from `position` on, at most `count` of them, with their classes.
    MathString substr(std::size_t position, std::size_t count) const;
    void clear();

    std::size_t length() const { return chars_.size(); }
    bool empty() const { return chars_.empty(); }

    std::size_t run_count() const { return runs_.size(); }
    std::uint32_t descriptor(std::size_t run) const;
    Font run_font(std::size_t run) const;
    std::size_t run_start(std::size_t run) const;
    std::size_t run_end(std::size_t run) const;
    // The run that holds the unit at `position`; run_count() at or beyond the end.
    std::size_t run_of(std::size_t position) const;

    // The units, terminated; never null.
    wchar const *data() const { return chars_.c_str(); }
    wstring const &chars() const { return chars_; }
    // The unit at a position, and its class; out of range raises std::out_of_range.
    wchar at(std::size_t position) const;
    Font font_at(std::size_t position) const;

    // Character boundaries. A character is one unit, except that in the two text classes a surrogate
    // pair is one character; a run boundary is always a character boundary. next_char gives the end
    // of the character at `position` (length() at the end), prev_char the start of the one before
    // it (0 at the start).
    std::size_t next_char(std::size_t position) const;
    std::size_t prev_char(std::size_t position) const;
    std::size_t char_count() const;

    // The text that decode reads back into this string: the text classes as they stand; in the other
    // classes a character that plain_char puts in the run's own class as itself, else its entity
    // form "&name;", else the bare unit.
    wstring text_form() const;

    friend bool operator==(MathString const &a, MathString const &b)
    {
        return a.runs_ == b.runs_ && a.chars_ == b.chars_;
    }
    friend bool operator!=(MathString const &a, MathString const &b) { return !(a == b); }

private:
    static std::uint32_t make_descriptor(std::size_t end, Font font);
    static bool is_text_class(Font font) { return font == f_text || font == f_upright; }
    void check_length(std::size_t added) const;

    std::vector<std::uint32_t> runs_;
    wstring chars_;
};

}  // namespace Tavi
