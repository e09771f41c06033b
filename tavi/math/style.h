// Style: a bag of named attributes with typed access. The setup file and the host set the look of a
// formula through it by name; code that knows an attribute's number asks for it by type. An
// attribute answers only the getters and setters of its own type, so a caller that asks with the
// wrong type learns so from the answer instead of getting a converted value.
#pragma once

#include "tavi/canvas/color.h"
#include "tavi/canvas/font.h"
#include "tavi/geometry/rect.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class Style
{
public:
    Style() = default;
    Style(Style const &) = default;
    Style &operator=(Style const &) = default;
    virtual ~Style();

    // The number of the attribute of this exact name, or -1.
    virtual long id(wchar const *name) const;
    // The name of an attribute number; the empty string for an unknown number. Never null.
    virtual wchar const *attribute_name(long id) const;

    // Each getter answers true when the attribute has that type, and only then writes `out`.
    virtual bool font(long id, Font &out) const;
    virtual bool color(long id, Color &out) const;
    virtual bool size(long id, long &out) const;
    virtual bool coord(long id, long &out) const;
    virtual bool rect(long id, Rect &out) const;
    virtual bool boolean(long id, bool &out) const;
    virtual bool number(long id, long &out) const;
    virtual bool string(long id, wstring &out) const;

    // Each setter answers true when the attribute has that type and took the value.
    virtual bool set_font(long id, Font const &value);
    virtual bool set_color(long id, Color const &value);
    virtual bool set_size(long id, long value);
    virtual bool set_coord(long id, long value);
    virtual bool set_rect(long id, Rect const &value);
    virtual bool set_number(long id, long value);
    virtual bool set_boolean(long id, bool value);
    virtual bool set_string(long id, wchar const *value);

    // The same getters with a fallback: when the attribute doesn't answer, `out` takes `fallback`.
    // The answer is still the getter's, so a caller can tell a stored value from the fallback.
    bool font(long id, Font &out, Font const &fallback) const;
    bool color(long id, Color &out, Color const &fallback) const;
    bool size(long id, long &out, long fallback) const;
    bool coord(long id, long &out, long fallback) const;
    bool rect(long id, Rect &out, Rect const &fallback) const;
    bool boolean(long id, bool &out, bool fallback) const;
    bool number(long id, long &out, long fallback) const;
    bool string(long id, wstring &out, wchar const *fallback) const;
};

}  // namespace Tavi
