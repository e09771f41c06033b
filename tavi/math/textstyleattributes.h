// TextStyleAttributes: a text style as drawing code takes it, a font, a colour and the character set
// in which the text's units are to be read.
#pragma once

#include "tavi/canvas/color.h"
#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"

namespace Tavi {

class TextStyleAttributes
{
public:
    // The default Font, black, UTF-16.
    TextStyleAttributes() : color_(Color::black), char_set_(Gauge::cs_unicode) {}
    TextStyleAttributes(Font const &font, Color const &color, Gauge::CharSet char_set)
        : font_(font), color_(color), char_set_(char_set)
    {
    }

    Font const &font() const { return font_; }
    void font(Font const &font) { font_ = font; }
    Color color() const { return color_; }
    void color(Color const &color) { color_ = color; }
    Gauge::CharSet char_set() const { return char_set_; }
    void char_set(Gauge::CharSet char_set) { char_set_ = char_set; }

private:
    Font font_;
    Color color_;
    Gauge::CharSet char_set_;
};

}  // namespace Tavi
