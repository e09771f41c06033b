// TextStyle: the attributes that plain text needs, a font and a colour. The font's parts can be read
// and written one at a time, so that a setup file can change the size alone and leave the family.
#pragma once

#include "tavi/math/style.h"

namespace Tavi {

class TextStyle : public Style
{
public:
    // Attribute numbers.
    enum Attribute : long {
        a_font = 1,         // "font": the whole font
        a_font_family = 2,  // "font-family"
        a_font_italic = 3,  // "font-italic"
        a_font_bold = 4,    // "font-bold"
        a_font_size = 5,    // "font-size", twips
        a_text_color = 6    // "text-color"
    };

    // "Times New Roman" at 240 twips (12 points), upright and not bold; black.
    TextStyle();
    TextStyle(TextStyle const &) = default;
    TextStyle &operator=(TextStyle const &) = default;
    ~TextStyle() override;

    using Style::boolean;
    using Style::color;
    using Style::font;
    using Style::size;
    using Style::string;

    long id(wchar const *name) const override;
    wchar const *attribute_name(long id) const override;

    // A merge: "font" replaces `out` altogether; "font-family", "font-italic", "font-bold" and
    // "font-size" copy only that part of the stored font into `out`. set_font is the same merge the
    // other way. Fonts share their description, so neither disturbs other holders of a font.
    bool font(long id, Font &out) const override;
    bool set_font(long id, Font const &value) override;
    // "font-family".
    bool string(long id, wstring &out) const override;
    // Refuses a null family.
    bool set_string(long id, wchar const *value) override;
    // "font-italic", "font-bold".
    bool boolean(long id, bool &out) const override;
    bool set_boolean(long id, bool value) override;
    // "font-size"; a size below 1 twip is refused.
    bool size(long id, long &out) const override;
    bool set_size(long id, long value) override;
    // "text-color".
    bool color(long id, Color &out) const override;
    bool set_color(long id, Color const &value) override;

    Font const &text_font() const { return font_; }
    Color text_color() const { return color_; }

protected:
    Font font_;
    Color color_;
};

}  // namespace Tavi
