// Character names: the name hash, the reverse maps, the once-built index and the operations over
// them. The tables themselves stand in charnames_table.inc.
#include "tavi/math/charnames.h"

#include <array>
#include <cstring>

namespace Tavi {

namespace {

struct SingleCharRow
{
    short number;
    char const *name;
    MathString::Font font;
    wchar code;
    bool written;  // the name that its family of aliases writes back
};

struct TextRow
{
    short number;
    char const *name;
    MathString::Font font;
    wchar const *text;
    std::size_t length;
};

// Shorthands of the table columns.
constexpr MathString::Font T = MathString::f_text;
constexpr MathString::Font S = MathString::f_symbol;
constexpr MathString::Font X = MathString::f_extension;
constexpr MathString::Font O = MathString::f_open_face;
constexpr bool W = true;
constexpr bool A = false;

#include "tavi/math/charnames_table.inc"

constexpr int single_char_rows = int(sizeof single_char_table / sizeof single_char_table[0]);
constexpr int text_rows = int(sizeof text_table / sizeof text_table[0]);

// ---- Checks of the tables, made by the compiler ----

constexpr std::size_t length_of(char const *s)
{
    std::size_t n = 0;
    while (s[n] != 0)
        ++n;
    return n;
}

constexpr std::size_t length_of(wchar const *s)
{
    std::size_t n = 0;
    while (s[n] != 0)
        ++n;
    return n;
}

constexpr int rows_of_class(MathString::Font font)
{
    int n = 0;
    for (SingleCharRow const &row : single_char_table)
        n += row.font == font ? 1 : 0;
    return n;
}

// Every number from 0 to name_count - 1 belongs to exactly one row of the two tables.
constexpr bool numbers_are_a_permutation()
{
    std::array<int, CharNames::name_count> seen{};
    for (SingleCharRow const &row : single_char_table) {
        if (row.number < 0 || row.number >= CharNames::name_count || seen[row.number]++ != 0)
            return false;
    }
    for (TextRow const &row : text_table) {
        if (row.number < 0 || row.number >= CharNames::name_count || seen[row.number]++ != 0)
            return false;
    }
    return true;
}

// Every class and code that has a row has exactly one written row.
constexpr bool one_written_name_per_code()
{
    for (SingleCharRow const &row : single_char_table) {
        int written = 0;
        for (SingleCharRow const &other : single_char_table) {
            if (other.font == row.font && other.code == row.code && other.written)
                ++written;
        }
        if (written != 1)
            return false;
    }
    return true;
}

constexpr bool names_are_short_ascii()
{
    for (SingleCharRow const &row : single_char_table) {
        std::size_t n = length_of(row.name);
        if (n == 0 || n > CharNames::longest_name)
            return false;
        for (std::size_t i = 0; i < n; ++i) {
            if (static_cast<unsigned char>(row.name[i]) > 126)
                return false;
        }
    }
    for (TextRow const &row : text_table) {
        std::size_t n = length_of(row.name);
        if (n == 0 || n > CharNames::longest_name)
            return false;
    }
    return true;
}

constexpr bool text_lengths_match()
{
    for (TextRow const &row : text_table) {
        if (length_of(row.text) != row.length)
            return false;
    }
    return true;
}

static_assert(single_char_rows == 414, "the single-character table has 414 rows");
static_assert(text_rows == 13, "the text table has 13 rows");
static_assert(numbers_are_a_permutation(), "every name number is in exactly one row");
static_assert(rows_of_class(T) == 94 && rows_of_class(S) == 212 && rows_of_class(X) == 82 &&
                  rows_of_class(O) == 26,
              "rows per class: 94 text, 212 symbol, 82 extension, 26 open face");
static_assert(one_written_name_per_code(), "each family of aliases writes back exactly one name");
static_assert(names_are_short_ascii(), "names are 1 to 22 ASCII characters");
static_assert(text_lengths_match(), "the text table's lengths are those of its texts");

// ---- The name hash ----

constexpr unsigned name_hash(char const *name, std::size_t length)
{
    unsigned h = unsigned(length);
    std::size_t leading = length < 12 ? length : 12;
    for (std::size_t i = 0; i < leading; ++i)
        h += name_hash_values[static_cast<unsigned char>(name[i])];
    return h + name_hash_values[static_cast<unsigned char>(name[length - 1])];
}

// The one candidate of each hash value: what a generated switch would lead to, as a table.
struct HashSlot
{
    short number = -1;
    char const *name = nullptr;
};

using HashSlots = std::array<HashSlot, name_hash_max + 1>;

constexpr HashSlots make_hash_slots()
{
    HashSlots slots{};
    for (SingleCharRow const &row : single_char_table) {
        HashSlot &slot = slots[name_hash(row.name, length_of(row.name))];
        slot.number = row.number;
        slot.name = row.name;
    }
    for (TextRow const &row : text_table) {
        HashSlot &slot = slots[name_hash(row.name, length_of(row.name))];
        slot.number = row.number;
        slot.name = row.name;
    }
    return slots;
}

constexpr bool hash_is_perfect()
{
    std::array<bool, name_hash_max + 1> taken{};
    auto take = [&taken](char const *name) {
        unsigned h = name_hash(name, length_of(name));
        if (h < unsigned(name_hash_min) || h > unsigned(name_hash_max) || taken[h])
            return false;
        taken[h] = true;
        return true;
    };
    for (SingleCharRow const &row : single_char_table) {
        if (!take(row.name))
            return false;
    }
    for (TextRow const &row : text_table) {
        if (!take(row.name))
            return false;
    }
    return true;
}

static_assert(hash_is_perfect(), "the name hash gives every name its own value within its range");

constexpr HashSlots hash_slots = make_hash_slots();

// ---- The reverse maps: per class, the written names sorted by code ----

struct ReverseEntry
{
    wchar code = 0;
    short number = -1;
};

constexpr int written_rows_of_class(MathString::Font font)
{
    int n = 0;
    for (SingleCharRow const &row : single_char_table)
        n += row.font == font && row.written ? 1 : 0;
    return n;
}

template <MathString::Font F>
constexpr std::array<ReverseEntry, written_rows_of_class(F)> make_reverse_map()
{
    std::array<ReverseEntry, written_rows_of_class(F)> map{};
    std::size_t n = 0;
    for (SingleCharRow const &row : single_char_table) {
        if (row.font != F || !row.written)
            continue;
        // Insertion by code keeps the map sorted for the binary search.
        std::size_t at = n++;
        while (at > 0 && map[at - 1].code > row.code) {
            map[at] = map[at - 1];
            --at;
        }
        map[at].code = row.code;
        map[at].number = row.number;
    }
    return map;
}

constexpr auto text_map = make_reverse_map<MathString::f_text>();
constexpr auto symbol_map = make_reverse_map<MathString::f_symbol>();
constexpr auto extension_map = make_reverse_map<MathString::f_extension>();
constexpr auto open_face_map = make_reverse_map<MathString::f_open_face>();

template <std::size_t N>
int reverse_lookup(std::array<ReverseEntry, N> const &map, wchar code)
{
    std::size_t low = 0, high = N;
    while (low < high) {
        std::size_t mid = low + (high - low) / 2;
        if (map[mid].code < code)
            low = mid + 1;
        else
            high = mid;
    }
    return low < N && map[low].code == code ? map[low].number : -1;
}

// ---- Plain characters ----

// The characters that the extension font holds at their own codes, in normal size.
constexpr char fence_chars[] = "()/[\\]{|}";
// The operator characters that are set in the symbol font, which has them at the same codes.
constexpr char operator_chars[] = "!#%&*+-:;<=>";

bool is_one_of(char const *set, wchar code)
{
    return code < 128 && code != 0 && std::strchr(set, static_cast<char>(code)) != nullptr;
}

}  // namespace

// ---- CharNames ----

int CharNames::lookup(char const *name, std::size_t length)
{
    if (name == nullptr || length == 0 || length > longest_name)
        return -1;
    unsigned h = name_hash(name, length);
    if (h > unsigned(name_hash_max))
        return -1;
    HashSlot const &slot = hash_slots[h];
    if (slot.name == nullptr || std::strlen(slot.name) != length ||
        std::memcmp(slot.name, name, length) != 0)
        return -1;
    return slot.number;
}

char const *CharNames::name(int number)
{
    for (SingleCharRow const &row : single_char_table) {
        if (row.number == number)
            return row.name;
    }
    for (TextRow const &row : text_table) {
        if (row.number == number)
            return row.name;
    }
    return nullptr;
}

bool CharNames::find(wchar const *name, std::size_t length, NamedChar &out)
{
    if (name == nullptr || length == 0 || length >= name_limit)
        return false;
    // Names are ASCII: a wider character can be in none, and a longer name is none either.
    if (length > longest_name)
        return false;
    char narrow[longest_name];
    for (std::size_t i = 0; i < length; ++i) {
        if (name[i] == 0 || name[i] > 126)
            return false;
        narrow[i] = static_cast<char>(name[i]);
    }
    int number = lookup(narrow, length);
    return number >= 0 && CharNameIndex::shared().meaning(number, out);
}

bool CharNames::find(wchar const *name, NamedChar &out)
{
    if (name == nullptr)
        return false;
    std::size_t length = 0;
    while (length < name_limit && name[length] != 0)
        ++length;
    return find(name, length, out);
}

bool CharNames::text(wchar const *name, MathString::Font &font, wstring &text)
{
    NamedChar found{};
    if (!find(name, found)) {
        text.clear();
        return false;
    }
    font = found.font;
    text.assign(found.text, found.length);
    return true;
}

wstring CharNames::entity(MathString::Font font, wchar code)
{
    int number = -1;
    switch (font) {
    case MathString::f_text:
        number = reverse_lookup(text_map, code);
        break;
    case MathString::f_symbol:
        number = reverse_lookup(symbol_map, code);
        break;
    case MathString::f_extension:
        if (is_one_of(fence_chars, code))
            return wstring(1, code);
        number = reverse_lookup(extension_map, code);
        break;
    case MathString::f_open_face:
        number = reverse_lookup(open_face_map, code);
        break;
    default:
        break;
    }
    char const *found = name(number);
    if (found == nullptr)
        return wstring();
    // "&" + name + ";" and the terminator must fit the entity buffer.
    std::size_t length = std::strlen(found);
    if (length + 3 > entity_limit)
        return wstring();
    wstring result;
    result.reserve(length + 2);
    result.push_back(u'&');
    for (std::size_t i = 0; i < length; ++i)
        result.push_back(static_cast<wchar>(found[i]));
    result.push_back(u';');
    return result;
}

bool CharNames::plain_char(wchar code, MathString::Font &font)
{
    if (code < 32)
        return false;
    if (is_one_of(fence_chars, code))
        font = MathString::f_extension;
    else if (is_one_of(operator_chars, code))
        font = MathString::f_symbol;
    else
        font = MathString::f_text;
    return true;
}

// ---- CharNameIndex ----

// Made at first use: a mutex is not a constant on every system (MinGW's is not), so a global index
// could be reached by another file's static initialisers before its own initialisation.
CharNameIndex &CharNameIndex::shared()
{
    static CharNameIndex shared_index;
    return shared_index;
}

bool CharNameIndex::meaning(int number, NamedChar &out)
{
    if (number < 0 || number >= CharNames::name_count)
        return false;
    // The flag is tested once without the lock, the common case after the first use, and once
    // more under it, since another thread may have built the index while this one waited.
    if (!built_.load(std::memory_order_acquire)) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!built_.load(std::memory_order_relaxed)) {
            build();
            builds_.fetch_add(1, std::memory_order_release);
            built_.store(true, std::memory_order_release);
        }
    }
    Place const &place = places_[number];
    if (place.row < 0)
        return false;
    if (place.text_table) {
        TextRow const &row = text_table[place.row];
        out = NamedChar{row.font, row.text, row.length};
    } else {
        SingleCharRow const &row = single_char_table[place.row];
        out = NamedChar{row.font, &row.code, 1};
    }
    return true;
}

void CharNameIndex::build()
{
    for (int i = 0; i < single_char_rows; ++i)
        places_[single_char_table[i].number] = Place{false, short(i)};
    for (int i = 0; i < text_rows; ++i)
        places_[text_table[i].number] = Place{true, short(i)};
}

}  // namespace Tavi
