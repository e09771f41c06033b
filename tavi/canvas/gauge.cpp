// Gauge: the conversion of twentieths of a point to device units.
#include "tavi/canvas/gauge.h"

namespace Tavi {

Gauge::~Gauge() = default;

// length * dpi / 1440 + 0.5 in doubles, truncated toward zero; each axis by its own resolution.
Extent Gauge::twips_to_device(Extent const &twips, Extent const &dpi)
{
    double const w = static_cast<double>(twips.width()) * static_cast<double>(dpi.width()) / 1440.0 + 0.5;
    double const h = static_cast<double>(twips.height()) * static_cast<double>(dpi.height()) / 1440.0 + 0.5;
    return Extent(static_cast<long>(w), static_cast<long>(h));
}

ExtentF Gauge::twips_to_device_f(ExtentF const &twips, Extent const &dpi)
{
    return ExtentF(twips.width() * static_cast<double>(dpi.width()) / 1440.0,
                   twips.height() * static_cast<double>(dpi.height()) / 1440.0);
}

}  // namespace Tavi
