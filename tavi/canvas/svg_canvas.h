// SVG_Canvas: writes a drawing as an SVG 1.1 Tiny document to a narrow stream while it is drawn.
// It does no measuring of its own: a subclass supplies the gauge that every metric comes from.
#pragma once

#include "tavi/canvas/integralcanvas.h"

#include <iosfwd>

namespace Tavi {

class SVG_Canvas : public IntegralCanvas
{
public:
    ~SVG_Canvas() override;

    // Gauge
    Font font() const override;
    // The gauge measures in the given set, but never in a symbol set, and never at an angle.
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
    // 1440 by 1440: the file's unit is the twentieth of a point.
    Extent dpi() override;
    bool printing() const override;
    using IntegralCanvas::translation;
    // Closes the group of the old translation and opens one for the new.
    void translation(Point p) override;
    void add_translation(Point p) override;
    Extent twips_to_pixel(Extent const &twips) override;

    // Canvas
    Pen pen() const override;
    // Only stored: every element repeats its pen attributes.
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

    // The XML declaration, the svg element, the hatch patterns and the group that scales twentieths
    // of a point to points. `creator` may be null.
    virtual void put_header(char const *creator);
    // Closes every open group and the document.
    virtual void put_footer();
    // Where every metric comes from; the subclass owns it.
    virtual Gauge const *gauge() const = 0;
    virtual Gauge *gauge() = 0;
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
    double dash_len() const;
    double dot_len() const;

    std::ostream &stream_;
    Extension extension_;
    bool clipping_;
    Rect clip_;
    int clip_id_;
    Pen pen_;
    Brush brush_;
    Color background_;
    Color text_color_;
    long angle_;
    CharSet char_set_;
};

}  // namespace Tavi
