// StreamCanvas: the base of the file writers (SVG, EPS). They draw into a narrow stream as they are
// drawn and measure nothing themselves: every metric comes from a gauge that a subclass supplies.
// What does not depend on the format stands here once: the drawing state, the forwarding of the
// metrics, the shapes with a pen or brush of their own, and a file's answers on damage and hints.
#pragma once

#include "tavi/canvas/integralcanvas.h"

#include <iosfwd>
#include <string>

namespace Tavi {

class StreamCanvas : public IntegralCanvas
{
public:
    ~StreamCanvas() override;

    // Each writer adds the other forms of these operations, the ones that write its format.
    using IntegralCanvas::clip_rect;
    using IntegralCanvas::fill_ellipse;
    using IntegralCanvas::fill_polygon;
    using IntegralCanvas::fill_rect;
    using IntegralCanvas::font;
    using IntegralCanvas::frame_ellipse;
    using IntegralCanvas::frame_rect;
    using IntegralCanvas::line;
    using IntegralCanvas::pen;
    using IntegralCanvas::poly_line;

    // Gauge: every metric is the gauge's.
    Font font() const override;
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
    // Twips are the file's unit already.
    Extent twips_to_pixel(Extent const &twips) override;

    // Canvas
    Pen pen() const override;
    Brush brush() const override;
    void brush(Brush const &brush) override;
    void text_color(Color color) override;
    void background(Color color) override;
    // A shape with a pen or brush of its own sets it through the writer's setter, draws with the
    // current one, and sets the old one back the same way, so that the file follows each change.
    void line(Point from, Point to, Pen const &pen, bool restart) override;
    void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) override;
    void frame_rect(Rect const &r, Pen const &pen) override;
    void fill_rect(Rect const &r, Brush const &brush) override;
    void frame_ellipse(Rect const &r, Pen const &pen) override;
    void fill_ellipse(Rect const &r, Brush const &brush) override;
    void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) override;
    // Nothing: a printed page shows no shading of disabled areas.
    void shadow(Rect const &r) override;
    // A solid fill of the whole extension.
    void erase(Color color) override;
    void erase() override;
    bool damaged(Rect const &r) const override;
    bool damaged(Extension const &e) const override;
    bool any_real_damage() const override;
    bool really_damaged(Rect const &r) const override;
    bool really_damaged(Extension const &e) const override;
    bool clip_rect(Rect *r) override;
    bool short_coordinates() const override;
    bool antialias() const override;
    void antialias(bool on) override;
    bool antialias_text() const override;
    void antialias_text(bool on) override;

    // The document's opening and closing around the drawing. `creator` may be null.
    virtual void put_header(char const *creator) = 0;
    virtual void put_footer() = 0;
    // Where every metric comes from; the subclass owns it.
    virtual Gauge const *gauge() const = 0;
    virtual Gauge *gauge() = 0;

protected:
    // The stream is borrowed and must outlive the canvas. `char_set` is the set of a new canvas.
    StreamCanvas(std::ostream &stream, Extension const &extension, CharSet char_set);
    StreamCanvas(StreamCanvas const &other) = default;
    StreamCanvas &operator=(StreamCanvas const &) = delete;

    // The dash of the present pen, in the file's unit.
    double dash_len() const;
    double dot_len() const;

    // The local time as asctime writes it ("Sun Sep 16 01:03:52 1973"), without the line end;
    // empty when the time cannot be had. Files are written on several threads at once, and
    // asctime's text lives in one buffer of the process.
    static std::string creation_date();

    std::ostream &stream_;
    Extension extension_;
    bool clipping_;
    Rect clip_;
    Pen pen_;
    Brush brush_;
    Color background_;
    Color text_color_;
    long angle_;
    CharSet char_set_;
};

}  // namespace Tavi
