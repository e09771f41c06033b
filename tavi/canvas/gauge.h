// Gauge: what a layout needs to know about text, fonts, resolution and translation. It has no drawing
// operation and can stand alone while measuring. All lengths are in the gauge's device unit (dpi of
// them make an inch), except font sizes, which are always in twentieths of a point.
#pragma once

#include "tavi/canvas/font.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class Gauge
{
public:
    // How the 16-bit units of a text run are read. The numbers cross into setup data.
    enum CharSet : int {
        cs_ansi = 0,     // a Windows-1252 code in the low byte
        cs_unicode = 1,  // UTF-16
        cs_symbol = 2    // a symbol font's code in the low byte
    };

    virtual ~Gauge();

    virtual Font font() const = 0;
    // angle in degrees, counter-clockwise; it applies to text only.
    virtual void font(Font const &font, CharSet char_set, long angle) = 0;
    virtual CharSet char_set() = 0;
    virtual long text_angle() const = 0;
    // Advance width and font_em; (0, 0) for a null text or a count below 1.
    virtual Extent text_extent(wchar const *text, long count) = 0;
    // Advance width with font_ascent and font_descent: the same height for every string.
    virtual Box text_box(wchar const *text, long count) = 0;
    // The ink of the run: advance width, the highest ink above and the lowest ink below the baseline
    // (plus one), the left bearing of the first character and the right bearing of the last.
    virtual void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) = 0;
    virtual long font_ascent() const = 0;
    virtual long font_descent() const = 0;
    virtual long font_leading() const = 0;
    // font_ascent + font_descent.
    virtual long font_em() const = 0;
    virtual long font_ex() const = 0;
    virtual long font_X_height() const = 0;
    virtual void char_bearing(wchar const *text, long &left, long &right) const = 0;
    // Device units per inch, horizontal and vertical.
    virtual Extent dpi() = 0;
    virtual bool printing() const = 0;
    virtual void translate(long &x, long &y) const = 0;
    virtual void translate_f(double &x, double &y) const = 0;
    virtual void translation(Point p) = 0;
    virtual Point translation() = 0;
    virtual void translation_f(PointF const &p) = 0;
    virtual PointF translation_f() = 0;
    virtual void add_translation(Point p) = 0;
    virtual void add_translation_f(PointF const &p) = 0;
    virtual Extent twips_to_pixel(Extent const &twips) = 0;
    virtual ExtentF twips_to_pixel_f(ExtentF const &twips) = 0;

    // The conversion every surface applies for twips_to_pixel: each component times the dpi of its
    // direction, divided by 1440, plus 0.5, truncated toward zero.
    static Extent twips_to_device(Extent const &twips, Extent const &dpi);
    // The same without the 0.5 and the truncation.
    static ExtentF twips_to_device_f(ExtentF const &twips, Extent const &dpi);

protected:
    Gauge() = default;
    Gauge(Gauge const &) = default;
    Gauge &operator=(Gauge const &) = default;
};

}  // namespace Tavi
