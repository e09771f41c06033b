// A formula of a RenderHost drawn into the bytes of a file: PNG (Qt_Canvas on a QImage), PDF
// (Qt_Canvas on a QPdfWriter), EPS and SVG by the library's writers, and the page each is drawn on,
// which covers the formula's boxes and all its ink with a margin round it; and the bytes written to
// a file that never exists half-written. A host that draws on a Qt device of its own (an SVG
// generator, say) finds the page and the printing step here too.
#pragma once

#include <QByteArray>
#include <QPainter>

#include <string>

#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/qt/renderhost.h"

class QPaintDevice;

namespace Tavi {

enum class OutputFormat {
    png,        // a bitmap drawn by Qt_Canvas on a QImage, at the given dpi
    pdf,        // Qt_Canvas on a QPdfWriter
    eps,        // the EPS writer (Qt_EPS_Canvas)
    svg_writer  // the SVG writer (Qt_SVG_Canvas): text as text elements
};

// The blank round the formula, in points, so that ink past its boxes (slanted letters, big
// operators) is not cut off.
constexpr double output_margin_points = 2.0;

// Resolution of the vector devices (PDF, and an SVG generator): the grain of every position, 1/10
// of a point.
constexpr int vector_output_dpi = 720;

// The page round a measured formula: its extent plus the margin on every side, in device units of
// `dots_per_inch`, and the translation that moves the formula's top left into the margin.
struct OutputPage
{
    OutputPage(Extension const &formula, double dots_per_inch);
    Extension extension() const { return Extension(0, 0, height, width); }

    long width;
    long height;
    Point offset;
};

// The formula's extent at the resolution, its boxes and its ink together: it is drawn on an image
// with room around it, since slanted letters, the index of a root and some layouts draw past their
// boxes. A formula too large to draw for this has its boxes alone.
Extension ink_extent(RenderHost &host, int dpi);

// Prints the host on a Qt canvas of type C (Qt_Canvas or a subclass) over a painter of the device,
// moved by `offset`; answers the formula's extent. `smooth` turns antialiasing on.
template <class C>
Extension print_on(RenderHost &host, QPaintDevice &device, Extension const &page, Point offset, bool smooth)
{
    QPainter painter(&device);
    if (smooth) {
        painter.setRenderHint(QPainter::Antialiasing, true);
        painter.setRenderHint(QPainter::TextAntialiasing, true);
    }
    C canvas(&painter, page);
    canvas.useInheritAliasing(true);
    canvas.printing(true);
    canvas.translation(offset);
    Extension const e = host.print(&canvas);
    painter.end();
    return e;
}

// The formula in the format: laid out for the target's own measurements, then drawn. `dpi` is used
// by PNG only. False, with the reason, when the surface cannot be made. Runs on any thread, for a
// host that belongs to it.
bool render_formula(RenderHost &host, OutputFormat format, int dpi, QByteArray &out, std::string &error);

// The bytes to the file, through a temporary beside it that is renamed over it only when complete.
// False, with the reason, when they cannot be written; the file is then as it was, and no temporary
// is left. Any thread may call it. The file is not synced to the disk.
bool save_output(std::string const &path, QByteArray const &data, std::string &error);

}  // namespace Tavi
