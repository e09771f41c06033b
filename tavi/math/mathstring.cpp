// MathString: runs of classed characters, kept in their one canonical form; the conversion from and to
// the text in which names of characters stand as "&name;".
#include "tavi/math/mathstring.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "tavi/math/charnames.h"

namespace Tavi {

namespace {

bool is_high_surrogate(wchar c) { return c >= 0xd800 && c <= 0xdbff; }
bool is_low_surrogate(wchar c) { return c >= 0xdc00 && c <= 0xdfff; }
bool is_name_char(wchar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

void check_position(std::size_t position, std::size_t limit)
{
    if (position > limit)
        throw std::out_of_range("invalid vector<T> subscript");
}

}  // namespace

MathString::MathString(wchar const *text, Font font) : MathString(text, text ? std::char_traits<wchar>::length(text) : 0, font) {}

MathString::MathString(wchar const *text, std::size_t length, Font font)
{
    if (text != nullptr)
        append(text, length, font);
}

std::uint32_t MathString::make_descriptor(std::size_t end, Font font)
{
    return (static_cast<std::uint32_t>(font) & font_mask) << end_bits | static_cast<std::uint32_t>(end);
}

void MathString::check_length(std::size_t added) const
{
    if (added > max_length - chars_.size())
        throw std::length_error("MathString longer than a run descriptor can hold");
}

// ---- Reading the runs ----

std::uint32_t MathString::descriptor(std::size_t run) const { return runs_.at(run); }

MathString::Font MathString::run_font(std::size_t run) const
{
    return static_cast<Font>(runs_.at(run) >> end_bits & font_mask);
}

std::size_t MathString::run_start(std::size_t run) const
{
    if (run >= runs_.size())
        throw std::out_of_range("invalid vector<T> subscript");
    return run == 0 ? 0 : runs_[run - 1] & end_mask;
}

std::size_t MathString::run_end(std::size_t run) const { return runs_.at(run) & end_mask; }

std::size_t MathString::run_of(std::size_t position) const
{
    // Ends grow with the run index: the first run whose end lies beyond the position holds it.
    std::size_t low = 0, high = runs_.size();
    while (low < high) {
        std::size_t const mid = low + (high - low) / 2;
        if ((runs_[mid] & end_mask) <= position)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

wchar MathString::at(std::size_t position) const { return chars_.at(position); }

MathString::Font MathString::font_at(std::size_t position) const
{
    if (position >= chars_.size())
        throw std::out_of_range("invalid vector<T> subscript");
    return run_font(run_of(position));
}

// ---- Changing ----

void MathString::clear()
{
    runs_.clear();
    chars_.clear();
}

void MathString::append(wchar const *text, std::size_t length, Font font)
{
    if (text == nullptr || length == 0)
        return;
    check_length(length);
    chars_.append(text, length);
    // The same class as the last run extends it; any other starts a new one.
    std::uint32_t const cls = static_cast<std::uint32_t>(font) & font_mask;
    if (!runs_.empty() && (runs_.back() >> end_bits) == cls)
        runs_.back() = make_descriptor(chars_.size(), font);
    else
        runs_.push_back(make_descriptor(chars_.size(), font));
}

void MathString::append(wchar c, Font font) { append(&c, 1, font); }

void MathString::append(MathString const &other)
{
    if (&other == this) {
        MathString const copy(other);
        append(copy);
        return;
    }
    for (std::size_t r = 0; r < other.run_count(); ++r)
        append(other.chars_.data() + other.run_start(r), other.run_end(r) - other.run_start(r), other.run_font(r));
}

bool MathString::append_name(wchar const *name, std::size_t length)
{
    NamedChar found{};
    if (!CharNames::find(name, length, found))
        return false;
    append(found.text, found.length, found.font);
    return true;
}

bool MathString::append_name(wchar const *name)
{
    NamedChar found{};
    if (!CharNames::find(name, found))
        return false;
    append(found.text, found.length, found.font);
    return true;
}

MathString MathString::substr(std::size_t position, std::size_t count) const
{
    check_position(position, chars_.size());
    std::size_t const end = position + std::min(count, chars_.size() - position);
    MathString out;
    for (std::size_t r = run_of(position); r < runs_.size() && run_start(r) < end; ++r) {
        std::size_t const from = std::max(run_start(r), position);
        std::size_t const to = std::min(run_end(r), end);
        out.append(chars_.data() + from, to - from, run_font(r));
    }
    return out;
}

// Built anew from the three pieces, so that the runs on either side of the seams merge where their
// classes agree.
void MathString::insert(std::size_t position, MathString const &other)
{
    check_position(position, chars_.size());
    if (other.empty())
        return;
    check_length(other.length());
    MathString result = substr(0, position);
    result.append(other);
    result.append(substr(position, chars_.size() - position));
    *this = std::move(result);
}

void MathString::erase(std::size_t position, std::size_t count)
{
    check_position(position, chars_.size());
    count = std::min(count, chars_.size() - position);
    if (count == 0)
        return;
    MathString result = substr(0, position);
    result.append(substr(position + count, chars_.size() - position - count));
    *this = std::move(result);
}

// ---- Characters ----

std::size_t MathString::next_char(std::size_t position) const
{
    if (position >= chars_.size())
        return chars_.size();
    std::size_t const run = run_of(position);
    std::size_t next = position + 1;
    if (is_text_class(run_font(run)) && is_high_surrogate(chars_[position]) && next < run_end(run) &&
        is_low_surrogate(chars_[next]))
        ++next;
    return next;
}

std::size_t MathString::prev_char(std::size_t position) const
{
    if (position == 0)
        return 0;
    if (position > chars_.size())
        position = chars_.size();
    std::size_t const run = run_of(position - 1);
    std::size_t prev = position - 1;
    if (is_text_class(run_font(run)) && is_low_surrogate(chars_[prev]) && prev > run_start(run) &&
        is_high_surrogate(chars_[prev - 1]))
        --prev;
    return prev;
}

std::size_t MathString::char_count() const
{
    std::size_t n = 0;
    for (std::size_t p = 0; p < chars_.size(); p = next_char(p))
        ++n;
    return n;
}

// ---- Text form ----

wstring MathString::text_form() const
{
    wstring out;
    out.reserve(chars_.size());
    std::vector<std::size_t> ampersands;  // where an ampersand stands as itself
    for (std::size_t r = 0; r < runs_.size(); ++r) {
        Font const font = run_font(r);
        for (std::size_t i = run_start(r); i < run_end(r); ++i) {
            wchar const c = chars_[i];
            Font plain = f_text;
            if (is_text_class(font) || (CharNames::plain_char(c, plain) && plain == font)) {
                if (c == u'&')
                    ampersands.push_back(out.size());
                out += c;
                continue;
            }
            wstring const entity = CharNames::entity(font, c);
            out += entity.empty() ? wstring(1, c) : entity;
        }
    }
    // An ampersand that the text after it would turn into the start of a name ("&" then "Re;") is
    // written as its own name, which reads back as the same character.
    for (auto at = ampersands.rbegin(); at != ampersands.rend(); ++at) {
        std::size_t j = *at + 1;
        while (j < out.size() && is_name_char(out[j]))
            ++j;
        if (j > *at + 1 && j < out.size() && out[j] == u';')
            out.replace(*at, 1, u"&amp;");
    }
    return out;
}

bool MathString::decode(wchar const *text, std::size_t length, MathString &out)
{
    MathString result;
    std::size_t i = 0;
    while (i < length) {
        wchar const c = text[i];
        if (c == u'&') {
            // A name is one or more letters and digits closed by a semicolon.
            std::size_t j = i + 1;
            while (j < length && is_name_char(text[j]))
                ++j;
            if (j > i + 1 && j < length && text[j] == u';') {
                if (!result.append_name(text + i + 1, j - i - 1))
                    return false;
                i = j + 1;
                continue;
            }
        }
        Font font = f_text;
        if (!CharNames::plain_char(c, font))
            return false;
        result.append(c, font);
        ++i;
    }
    out = std::move(result);
    return true;
}

bool MathString::decode(wchar const *text, MathString &out)
{
    return decode(text, text ? std::char_traits<wchar>::length(text) : 0, out);
}

bool MathString::from_char(wchar c, MathString &out)
{
    Font font = f_text;
    if (!CharNames::plain_char(c, font))
        return false;
    out.clear();
    out.append(c, font);
    return true;
}

}  // namespace Tavi
