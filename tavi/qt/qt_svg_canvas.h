// Qt_SVG_Canvas: the SVG writer measured through Qt. A private Qt_Pixmap_Canvas is its gauge, so every
// metric it answers is in that gauge's pixels, while the file itself is in twentieths of a point.
#pragma once

#include "tavi/canvas/svg_canvas.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <iosfwd>

namespace Tavi {

class Qt_SVG_Canvas : public SVG_Canvas
{
public:
    // The stream is borrowed and must outlive the canvas. Qt's font system must be up.
    Qt_SVG_Canvas(std::ostream &stream, Extension const &extension);
    ~Qt_SVG_Canvas() override;

    Qt_SVG_Canvas(Qt_SVG_Canvas const &) = delete;
    Qt_SVG_Canvas &operator=(Qt_SVG_Canvas const &) = delete;

    Gauge const *gauge() const override;
    Gauge *gauge() override;
    using SVG_Canvas::font;
    // Selects the font for measuring with a generic family name ("serif", "sans-serif",
    // "monospace") replaced by a concrete one; any other name stays as it is.
    void font(Font const &font) override;

private:
    Qt_Pixmap_Canvas measure_;
};

}  // namespace Tavi
