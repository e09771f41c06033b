// The outputs of tavi-render: the formula of a host drawn on a Qt paint device (PNG, SVG, PDF) or by
// one of the writers (EPS, the SVG writer) into bytes, and the bytes written where they belong
// without leaving a half-written file behind.
#pragma once

#include <QByteArray>

#include <string>

#include "tools/tavi-render/options.h"

namespace TaviRender {

class RenderHost;

// The blank round the formula, in points, so that ink past its boxes (slanted letters, big
// operators) is not cut off.
constexpr double margin_points = 2.0;

// Resolution of the vector devices (SVG, PDF): the grain of every position, 1/10 of a point.
constexpr int vector_dpi = 720;

// The formula in the format: laid out for the target's own measurements, then drawn. `dpi` is used by
// PNG only. False, with the reason, when the surface cannot be made.
bool render(RenderHost &host, Format format, int dpi, QByteArray &out, std::string &error);

// The bytes to the file, through a temporary that is renamed over it only when complete; "-" is
// standard output. False, with the reason, when they cannot be written.
bool write_output(std::string const &path, QByteArray const &data, std::string &error);

}  // namespace TaviRender
