// Character names: the names by which a formula refers to characters that plain text lacks (Greek
// letters, operators, arrows, double-struck capitals), what each name stands for, and the way back
// from a character of a font class to its name when a formula is written.
//
// A name stands for one code in one font class, or for a short text. `&name;` is its entity form; the
// functions here take and give names without the ampersand and the semicolon unless they say so.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>

#include "tavi/kxt/wchar.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

// What a name stands for: a text set in one font class. For most names the text is one character;
// for a few it is a short word, or nothing at all (the invisible operators). The text lives as long
// as the program and is not terminated.
struct NamedChar
{
    MathString::Font font;
    wchar const *text;
    std::size_t length;
};

// The tables of names, read-only; the only state is the index below.
class CharNames
{
public:
    static constexpr int name_count = 427;
    // The longest name is "PrincipalValueIntegral".
    static constexpr std::size_t longest_name = 22;
    // A name of this many characters or more is refused before it is looked up.
    static constexpr std::size_t name_limit = 128;
    // An entity form "&name;" with its terminator must fit into this many characters.
    static constexpr std::size_t entity_limit = 128;

    // The number (0 to 426) of a name of `length` narrow characters, or -1. No search: the name is
    // hashed and compared with the one name that can have that hash.
    static int lookup(char const *name, std::size_t length);

    // The name of a number, or null. A linear walk over the tables: it serves writing and showing,
    // not reading.
    static char const *name(int number);

    // What the wide name stands for. False for a null or empty name, one of `name_limit` characters
    // or more, or one that isn't known; `out` is then left alone.
    static bool find(wchar const *name, std::size_t length, NamedChar &out);
    static bool find(wchar const *name, NamedChar &out);  // a terminated name

    // The same as `find`, with the text copied: on failure false, and `text` is emptied.
    static bool text(wchar const *name, MathString::Font &font, wstring &text);

    // The way back, for writing a formula: the entity form "&name;" of `code` in the font class,
    // with the one name that its alias family writes. In the extension class the nine codes of
    // ( ) / [ \ ] { | } are plain characters and come back as themselves. A code that the class's
    // map doesn't hold, and every code of a class without a map (upright text), gives an empty text.
    static wstring entity(MathString::Font font, wchar code);

    // The font class that a plain character typed or read outside any name is set in: the nine
    // fences above are the extension font's own, a few operator characters the symbol font's (at
    // the same codes there), and every other character from the space up is text. False for a code
    // below 32, which isn't a character.
    static bool plain_char(wchar code, MathString::Font &font);
};

// The index from each name's number to its place in the tables, built once on first use. Readers
// may arrive from several threads at the same moment, so the build runs under a lock, and whether
// it is still to be done is tested before taking the lock and again after.
class CharNameIndex
{
public:
    CharNameIndex() = default;
    CharNameIndex(CharNameIndex const &) = delete;
    CharNameIndex &operator=(CharNameIndex const &) = delete;

    // The meaning of a number; false for a number out of range.
    bool meaning(int number, NamedChar &out);

    // How many times this index was built: 1 after any use, however many threads came first.
    int build_count() const { return builds_.load(std::memory_order_acquire); }

    // The index that `CharNames` uses.
    static CharNameIndex &shared();

private:
    void build();

    struct Place
    {
        bool text_table = false;  // a row of the text table, else of the single-character table
        short row = -1;
    };

    std::atomic<bool> built_{false};
    std::atomic<int> builds_{0};
    std::mutex mutex_;
    Place places_[CharNames::name_count] = {};
};

}  // namespace Tavi
