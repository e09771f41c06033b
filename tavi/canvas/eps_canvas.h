// EPS_Canvas: writes a drawing as an Encapsulated PostScript page to a narrow stream while it is
// drawn, in a small operator vocabulary that its prolog defines. It does no measuring of its own: a
// subclass supplies the gauge, and chooses the PostScript family of each font (match_font).
#pragma once

#include "tavi/canvas/streamcanvas.h"

#include <iosfwd>
#include <vector>

namespace Tavi {

class EPS_Canvas : public StreamCanvas
{
public:
    // The PostScript family a font is drawn in.
    enum PSFont { ps_none = 0, ps_times = 1, ps_helvetica = 2, ps_courier = 3 };

    ~EPS_Canvas() override;

    // Gauge
    using StreamCanvas::font;
    // Writes a font line when the matched font differs from the gauge's; the gauge always measures
    // in Unicode and never at an angle.
    void font(Font const &font, CharSet char_set, long angle) override;
    using IntegralCanvas::translation;
    // Moves the file's own coordinate system by the difference.
    void translation(Point p) override;
    void add_translation(Point p) override;

    // Canvas
    using StreamCanvas::pen;
    // Writes the width and the dash of the pen where they change.
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

    // The comments, the prolog and the page setup: scale to twentieths of a point with y running
    // downwards, round caps, the pen's width and the gauge's font. `creator` may be null.
    void put_header(char const *creator) override;
    void put_footer() override;

protected:
    // The hatch patterns, the Latin-1 fonts and the short operators.
    virtual void put_prolog();

public:
    // The PostScript family to draw `wanted` in; `matched` becomes the font to measure with.
    virtual PSFont match_font(Font const &wanted, Font &matched) = 0;

protected:
    // The stream is borrowed and must outlive the canvas.
    EPS_Canvas(std::ostream &stream, Extension const &extension);
    EPS_Canvas(EPS_Canvas const &other) = default;
    EPS_Canvas &operator=(EPS_Canvas const &) = delete;

    // Saves the graphics state in the file and the attributes that go with it here.
    void gsave();
    // Restores both; the attributes come back through the virtual setters, which may write.
    void grestore();
    // Writes the colour unless it equals the one last written (alpha plays no part).
    void set_color(Color const &color);
    // Writes the brush colour and its pattern; the setting operator only when `with_operator`, else
    // the line stays open for the operands of `ep`.
    void set_brush_pattern(bool with_operator);
    void set_pen_color();
    void set_brush_color();
    // The prolog's short name of the font in that family, bold and italic.
    static char const *ps_font_name(PSFont family, Font const &font);

    // What a gsave keeps besides the file's own state.
    struct SavedState
    {
        Color color;
        Pen pen;
        Brush brush;
        Font font;
        Color background;
        Color text_color;
        long angle;
        CharSet char_set;
    };

    // The colour last written to the file.
    Color color_;
    std::vector<SavedState> state_stack_;
};

}  // namespace Tavi
