// TextStyle: the font and colour of plain text, and the merge of single font parts.
#include "tavi/math/textstyle.h"

#include <iterator>
#include <string_view>

namespace Tavi {

namespace {

// Attribute names, compared exactly.
struct AttributeName
{
    long id;
    wchar const *name;
};

AttributeName const text_attributes[] = {
    {TextStyle::a_font, u"font"},
    {TextStyle::a_font_family, u"font-family"},
    {TextStyle::a_font_italic, u"font-italic"},
    {TextStyle::a_font_bold, u"font-bold"},
    {TextStyle::a_font_size, u"font-size"},
    {TextStyle::a_text_color, u"text-color"},
};

// How each font attribute carries its part of a font from one font to another.
void copy_whole(Font const &from, Font &to) { to = from; }
void copy_family(Font const &from, Font &to) { to.name(from.name()); }
void copy_italic(Font const &from, Font &to) { to.italic(from.italic()); }
void copy_bold(Font const &from, Font &to) { to.bold(from.bold()); }
void copy_size(Font const &from, Font &to) { to.size(from.size()); }

struct FontPart
{
    long id;
    void (*copy)(Font const &from, Font &to);
};

FontPart const font_parts[] = {
    {TextStyle::a_font, copy_whole},
    {TextStyle::a_font_family, copy_family},
    {TextStyle::a_font_italic, copy_italic},
    {TextStyle::a_font_bold, copy_bold},
    {TextStyle::a_font_size, copy_size},
};

FontPart const *find_part(long id)
{
    for (FontPart const &p : font_parts)
        if (p.id == id)
            return &p;
    return nullptr;
}

// The two flags of a font that are attributes of their own.
struct FontFlag
{
    long id;
    bool (*get)(Font const &font);
    void (*set)(Font &font, bool value);
};

FontFlag const font_flags[] = {
    {TextStyle::a_font_italic, [](Font const &f) { return f.italic(); }, [](Font &f, bool v) { f.italic(v); }},
    {TextStyle::a_font_bold, [](Font const &f) { return f.bold(); }, [](Font &f, bool v) { f.bold(v); }},
};

FontFlag const *find_flag(long id)
{
    for (FontFlag const &f : font_flags)
        if (f.id == id)
            return &f;
    return nullptr;
}

bool same_name(wchar const *a, wchar const *b) { return std::u16string_view(a) == std::u16string_view(b); }

}  // namespace

TextStyle::TextStyle() : font_(u"Times New Roman", 240, false, false), color_(Color::black) {}

TextStyle::~TextStyle() = default;

long TextStyle::id(wchar const *name) const
{
    if (name == nullptr)
        return -1;
    for (AttributeName const &a : text_attributes)
        if (same_name(name, a.name))
            return a.id;
    return -1;
}

wchar const *TextStyle::attribute_name(long id) const
{
    for (AttributeName const &a : text_attributes)
        if (a.id == id)
            return a.name;
    return u"";
}

bool TextStyle::font(long id, Font &out) const
{
    FontPart const *part = find_part(id);
    if (part == nullptr)
        return false;
    part->copy(font_, out);
    return true;
}

bool TextStyle::set_font(long id, Font const &value)
{
    FontPart const *part = find_part(id);
    if (part == nullptr)
        return false;
    part->copy(value, font_);
    return true;
}

bool TextStyle::string(long id, wstring &out) const
{
    if (id != a_font_family)
        return false;
    out = font_.name();
    return true;
}

bool TextStyle::set_string(long id, wchar const *value)
{
    if (id != a_font_family || value == nullptr)
        return false;
    font_.name(value);
    return true;
}

bool TextStyle::boolean(long id, bool &out) const
{
    FontFlag const *flag = find_flag(id);
    if (flag == nullptr)
        return false;
    out = flag->get(font_);
    return true;
}

bool TextStyle::set_boolean(long id, bool value)
{
    FontFlag const *flag = find_flag(id);
    if (flag == nullptr)
        return false;
    flag->set(font_, value);
    return true;
}

bool TextStyle::size(long id, long &out) const
{
    if (id != a_font_size)
        return false;
    out = font_.size();
    return true;
}

bool TextStyle::set_size(long id, long value)
{
    if (id != a_font_size || value < 1)
        return false;
    font_.size(value);
    return true;
}

bool TextStyle::color(long id, Color &out) const
{
    if (id != a_text_color)
        return false;
    out = color_;
    return true;
}

bool TextStyle::set_color(long id, Color const &value)
{
    if (id != a_text_color)
        return false;
    color_ = value;
    return true;
}

}  // namespace Tavi
