// Brush: fill style and colour of an interior.
#pragma once

#include "tavi/canvas/color.h"

namespace Tavi {

class Brush
{
public:
    // A value outside this list is read as solid by the Qt surfaces and as horizontal hatching by the
    // file writers.
    enum FillStyle : int {
        solid = 0,
        horizontal = 1,
        vertical = 2,
        diagonal = 3,
        back_diagonal = 4,
        cross = 5,
        diagonal_cross = 6
    };

    Brush(FillStyle fill_style, Color const &color) : fill_style_(fill_style), color_(color) {}
    explicit Brush(Color const &color = Color::black) : fill_style_(solid), color_(color) {}

    FillStyle fill_style() const { return fill_style_; }
    void fill_style(FillStyle s) { fill_style_ = s; }
    Color const &color() const { return color_; }
    void color(Color const &c) { color_ = c; }

private:
    FillStyle fill_style_;
    Color color_;
};

inline bool operator==(Brush const &a, Brush const &b)
{
    return a.fill_style() == b.fill_style() && a.color() == b.color();
}
inline bool operator!=(Brush const &a, Brush const &b) { return !(a == b); }
// By fill style, then colour.
inline bool operator<(Brush const &a, Brush const &b)
{
    if (a.fill_style() != b.fill_style())
        return a.fill_style() < b.fill_style();
    return a.color() < b.color();
}

}  // namespace Tavi
