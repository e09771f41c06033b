// The one rule by which a floating coordinate becomes an integral one, everywhere in the library:
// round to nearest, with halves going toward positive infinity on both sides of zero.
#pragma once

#include <climits>
#include <cmath>

namespace Tavi {

// Halves go up: 2.5 -> 3, -2.5 -> -2, -0.5 -> 0, -2.6 -> -3, 0.49 -> 0.
// A library round() takes halves away from zero (-2.5 -> -3) and must not be used for coordinates.
// Below zero the value is first moved above zero by a whole number k, so that truncation acts as a
// floor, and k is added back afterwards.
// Values beyond the range of long (and NaN, as 0) are clamped: a cast out of range would be undefined.
inline long round_to_long(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= static_cast<double>(LONG_MAX))
        return LONG_MAX;
    if (value <= static_cast<double>(LONG_MIN) + 2.0)
        return LONG_MIN;
    if (value >= 0.0)
        return static_cast<long>(value + 0.5);
    long const k = static_cast<long>(value - 1.0);
    return static_cast<long>(value - static_cast<double>(k) + 0.5) + k;
}

}  // namespace Tavi
