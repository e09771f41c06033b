// Cutting a dashed or dotted line into its lit segments, for the pixel surfaces that stroke every
// segment as a plain solid line (Qt, GDI). Both cut the same way, so that a pattern looks alike on
// each and runs on from one line to the next as one path.
#pragma once

#include "tavi/geometry/point.h"

#include <cmath>

namespace Tavi {

// A position computed along a line, in the form of the line: whole pixels, truncated, or exact.
inline Point dash_position(Point const &, double x, double y)
{
    return Point(static_cast<long>(x), static_cast<long>(y));
}

inline PointF dash_position(PointF const &, double x, double y) { return PointF(x, y); }

// The period P is two dash lengths D; the lit part L of each period is D for dashes and the pen's width
// for dots. The phase φ says where the pattern stands at the start of the line: at or below 0 a lit
// part began -φ before it; above 0 the next lit part begins φ after it. Lit parts are drawn one period
// apart along the line, each from its start (or from the line's start while one is still lit) to L
// beyond it; the last one is cut at the line's end. The integral form truncates every position to
// pixels. The answer is the phase left for the next line: minus the length that remained, brought up
// by one period when the lit part has already ended. `segment(from, to)` strokes one lit part.
template <class Pt, class Segment>
double cut_dashes(Pt const &p, Pt const &q, double D, double L, double phi, Segment &&segment)
{
    double const P = 2.0 * D;
    double const dx = static_cast<double>(q.x - p.x);
    double const dy = static_cast<double>(q.y - p.y);
    double const len = std::sqrt(dx * dx + dy * dy);

    // A line of at most a pixel is lit or dark as a whole.
    if (len <= 1.0) {
        phi -= len;
        if (phi <= 0.0)
            segment(p, q);
        if (-L > phi)
            phi += P;
        return phi;
    }

    double x = phi * dx / len + static_cast<double>(p.x);
    double y = phi * dy / len + static_cast<double>(p.y);
    Pt start = phi <= 0.0 ? p : dash_position(p, x, y);
    double const ex = dx * L / len;
    double const ey = dy * L / len;
    double const px = dx * P / len;
    double const py = dy * P / len;
    double const gap = P - L;
    double r = len - phi;

    while (r >= gap) {
        segment(start, dash_position(p, x + ex, y + ey));
        r -= P;
        x += px;
        y += py;
        start = dash_position(p, x, y);
    }
    if (r > L)
        segment(start, dash_position(p, x + ex, y + ey));
    else if (r > 0.0)
        segment(start, q);

    phi = -r;
    if (-L > phi)
        phi += P;
    return phi;
}

}  // namespace Tavi
