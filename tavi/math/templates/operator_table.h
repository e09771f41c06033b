// The built-in operator dictionary: one row per operator text and form, with the class that lays it
// out, its flags and the space on either side (twentieths of the font size). The table that a fresh
// TemplateTable turns into operator records before any setup file is read.
#pragma once

#include <cstddef>

#include "tavi/kxt/wchar.h"

namespace Tavi {

// The layout class of an operator row.
enum OperatorClass : int {
    op_plain = 0,     // LayoutOp
    op_display = 1,   // LayoutDisplayOp
    op_stack = 2,     // LayoutStackOp
    op_fence = 3,     // LayoutFenceOp
    op_brace = 4,     // LayoutBraceOp
    op_big = 5,       // LayoutBigOp
    op_radical = 6,   // LayoutRadicalOp
    op_integral = 7,  // LayoutIntegralOp
    op_overbar = 8,   // LayoutOverBarOp
    op_extchar = 9    // LayoutExtCharOp
};

// Bits of the flag word. Stretchy and large are properties of the layout class; the rows carry them
// for the reader only, and they are not handed to the records.
enum OperatorFlag : unsigned {
    opf_fence = 1,
    opf_separator = 2,
    opf_stretchy = 4,
    opf_largeop = 8,
    opf_movablelimits = 16,
    opf_accent = 32
};

struct OperatorRow
{
    OperatorClass op_class;
    wchar const *text;
    int form;  // LayoutOp::Form: 0 infix, 1 prefix, 2 postfix
    unsigned flags;
    long lspace;
    long rspace;
};

extern OperatorRow const operator_table[];
extern std::size_t const operator_table_size;

}  // namespace Tavi
