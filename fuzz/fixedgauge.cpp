// FixedGauge.
#include "fuzz/fixedgauge.h"

namespace TaviFuzz {

using namespace Tavi;

long FixedGauge::em() const
{
    long const pixels = font_.size() * 96 / 1440;
    return pixels < 1 ? 1 : pixels;
}

void FixedGauge::font(Font const &font, CharSet char_set, long angle)
{
    font_ = font;
    char_set_ = char_set;
    angle_ = angle;
}

Extent FixedGauge::text_extent(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Extent(0, 0);
    return Extent(count * em() * 3 / 5, font_em());
}

Box FixedGauge::text_box(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Box::zero;
    return Box(count * em() * 3 / 5, font_ascent(), font_descent());
}

void FixedGauge::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    left = 0;
    right = 0;
    box = text == nullptr || count < 1 ? Box::zero : Box(count * em() * 3 / 5, em() * 7 / 10, em() / 10 + 1);
}

void FixedGauge::char_bearing(wchar const *, long &left, long &right) const
{
    left = 0;
    right = 0;
}

void FixedGauge::translate(long &x, long &y) const
{
    x += translation_.x;
    y += translation_.y;
}

void FixedGauge::translate_f(double &x, double &y) const
{
    x += static_cast<double>(translation_.x);
    y += static_cast<double>(translation_.y);
}

}  // namespace TaviFuzz
