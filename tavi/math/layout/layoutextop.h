// LayoutExtOp: an operator drawn from the math extension font (class 3, symbol character set) rather
// than from the text font. Its glyph codes come from the constant tables of ExtensionCodes, looked up
// by the operator's text when it is built. Every size these operators take derives from the descent D
// that the font gives for its glyphs, which hang below the baseline.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/geometry/point.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/layout/layoutop.h"

namespace Tavi {

class LayoutExtOp : public LayoutOp
{
public:
    LayoutExtOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                long lspace, long rspace);

    // No operator of the extension font pulls its scripts: both slants are 0.
    void subsup_slant(MathNodeContext &context, Box const &box, long &subSlant, long &supSlant) override;

    wchar normal_char() const { return normalChar; }
    // The text the operator was built from, the key of its table rows.
    wstring const &key() const { return key_; }

protected:
    // The text_box of one glyph of the extension font.
    static Box request_ext(wchar ch, MathNodeContext &context);
    // Paints one glyph of the extension font at p in the context's colour.
    static void draw_ext(wchar ch, MathNodeContext &context, Point const &p);
    // Copies the text and normalChar into another operator of the family.
    void copy_to(LayoutExtOp *other) const;

    wchar normalChar;

private:
    wstring key_;
};

}  // namespace Tavi
