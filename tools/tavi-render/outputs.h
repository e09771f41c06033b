// The outputs of tavi-render: the formula of a host drawn on a Qt paint device (PNG, SVG, PDF) or by
// one of the writers (EPS, the SVG writer) into bytes, and the bytes written where they belong
// without leaving a half-written file behind.
#pragma once

#include <QByteArray>

#include <string>

#include "tavi/qt/formulaoutput.h"
#include "tools/tavi-render/options.h"

namespace TaviRender {

using Tavi::RenderHost;

// The blank round the formula, in points, and the resolution of the vector devices (SVG, PDF):
// the library's.
constexpr double margin_points = Tavi::output_margin_points;
constexpr int vector_dpi = Tavi::vector_output_dpi;

// The formula in the format: laid out for the target's own measurements, then drawn. `dpi` is used by
// PNG only. False, with the reason, when the surface cannot be made.
bool render(RenderHost &host, Format format, int dpi, QByteArray &out, std::string &error);

// The bytes to the file, through a temporary that is renamed over it only when complete; "-" is
// standard output. False, with the reason, when they cannot be written.
bool write_output(std::string const &path, QByteArray const &data, std::string &error);

}  // namespace TaviRender
