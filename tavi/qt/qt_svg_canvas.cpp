// Qt_SVG_Canvas: SVG output with Qt metrics.
#include "tavi/qt/qt_svg_canvas.h"

#include "tavi/qt/generic_font_families.h"

namespace Tavi {

// The gauge is a one-pixel pixmap of its own at 1440 dpi. Its default font is selected once more so
// that the painter holds it before anything is measured.
Qt_SVG_Canvas::Qt_SVG_Canvas(std::ostream &stream, Extension const &extension)
    : SVG_Canvas(stream, extension), measure_(Extension(0, 0, 1, 1), nullptr, 1440)
{
    measure_.font(measure_.font(), cs_ansi, measure_.text_angle());
}

Qt_SVG_Canvas::~Qt_SVG_Canvas() = default;

Gauge const *Qt_SVG_Canvas::gauge() const { return &measure_; }

Gauge *Qt_SVG_Canvas::gauge() { return &measure_; }

void Qt_SVG_Canvas::font(Font const &font)
{
    Font matched = font;
    if (GenericFontFamily const *generic = find_generic_font_family(font.name()))
        matched.name(generic->family);
    measure_.font(matched, cs_unicode, 0);
}

}  // namespace Tavi
