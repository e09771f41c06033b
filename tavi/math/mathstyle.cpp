// MathStyle: the attributes of a formula, each tied to its field by a table row per type.
#include "tavi/math/mathstyle.h"

#include <string_view>

namespace Tavi {

namespace {

struct AttributeName
{
    long id;
    wchar const *name;
};

AttributeName const math_attributes[] = {
    {MathStyle::a_scriptlevel, u"scriptlevel"},
    {MathStyle::a_displaystyle, u"displaystyle"},
    {MathStyle::a_scriptsizemultiplier, u"scriptsizemultiplier"},
    {MathStyle::a_scriptminsize, u"scriptminsize"},
    {MathStyle::a_transparent_bgnd, u"transparent-bgnd"},
    {MathStyle::a_background, u"background"},
    {MathStyle::a_slanted_identifiers, u"slanted-identifiers"},
    {MathStyle::a_wrap_lines, u"wrap-lines"},
};

}  // namespace

MathStyle::Field<long> const MathStyle::number_fields[] = {
    {a_scriptlevel, &MathStyle::scriptlevel_},
    {a_scriptsizemultiplier, &MathStyle::scriptsizemultiplier_},
};

MathStyle::Field<long> const MathStyle::size_fields[] = {
    {a_scriptminsize, &MathStyle::scriptminsize_},
};

MathStyle::Field<bool> const MathStyle::boolean_fields[] = {
    {a_displaystyle, &MathStyle::displaystyle_},
    {a_transparent_bgnd, &MathStyle::transparent_bgnd_},
    {a_slanted_identifiers, &MathStyle::slanted_identifiers_},
    {a_wrap_lines, &MathStyle::wrap_lines_},
};

MathStyle::Field<Color> const MathStyle::color_fields[] = {
    {a_background, &MathStyle::background_},
};

template <class T, std::size_t N>
MathStyle::Field<T> const *MathStyle::find(Field<T> const (&table)[N], long id)
{
    for (Field<T> const &f : table)
        if (f.id == id)
            return &f;
    return nullptr;
}

MathStyle::MathStyle()
    : scriptlevel_(0),
      displaystyle_(true),
      scriptsizemultiplier_(71),
      scriptminsize_(160),
      transparent_bgnd_(true),
      background_(Color::white),
      slanted_identifiers_(true),
      wrap_lines_(true)
{
    font_.bold(false);
    font_.italic(false);
}

MathStyle::~MathStyle() = default;

long MathStyle::id(wchar const *name) const
{
    if (name == nullptr)
        return -1;
    for (AttributeName const &a : math_attributes)
        if (std::u16string_view(name) == a.name)
            return a.id;
    return TextStyle::id(name);
}

wchar const *MathStyle::attribute_name(long id) const
{
    for (AttributeName const &a : math_attributes)
        if (a.id == id)
            return a.name;
    return TextStyle::attribute_name(id);
}

bool MathStyle::number(long id, long &out) const
{
    Field<long> const *f = find(number_fields, id);
    if (f == nullptr)
        return TextStyle::number(id, out);
    out = this->*(f->member);
    return true;
}

bool MathStyle::set_number(long id, long value)
{
    Field<long> const *f = find(number_fields, id);
    if (f == nullptr)
        return TextStyle::set_number(id, value);
    if (id == a_scriptsizemultiplier && value < 1)
        return false;
    this->*(f->member) = value;
    return true;
}

bool MathStyle::boolean(long id, bool &out) const
{
    Field<bool> const *f = find(boolean_fields, id);
    if (f == nullptr)
        return TextStyle::boolean(id, out);
    out = this->*(f->member);
    return true;
}

bool MathStyle::set_boolean(long id, bool value)
{
    Field<bool> const *f = find(boolean_fields, id);
    if (f == nullptr)
        return TextStyle::set_boolean(id, value);
    this->*(f->member) = value;
    return true;
}

bool MathStyle::size(long id, long &out) const
{
    Field<long> const *f = find(size_fields, id);
    if (f == nullptr)
        return TextStyle::size(id, out);
    out = this->*(f->member);
    return true;
}

bool MathStyle::set_size(long id, long value)
{
    Field<long> const *f = find(size_fields, id);
    if (f == nullptr)
        return TextStyle::set_size(id, value);
    if (value < 0)
        return false;
    this->*(f->member) = value;
    return true;
}

bool MathStyle::color(long id, Color &out) const
{
    Field<Color> const *f = find(color_fields, id);
    if (f == nullptr)
        return TextStyle::color(id, out);
    out = this->*(f->member);
    return true;
}

bool MathStyle::set_color(long id, Color const &value)
{
    Field<Color> const *f = find(color_fields, id);
    if (f == nullptr)
        return TextStyle::set_color(id, value);
    this->*(f->member) = value;
    return true;
}

}  // namespace Tavi
