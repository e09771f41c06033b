// FixedGauge: a gauge of made-up metrics for the fuzzers: every character is 3/5 of an em wide, and
// every font has the same proportions. Nothing is measured by a font engine, so a fuzzer spends its
// time in the code it searches, and runs the same on every machine.
#pragma once

#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"

namespace TaviFuzz {

class FixedGauge : public Tavi::Gauge
{
public:
    Tavi::Font font() const override { return font_; }
    void font(Tavi::Font const &font, CharSet char_set, long angle) override;
    CharSet char_set() override { return char_set_; }
    long text_angle() const override { return angle_; }
    Tavi::Extent text_extent(Tavi::wchar const *text, long count) override;
    Tavi::Box text_box(Tavi::wchar const *text, long count) override;
    void text_metrics(Tavi::wchar const *text, long count, Tavi::Box &box, long &left, long &right) override;
    long font_ascent() const override { return em() * 4 / 5; }
    long font_descent() const override { return em() / 5; }
    long font_leading() const override { return 0; }
    long font_em() const override { return font_ascent() + font_descent(); }
    long font_ex() const override { return em() / 2; }
    long font_X_height() const override { return em() * 7 / 10; }
    void char_bearing(Tavi::wchar const *text, long &left, long &right) const override;
    Tavi::Extent dpi() override { return Tavi::Extent(96, 96); }
    bool printing() const override { return false; }
    void translate(long &x, long &y) const override;
    void translate_f(double &x, double &y) const override;
    void translation(Tavi::Point p) override { translation_ = p; }
    Tavi::Point translation() override { return translation_; }
    void translation_f(Tavi::PointF const &p) override { translation_ = p.to_point(); }
    Tavi::PointF translation_f() override { return Tavi::PointF(translation_); }
    void add_translation(Tavi::Point p) override { translation_ = translation_ + p; }
    void add_translation_f(Tavi::PointF const &p) override { translation_ = translation_ + p.to_point(); }
    Tavi::Extent twips_to_pixel(Tavi::Extent const &twips) override { return twips_to_device(twips, dpi()); }
    Tavi::ExtentF twips_to_pixel_f(Tavi::ExtentF const &twips) override { return twips_to_device_f(twips, dpi()); }

private:
    // The em in pixels of the present font, at least 1.
    long em() const;

    Tavi::Font font_;
    CharSet char_set_ = cs_unicode;
    long angle_ = 0;
    Tavi::Point translation_;
};

}  // namespace TaviFuzz
