// SVG_Canvas: writes a drawing as an SVG 1.1 Tiny document to a narrow stream while it is drawn.
// It does no measuring of its own: a subclass supplies the gauge that every metric comes from.
#pragma once

#include "tavi/canvas/streamcanvas.h"

#include <iosfwd>

namespace Tavi {

class SVG_Canvas : public StreamCanvas
{
public:
    ~SVG_Canvas() override;

    // Gauge
    using StreamCanvas::font;
    // The gauge measures in the given set, but never in a symbol set, and never at an angle.
    void font(Font const &font, CharSet char_set, long angle) override;
    using IntegralCanvas::translation;
    // Closes the group of the old translation and opens one for the new.
    void translation(Point p) override;
    void add_translation(Point p) override;

    // Canvas
    using StreamCanvas::pen;
    // Only stored: every element repeats its pen attributes.
    void pen(Pen const &pen, bool restart) override;
    using StreamCanvas::line;
    void line(Point from, Point to) override;
    using StreamCanvas::poly_line;
    void poly_line(Point const *points, std::size_t count, bool closed) override;
    using StreamCanvas::frame_rect;
    void frame_rect(Rect const &r) override;
    using StreamCanvas::fill_rect;
    void fill_rect(Rect const &r) override;
    using StreamCanvas::frame_ellipse;
    void frame_ellipse(Rect const &r) override;
    using StreamCanvas::fill_ellipse;
    void fill_ellipse(Rect const &r) override;
    using StreamCanvas::fill_polygon;
    void fill_polygon(Point const *points, std::size_t count, bool winding) override;
    void text(wchar const *text, long count, Point p) override;
    using StreamCanvas::clip_rect;
    void clip_rect(Rect const &r) override;
    void no_clip_rect() override;

    // The XML declaration, the svg element, the hatch patterns and the group that scales twentieths
    // of a point to points. `creator` may be null.
    void put_header(char const *creator) override;
    // Closes every open group and the document.
    void put_footer() override;
    // Selects a font for measuring by a name the subclass may translate first.
    virtual void font(Font const &font) = 0;

protected:
    // The stream is borrowed and must outlive the canvas.
    SVG_Canvas(std::ostream &stream, Extension const &extension);
    SVG_Canvas(SVG_Canvas const &other) = default;
    SVG_Canvas &operator=(SVG_Canvas const &) = delete;

    // A group is open exactly when one of these is true.
    bool translating();
    bool clipping() const { return clipping_; }
    // Opens the group of the present translation and clip.
    void begin_aux_group();
    // Writes the stroke attributes of the pen, each followed by a blank; `phase` is the running dash
    // phase of a dashed or dotted pen.
    void put_pen_attr(double phase);
    // Writes the fill attributes of the brush, each followed by a blank.
    void put_brush_attr();

    int clip_id_;
};

}  // namespace Tavi
