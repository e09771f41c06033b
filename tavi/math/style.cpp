// Style: the empty bag. Every attribute is unknown here; the fallback forms are shared by all styles.
#include "tavi/math/style.h"

namespace Tavi {

Style::~Style() = default;

long Style::id(wchar const *) const { return -1; }

wchar const *Style::attribute_name(long) const { return u""; }

bool Style::font(long, Font &) const { return false; }
bool Style::color(long, Color &) const { return false; }
bool Style::size(long, long &) const { return false; }
bool Style::coord(long, long &) const { return false; }
bool Style::rect(long, Rect &) const { return false; }
bool Style::boolean(long, bool &) const { return false; }
bool Style::number(long, long &) const { return false; }
bool Style::string(long, wstring &) const { return false; }

bool Style::set_font(long, Font const &) { return false; }
bool Style::set_color(long, Color const &) { return false; }
bool Style::set_size(long, long) { return false; }
bool Style::set_coord(long, long) { return false; }
bool Style::set_rect(long, Rect const &) { return false; }
bool Style::set_number(long, long) { return false; }
bool Style::set_boolean(long, bool) { return false; }
bool Style::set_string(long, wchar const *) { return false; }

namespace {

// Asks the virtual getter; when it doesn't answer, the fallback goes into `out`.
template <class T, class Getter>
bool with_fallback(Getter getter, T &out, T const &fallback)
{
    bool const answered = getter(out);
    if (!answered)
        out = fallback;
    return answered;
}

}  // namespace

bool Style::font(long id, Font &out, Font const &fallback) const
{
    return with_fallback([&](Font &o) { return font(id, o); }, out, fallback);
}

bool Style::color(long id, Color &out, Color const &fallback) const
{
    return with_fallback([&](Color &o) { return color(id, o); }, out, fallback);
}

bool Style::size(long id, long &out, long fallback) const
{
    return with_fallback([&](long &o) { return size(id, o); }, out, fallback);
}

bool Style::coord(long id, long &out, long fallback) const
{
    return with_fallback([&](long &o) { return coord(id, o); }, out, fallback);
}

bool Style::rect(long id, Rect &out, Rect const &fallback) const
{
    return with_fallback([&](Rect &o) { return rect(id, o); }, out, fallback);
}

bool Style::boolean(long id, bool &out, bool fallback) const
{
    return with_fallback([&](bool &o) { return boolean(id, o); }, out, fallback);
}

bool Style::number(long id, long &out, long fallback) const
{
    return with_fallback([&](long &o) { return number(id, o); }, out, fallback);
}

bool Style::string(long id, wstring &out, wchar const *fallback) const
{
    wstring const value = fallback ? wstring(fallback) : wstring();
    return with_fallback([&](wstring &o) { return string(id, o); }, out, value);
}

}  // namespace Tavi
