// Helpers of the real-font tests: one character drawn through a Qt_Pixmap_Canvas as a formula draws
// it, the same glyph drawn straight from a font file, and the comparison of the two; a whole formula
// measured and painted on real pixels.
#pragma once

#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/mathinfo.h"

#include <QImage>
#include <QRawFont>
#include <QSize>
#include <QString>

#include <memory>

namespace Tavi {
class MathNode;
}

namespace TaviTest {

// A file of the source tree's fonts folder.
QString source_font(char const *name);

// The pixel size of a font of `twips` on the pixmaps that Qt_Pixmap_Canvas makes.
double canvas_pixel_size(long twips);

// The run `codes` drawn through a new canvas of `size` pixels, white, in `font` and `char_set`,
// with the baseline's left end at `at`; as a grey-scale image.
QImage draw_through_canvas(Tavi::Font const &font, Tavi::Gauge::CharSet char_set, Tavi::wchar const *codes,
                           long count, QSize size, Tavi::Point at);

// The glyph of `code` drawn straight from `raw` at the same place; a null image if the font has no
// glyph for the code.
QImage draw_from_file(QRawFont const &raw, char32_t code, QSize size, Tavi::Point at);

// How many pixels differ by more than a quarter of the grey scale.
long differing_pixels(QImage const &a, QImage const &b);

// 24-point Times New Roman with identifiers slanted, in display or text style.
Tavi::MathInfo::Settings formula_settings(bool display);

// A formula in those settings, measured on a gauge of its own and painted on white with `margin`
// pixels all round: the box's origin stands at (margin, margin + ascent).
struct PaintedFormula
{
    QImage image;
    std::unique_ptr<Tavi::BoxTree> box;
};
PaintedFormula paint_formula(Tavi::MathNode *node, bool display, long margin);

}  // namespace TaviTest
