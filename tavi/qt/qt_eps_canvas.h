// Qt_EPS_Canvas: the EPS writer measured through Qt. A private Qt_Pixmap_Canvas is its gauge; the line
// metrics and text_box are turned from the gauge's pixels into twentieths of a point, the other metrics
// are handed on in pixels. match_font decides which of the three PostScript families draws a font.
#pragma once

#include "tavi/canvas/eps_canvas.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <iosfwd>

namespace Tavi {

class Qt_EPS_Canvas : public EPS_Canvas
{
public:
    // The stream is borrowed and must outlive the canvas. Qt's font system must be up.
    Qt_EPS_Canvas(std::ostream &stream, Extension const &extension);
    ~Qt_EPS_Canvas() override;

    Qt_EPS_Canvas(Qt_EPS_Canvas const &) = delete;
    Qt_EPS_Canvas &operator=(Qt_EPS_Canvas const &) = delete;

    Gauge const *gauge() const override;
    Gauge *gauge() override;
    // The generic names "serif", "sans-serif" and "monospace" first; any other family goes by the
    // style Qt finds for it. Always one of the three families, never ps_none.
    PSFont match_font(Font const &wanted, Font &matched) override;

    // Pixels of the gauge's pixmap to twentieths of a point: px * 1440 / screen_dpi, truncated.
    long pixel2twips(long px) const;

    long font_ascent() const override;
    long font_descent() const override;
    long font_leading() const override;
    long font_em() const override;
    long font_ex() const override;
    long font_X_height() const override;
    Box text_box(wchar const *text, long count) override;

    int screen_dpi() const { return screen_dpi_; }

private:
    int screen_dpi_;
    Qt_Pixmap_Canvas measure_;
};

}  // namespace Tavi
