// Pen: width in device units, colour and line style of a stroke. Width 0 is the thinnest line, which
// every surface strokes as width 1. An exclusive-or pen inverts what lies under it instead of
// painting its colour, where the surface can (the text caret, visible on any background); other
// surfaces stroke it in its colour.
#pragma once

#include "tavi/canvas/color.h"

namespace Tavi {

class Pen
{
public:
    enum LineStyle : int { solid = 0, dashed = 1, dotted = 2 };

    Pen(long width = 0, Color const &color = Color::black, LineStyle style = solid, bool exclusive_or = false)
        : width_(width), color_(color), style_(style), exclusive_or_(exclusive_or)
    {
    }

    long width() const { return width_; }
    void width(long w) { width_ = w; }
    Color const &color() const { return color_; }
    void color(Color const &c) { color_ = c; }
    LineStyle style() const { return style_; }
    void style(LineStyle s) { style_ = s; }
    bool exclusive_or() const { return exclusive_or_; }
    void exclusive_or(bool on) { exclusive_or_ = on; }

private:
    long width_;
    Color color_;
    LineStyle style_;
    bool exclusive_or_;
};

inline bool operator==(Pen const &a, Pen const &b)
{
    return a.width() == b.width() && a.color() == b.color() && a.style() == b.style() &&
           a.exclusive_or() == b.exclusive_or();
}
inline bool operator!=(Pen const &a, Pen const &b) { return !(a == b); }
// By width, then colour, then style, then the exclusive-or flag.
inline bool operator<(Pen const &a, Pen const &b)
{
    if (a.width() != b.width())
        return a.width() < b.width();
    if (a.color() != b.color())
        return a.color() < b.color();
    if (a.style() != b.style())
        return a.style() < b.style();
    return a.exclusive_or() < b.exclusive_or();
}

}  // namespace Tavi
