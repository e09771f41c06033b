// Canvas: construction and the dash geometry every surface shares.
#include "tavi/canvas/canvas.h"

namespace Tavi {

Canvas::Canvas() : dash_phase_(0.0) {}

Canvas::~Canvas() = default;

// Five pen widths, but no shorter than 120 twips (six points): the comparison is made in twips, so a
// thin pen on any device dashes with the same six-point period.
double Canvas::dash_length(long pen_width, Extent const &dpi)
{
    double const dpi_x = static_cast<double>(dpi.width());
    double d = static_cast<double>(pen_width) * 5.0;
    if (d * 1440.0 / dpi_x < 120.0)
        d = dpi_x * 120.0 / 1440.0;
    return d;
}

// The period is 2 D. Dashes are on for D and off for D; dots are on for the pen's width and off for the
// rest of the period.
Canvas::DashPattern Canvas::dash_pattern(Pen const &pen, Extent const &dpi)
{
    switch (pen.style()) {
    case Pen::dashed: {
        double const d = dash_length(pen.width(), dpi);
        return DashPattern{d, d, 2.0 * d};
    }
    case Pen::dotted: {
        double const d = dash_length(pen.width(), dpi);
        double const dot = static_cast<double>(pen.width());
        return DashPattern{dot, 2.0 * d - dot, 2.0 * d};
    }
    default:
        return DashPattern{0.0, 0.0, 0.0};
    }
}

}  // namespace Tavi
