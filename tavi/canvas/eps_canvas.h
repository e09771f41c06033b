// EPS_Canvas: writes a drawing as an Encapsulated PostScript page to a narrow stream while it is
// drawn, in a small operator vocabulary that its prolog defines. It does no measuring of its own: a
// subclass supplies the gauge, and chooses the PostScript family of each font (match_font).
#pragma once

#include "tavi/canvas/integralcanvas.h"

#include <iosfwd>
#include <vector>

namespace Tavi {

class EPS_Canvas : public IntegralCanvas
{
public:
    // The PostScript family a font is drawn in.
    enum PSFont { ps_none = 0, ps_times = 1, ps_helvetica = 2, ps_courier = 3 };

    ~EPS_Canvas() override;

    // Gauge
    Font font() const override;
    // Writes a font line when the matched font differs from the gauge's; the gauge always measures
    // in Unicode and never at an angle.
    void font(Font const &font, CharSet char_set, long angle) override;
    CharSet char_set() override;
    long text_angle() const override;
    Extent text_extent(wchar const *text, long count) override;
    Box text_box(wchar const *text, long count) override;
    void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) override;
    long font_ascent() const override;
    long font_descent() const override;
    long font_leading() const override;
    long font_em() const override;
    long font_ex() const override;
    long font_X_height() const override;
    void char_bearing(wchar const *text, long &left, long &right) const override;
    // 1440 by 1440: the page's unit is the twentieth of a point.
    Extent dpi() override;
    bool printing() const override;
    using IntegralCanvas::translation;
    // Moves the file's own coordinate system by the difference.
    void translation(Point p) override;
    void add_translation(Point p) override;
    Extent twips_to_pixel(Extent const &twips) override;

    // Canvas
    Pen pen() const override;
    // Writes the width and the dash of the pen where they change.
    void pen(Pen const &pen, bool restart) override;
    Brush brush() const override;
    void brush(Brush const &brush) override;
    void text_color(Color color) override;
    void background(Color color) override;
    void line(Point from, Point to, Pen const &pen, bool restart) override;
    void line(Point from, Point to) override;
    void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line(Point const *points, std::size_t count, bool closed) override;
    void frame_rect(Rect const &r, Pen const &pen) override;
    void frame_rect(Rect const &r) override;
    void fill_rect(Rect const &r, Brush const &brush) override;
    void fill_rect(Rect const &r) override;
    void frame_ellipse(Rect const &r, Pen const &pen) override;
    void frame_ellipse(Rect const &r) override;
    void fill_ellipse(Rect const &r, Brush const &brush) override;
    void fill_ellipse(Rect const &r) override;
    void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon(Point const *points, std::size_t count, bool winding) override;
    void shadow(Rect const &r) override;
    void erase(Color color) override;
    void erase() override;
    void text(wchar const *text, long count, Point p) override;
    bool damaged(Rect const &r) const override;
    bool damaged(Extension const &e) const override;
    bool any_real_damage() const override;
    bool really_damaged(Rect const &r) const override;
    bool really_damaged(Extension const &e) const override;
    bool clip_rect(Rect *r) override;
    void clip_rect(Rect const &r) override;
    void no_clip_rect() override;
    bool short_coordinates() const override;
    bool antialias() const override;
    void antialias(bool on) override;
    bool antialias_text() const override;
    void antialias_text(bool on) override;

    // The comments, the prolog and the page setup: scale to twentieths of a point with y running
    // downwards, round caps, the pen's width and the gauge's font. `creator` may be null.
    virtual void put_header(char const *creator);
    virtual void put_footer();

protected:
    // The hatch patterns, the Latin-1 fonts and the short operators.
    virtual void put_prolog();

public:
    // Where every metric comes from; the subclass owns it.
    virtual Gauge const *gauge() const = 0;
    virtual Gauge *gauge() = 0;
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
    double dash_len() const;
    double dot_len() const;

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

    std::ostream &stream_;
    Extension extension_;
    bool clipping_;
    Rect clip_;
    // The colour last written to the file.
    Color color_;
    Pen pen_;
    Brush brush_;
    Color background_;
    Color text_color_;
    long angle_;
    CharSet char_set_;
    std::vector<SavedState> state_stack_;
};

}  // namespace Tavi
