// MathInfo: the typesetting state that travels down a formula during request, allocate, draw and pick:
// the five class fonts, script level, display style, colour and some position state. Layouts change it
// on the way down and restore it on the way up; setters used that way answer the old value.
#pragma once

#include "tavi/canvas/color.h"
#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

class MathNode;
class MathStyle;

class MathInfo
{
public:
    // The values a MathInfo takes from its style. The defaults are those of a missing style.
    struct Settings
    {
        Settings();

        Font font;                  // "font": the text font, of classes 1 and 0 (Times New Roman 240)
        Color color;                // "text-color" (black)
        long scriptlevel;           // "scriptlevel" (0)
        bool displaystyle;          // "displaystyle" (true)
        bool slanted_identifiers;   // "slanted-identifiers" (true)
        bool wrap_lines;            // "wrap-lines" (true)
        long scriptminsize;         // "scriptminsize", twips (160)
        long scriptsizemultiplier;  // "scriptsizemultiplier", percent per level (71)
    };

    // Reads the style; a null style gives the defaults of Settings.
    explicit MathInfo(MathStyle *style);
    // Takes the given values instead of reading the style, which is only kept.
    MathInfo(MathStyle *style, Settings const &settings);
    MathInfo(MathInfo const &) = default;
    MathInfo &operator=(MathInfo const &) = default;
    virtual ~MathInfo();

    MathNode *math_node() const { return math_node_; }
    void math_node(MathNode *node) { math_node_ = node; }

    long child_index() const { return child_index_; }
    long child_index(long index);

    MathStyle *style() const { return style_; }

    // The stored font of the class, at its unscaled size; a class outside 0 to 4 gives class 1.
    Font const &font(MathString::Font cls) const;
    // cs_ansi for upright text and open face, cs_unicode for text, cs_symbol for symbols and the
    // extension; a class outside 0 to 4 gives cs_unicode.
    Gauge::CharSet char_set(MathString::Font cls) const;

    Color color() const { return color_; }

    long scriptlevel() const { return scriptlevel_; }
    void add_scriptlevel(long delta) { scriptlevel_ += delta; }
    long scriptminsize() const { return scriptminsize_; }
    // Percent of the first script level; the deeper levels follow from it.
    long scriptsizemultiplier() const { return multipliers_[0]; }

    long caret_pos() const { return caret_pos_; }
    void caret_pos(long pos) { caret_pos_ = pos; }

    bool displaystyle() const { return displaystyle_; }
    bool displaystyle(bool on);
    bool in_selection() const { return in_selection_; }
    bool in_selection(bool on);
    bool slanted_identifiers() const { return slanted_identifiers_; }
    void slanted_identifiers(bool on) { slanted_identifiers_ = on; }
    bool wrap_lines() const { return wrap_lines_; }
    void wrap_lines(bool on) { wrap_lines_ = on; }

    // The italic flag of the class 1 font.
    bool italic_fontstyle() const;
    void italic_fontstyle(bool italic);

    // Size in twips at the present script level (see real_font_size in the source), and the stored font
    // of the class with that size.
    long real_font_size(MathString::Font cls) const;
    Font real_font(MathString::Font cls) const;

private:
    static int slot(MathString::Font cls);
    // The one place where the style's attributes are read.
    static Settings read_style(MathStyle *style);

    MathNode *math_node_;
    long child_index_;
    MathStyle *style_;
    // One per class, in the order 1, 0, 2, 3, 4.
    Font fonts_[5];
    Color color_;
    long scriptlevel_;
    long caret_pos_;
    bool displaystyle_;
    bool slanted_identifiers_;
    bool wrap_lines_;
    bool in_selection_;
    long scriptminsize_;
    // Percent for script levels 1 to 5.
    long multipliers_[5];
};

}  // namespace Tavi
