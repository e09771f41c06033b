// MathStyle: the text style of a formula plus what formulas need: the script level and display
// style at the top, how scripts shrink, the background, the slanting of identifiers and line wrapping.
// A scene owns one; MathInfo reads it once for each protocol call.
#pragma once

#include <cstddef>

#include "tavi/math/textstyle.h"

namespace Tavi {

class MathStyle : public TextStyle
{
public:
    // Attribute numbers, behind those of TextStyle.
    enum MathAttribute : long {
        a_scriptlevel = 101,           // "scriptlevel": number
        a_displaystyle = 102,          // "displaystyle": boolean
        a_scriptsizemultiplier = 103,  // "scriptsizemultiplier": number, percent per level
        a_scriptminsize = 104,         // "scriptminsize": size, twips
        a_transparent_bgnd = 105,      // "transparent-bgnd": boolean
        a_background = 106,            // "background": color
        a_slanted_identifiers = 107,   // "slanted-identifiers": boolean
        a_wrap_lines = 108             // "wrap-lines": boolean
    };

    // The text style's defaults with bold and italic off, and: script level 0, display style,
    // 71 percent per script level, scripts no smaller than 160 twips, a transparent white
    // background, slanted identifiers, wrapped lines.
    MathStyle();
    MathStyle(MathStyle const &) = default;
    MathStyle &operator=(MathStyle const &) = default;
    ~MathStyle() override;

    using Style::boolean;
    using Style::color;
    using Style::number;
    using Style::size;

    // The eight names of this class first, then those of TextStyle.
    long id(wchar const *name) const override;
    wchar const *attribute_name(long id) const override;

    bool number(long id, long &out) const override;
    // A "scriptsizemultiplier" below 1 is refused: a negative script level would divide by it.
    bool set_number(long id, long value) override;
    bool boolean(long id, bool &out) const override;
    bool set_boolean(long id, bool value) override;
    bool size(long id, long &out) const override;
    // A negative "scriptminsize" is refused.
    bool set_size(long id, long value) override;
    bool color(long id, Color &out) const override;
    bool set_color(long id, Color const &value) override;

    long scriptlevel() const { return scriptlevel_; }
    bool displaystyle() const { return displaystyle_; }
    long scriptsizemultiplier() const { return scriptsizemultiplier_; }
    long scriptminsize() const { return scriptminsize_; }
    bool transparent_bgnd() const { return transparent_bgnd_; }
    Color background() const { return background_; }
    bool slanted_identifiers() const { return slanted_identifiers_; }
    bool wrap_lines() const { return wrap_lines_; }

private:
    // One row of a table that ties an attribute number to the field that holds it.
    template <class T>
    struct Field
    {
        long id;
        T MathStyle::*member;
    };

    static Field<long> const number_fields[];
    static Field<long> const size_fields[];
    static Field<bool> const boolean_fields[];
    static Field<Color> const color_fields[];

    template <class T, std::size_t N>
    static Field<T> const *find(Field<T> const (&table)[N], long id);

    long scriptlevel_;
    bool displaystyle_;
    long scriptsizemultiplier_;
    long scriptminsize_;
    bool transparent_bgnd_;
    Color background_;
    bool slanted_identifiers_;
    bool wrap_lines_;
};

}  // namespace Tavi
