// RecordingCanvas: a concrete Canvas for tests, with fixed metrics that are easy to work out by hand,
// which writes down every call it receives.
//
// Metrics, for a font of size s twips (s = 240, twelve points, gives the numbers in brackets); every
// value is truncated toward zero, and none depends on the dpi:
//   each character          advance 10*s/240 (10), so a run of n characters is n*(10*s/240) wide
//   font_ascent             8*s/240 (8)
//   font_descent            2*s/240 (2)
//   font_em                 font_ascent + font_descent (10)
//   font_ex                 5*s/240 (5)
//   font_X_height           7*s/240 (7)
//   font_leading            0
//   text_box                (n*(10*s/240), font_ascent, font_descent); Box::zero for null text or n < 1
//   text_extent             (n*(10*s/240), font_em); (0, 0) for null text or n < 1
//   text_metrics            ink ascent 7*s/240 (7), ink descent 1*s/240 (1), bearings 0 and 0,
//                           whatever the characters; Box::zero and bearings 0 for an empty run
//   char_bearing            0 and 0
// dpi is 1440 x 1440 unless the constructor is given another; twips_to_pixel is the usual conversion.
// A new canvas has the default Font ("Arial", 240), char set cs_unicode, angle 0, pen (0, black,
// solid), brush (solid, black), no clip, no translation; printing() is false unless set_printing.
//
// Records. Drawing and state calls go to calls(), measuring calls to measures(), each as one string in
// the order received; getters of the state (font(), pen(), dpi(), translation(), ...) are not recorded.
// Coordinates are written after translation, as a surface would draw them. The forms are:
//   font(<name>,<size>,<bold 0|1>,<italic 0|1>,cs=<charset>,angle=<angle>)
//   pen(<width>/<color>/<style>,restart=<0|1>)        brush(<fill>/<color>)
//   text_color(<color>)   background(<color>)   erase(<color>)   erase()
//   line(x1,y1,x2,y2)     line(x1,y1,x2,y2,pen=<width>/<color>/<style>,restart=<0|1>)
//   poly_line[n](x0,y0,x1,y1,...,closed=<0|1>)     poly_line[n](...,pen=...,closed=<0|1>)
//   fill_polygon[n](x0,y0,...,winding=<0|1>)       fill_polygon[n](...,brush=<fill>/<color>,winding=..)
//   frame_rect(top,left,bottom,right)  frame_rect(top,left,bottom,right,pen=...)
//   fill_rect(...), fill_ellipse(...) with brush=...; frame_ellipse(...) with pen=...; shadow(t,l,b,r)
//   text("<utf-8>",x,y)   clip_rect(t,l,b,r)   no_clip_rect()   antialias(<0|1>)   antialias_text(<0|1>)
//   measures: text_extent("<utf-8>"), text_box("..."), text_metrics("..."), char_bearing("<first>"),
//             font_ascent(), font_descent(), font_leading(), font_em(), font_ex(), font_X_height()
// where <color> is #rrggbb (or #rrggbbaa when alpha is not 255), <style> solid|dashed|dotted, <fill> the
// number of the fill style, and a null text is written null. The text of a run is its first count
// units (at most; a null text records as null).
#pragma once

#include "tavi/canvas/integralcanvas.h"

#include <string>
#include <vector>

namespace TaviTest {

class RecordingCanvas : public Tavi::IntegralCanvas
{
public:
    explicit RecordingCanvas(Tavi::Extent const &dpi = Tavi::Extent(1440, 1440));
    ~RecordingCanvas() override;

    std::vector<std::string> const &calls() const { return calls_; }
    std::vector<std::string> const &measures() const { return measures_; }
    std::size_t measure_count() const { return measures_.size(); }
    // How many recorded measures have this operation name ("text_box", "font_ascent", ...).
    std::size_t measure_count(std::string const &operation) const;
    void clear() { calls_.clear(); measures_.clear(); }
    void clear_calls() { calls_.clear(); }
    void clear_measures() { measures_.clear(); }
    void set_printing(bool on) { printing_ = on; }

    // Gauge
    Tavi::Font font() const override;
    void font(Tavi::Font const &font, CharSet char_set, long angle) override;
    CharSet char_set() override;
    long text_angle() const override;
    Tavi::Extent text_extent(Tavi::wchar const *text, long count) override;
    Tavi::Box text_box(Tavi::wchar const *text, long count) override;
    void text_metrics(Tavi::wchar const *text, long count, Tavi::Box &box, long &left, long &right) override;
    long font_ascent() const override;
    long font_descent() const override;
    long font_leading() const override;
    long font_em() const override;
    long font_ex() const override;
    long font_X_height() const override;
    void char_bearing(Tavi::wchar const *text, long &left, long &right) const override;
    Tavi::Extent dpi() override;
    bool printing() const override;
    Tavi::Extent twips_to_pixel(Tavi::Extent const &twips) override;

    // Canvas
    Tavi::Pen pen() const override;
    void pen(Tavi::Pen const &pen, bool restart) override;
    Tavi::Brush brush() const override;
    void brush(Tavi::Brush const &brush) override;
    void text_color(Tavi::Color color) override;
    void background(Tavi::Color color) override;
    void line(Tavi::Point from, Tavi::Point to, Tavi::Pen const &pen, bool restart) override;
    void line(Tavi::Point from, Tavi::Point to) override;
    void poly_line(Tavi::Point const *points, std::size_t count, Tavi::Pen const &pen, bool closed) override;
    void poly_line(Tavi::Point const *points, std::size_t count, bool closed) override;
    void frame_rect(Tavi::Rect const &r, Tavi::Pen const &pen) override;
    void frame_rect(Tavi::Rect const &r) override;
    void fill_rect(Tavi::Rect const &r, Tavi::Brush const &brush) override;
    void fill_rect(Tavi::Rect const &r) override;
    void frame_ellipse(Tavi::Rect const &r, Tavi::Pen const &pen) override;
    void frame_ellipse(Tavi::Rect const &r) override;
    void fill_ellipse(Tavi::Rect const &r, Tavi::Brush const &brush) override;
    void fill_ellipse(Tavi::Rect const &r) override;
    void fill_polygon(Tavi::Point const *points, std::size_t count, Tavi::Brush const &brush, bool winding) override;
    void fill_polygon(Tavi::Point const *points, std::size_t count, bool winding) override;
    void shadow(Tavi::Rect const &r) override;
    void erase(Tavi::Color color) override;
    void erase() override;
    void text(Tavi::wchar const *text, long count, Tavi::Point p) override;
    bool damaged(Tavi::Rect const &r) const override;
    bool damaged(Tavi::Extension const &e) const override;
    bool any_real_damage() const override;
    bool really_damaged(Tavi::Rect const &r) const override;
    bool really_damaged(Tavi::Extension const &e) const override;
    bool clip_rect(Tavi::Rect *r) override;
    void clip_rect(Tavi::Rect const &r) override;
    void no_clip_rect() override;
    bool short_coordinates() const override;
    bool antialias() const override;
    void antialias(bool on) override;
    bool antialias_text() const override;
    void antialias_text(bool on) override;

    // The metric unit of the selected font: n * size / 240, truncated.
    long scaled(long n) const;

private:
    void record(std::string call) { calls_.push_back(std::move(call)); }
    void measure(std::string call) const { measures_.push_back(std::move(call)); }
    std::string point(Tavi::Point p) const;
    std::string rect(Tavi::Rect const &r) const;
    std::string points(Tavi::Point const *points, std::size_t count) const;

    Tavi::Extent dpi_;
    Tavi::Font font_;
    CharSet char_set_;
    long angle_;
    Tavi::Pen pen_;
    Tavi::Brush brush_;
    Tavi::Color text_color_;
    Tavi::Color background_;
    bool clipped_;
    Tavi::Rect clip_;
    bool printing_;
    bool antialias_;
    bool antialias_text_;
    std::vector<std::string> calls_;
    mutable std::vector<std::string> measures_;
};

// Helpers for writing expectations in the recorded forms.
std::string color_text(Tavi::Color const &c);
std::string pen_text(Tavi::Pen const &p);
std::string brush_text(Tavi::Brush const &b);
std::string utf8(Tavi::wchar const *text, long count);

}  // namespace TaviTest
